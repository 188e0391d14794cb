#pragma once

#include "zvi/Export.h"

#include <cwchar>
#include <locale>

namespace zvi::lib {

/// Turns the bytes of a wide file stream into characters, two at a time with the lower one first, and back, without
/// interpreting them: a mark, half of a surrogate pair and U+FFFF pass like anything else. On the way out an element
/// beyond 16 bits is an error. A last byte without a partner is an incomplete character.
class ZVI_API Unicodecvt : public std::codecvt<wchar_t, char, std::mbstate_t> {
public:
    /// As of every facet: with `references` 0 the locale that holds it destroys it.
    explicit Unicodecvt(std::size_t references = 0);
    ~Unicodecvt() override;

protected:
    /// What the base class asks of every conversion.
    result do_in(std::mbstate_t &state, char const *from, char const *fromEnd, char const *&fromNext, wchar_t *to,
                 wchar_t *toEnd, wchar_t *&toNext) const override;
    result do_out(std::mbstate_t &state, wchar_t const *from, wchar_t const *fromEnd, wchar_t const *&fromNext,
                  char *to, char *toEnd, char *&toNext) const override;
    result do_unshift(std::mbstate_t &state, char *to, char *toEnd, char *&toNext) const override;
    int do_encoding() const noexcept override;
    bool do_always_noconv() const noexcept override;
    int do_length(std::mbstate_t &state, char const *from, char const *end, std::size_t most) const override;
    int do_max_length() const noexcept override;
};

} // namespace zvi::lib
