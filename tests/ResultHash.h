#pragma once

#include "zvi/core/CString.h"

#include <bit>
#include <cstdint>
#include <string_view>

namespace zvi::lib::test {

/// Takes results, exactly and in their order, into one number.
class ResultHash {
public:
    void Add(std::uint64_t bits) {
        m_hash = (m_hash ^ bits) * 0x9e3779b97f4a7c15;
        m_hash ^= m_hash >> 29;
    }
    void Add(int number) { Add(static_cast<std::uint64_t>(number)); }
    void Add(unsigned number) { Add(std::uint64_t{number}); }
    void Add(double number) { Add(std::bit_cast<std::uint64_t>(number)); }
    void Add(CString const &text) {
        for (int i = 0; i < text.GetLength(); ++i)
            Add(static_cast<unsigned>(text.GetAt(i)));
    }
    void Add(std::string_view text) {
        for (char const c : text)
            Add(static_cast<unsigned>(static_cast<unsigned char>(c)));
    }

    std::uint64_t Value() const { return m_hash; }

private:
    std::uint64_t m_hash = 0;
};

} // namespace zvi::lib::test
