#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"

#include <cstdint>

namespace zvi::lib::spatial {

/// The text of a catalogue with its number put in. It is a format if it has exactly one conversion, of an `int`;
/// otherwise it is shown as it is.
ZVI_API CString WithNumber(CString const &text, int number);

/// Tells the progress bar of the process how many of the cells have been come to.
class ContactProgress {
public:
    explicit ContactProgress(std::uint32_t cellCount) : m_cellCount(cellCount) {}

    /// Call it before each cell, from 0 on. The percentage is shown whenever it is another one, at first than 0.
    void Reach(std::uint32_t cell) {
        if (cell >= m_nextLook) [[unlikely]]
            Look(cell);
    }

private:
    void Look(std::uint32_t cell);
    int Percentage(std::uint32_t cell) const;

    std::uint32_t m_cellCount;
    std::uint32_t m_nextLook = 0; ///< no cell before it has another percentage
    int m_shown = 0;
};

} // namespace zvi::lib::spatial
