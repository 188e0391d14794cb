#include "zvi/text/Unicodecvt.h"

#include <algorithm>
#include <cstddef>

namespace zvi::lib {

namespace {

constexpr int kUnitSize = 2;
constexpr unsigned int kByteBits = 8;
constexpr unsigned int kLastUnit = 0xFFFF;

unsigned int ByteAt(char const *at) {
    return static_cast<unsigned char>(*at);
}

} // namespace

Unicodecvt::Unicodecvt(std::size_t references) : std::codecvt<wchar_t, char, std::mbstate_t>(references) {}

Unicodecvt::~Unicodecvt() = default;

Unicodecvt::result Unicodecvt::do_in(std::mbstate_t &, char const *from, char const *fromEnd, char const *&fromNext,
                                     wchar_t *to, wchar_t *toEnd, wchar_t *&toNext) const {
    std::ptrdiff_t const count = std::min((fromEnd - from) / kUnitSize, toEnd - to);
    for (std::ptrdiff_t i = 0; i < count; ++i)
        to[i] = static_cast<wchar_t>(ByteAt(from + kUnitSize * i) | ByteAt(from + kUnitSize * i + 1) << kByteBits);
    fromNext = from + kUnitSize * count;
    toNext = to + count;
    return fromNext == fromEnd ? ok : partial;
}

Unicodecvt::result Unicodecvt::do_out(std::mbstate_t &, wchar_t const *from, wchar_t const *fromEnd,
                                      wchar_t const *&fromNext, char *to, char *toEnd, char *&toNext) const {
    fromNext = from;
    toNext = to;
    for (; fromNext < fromEnd; ++fromNext) {
        auto const unit = static_cast<unsigned int>(*fromNext);
        if (unit > kLastUnit)
            return error;
        if (toEnd - toNext < kUnitSize)
            return partial;
        *toNext++ = static_cast<char>(unit);
        *toNext++ = static_cast<char>(unit >> kByteBits);
    }
    return ok;
}

Unicodecvt::result Unicodecvt::do_unshift(std::mbstate_t &, char *to, char *, char *&toNext) const {
    toNext = to;
    return noconv;
}

int Unicodecvt::do_encoding() const noexcept {
    return kUnitSize;
}

bool Unicodecvt::do_always_noconv() const noexcept {
    return false;
}

int Unicodecvt::do_length(std::mbstate_t &, char const *from, char const *end, std::size_t most) const {
    auto const units = static_cast<std::size_t>((end - from) / kUnitSize);
    return static_cast<int>(std::min(units, most)) * kUnitSize;
}

int Unicodecvt::do_max_length() const noexcept {
    return kUnitSize;
}

} // namespace zvi::lib
