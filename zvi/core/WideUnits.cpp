#include "zvi/core/WideUnits.h"

#include "zvi/base/Surrogates.h"

#include <cassert>
#include <iterator>

namespace zvi::lib {

namespace {

/// How the letters of a range find their other case.
enum class CaseRule {
    kShift,     ///< upper-case letters lie together; the lower-case ones `shift` further on
    kEvenPairs, ///< an even upper-case letter, then its lower-case one
    kOddPairs,  ///< an odd upper-case letter, then its lower-case one
};

struct CaseRange {
    std::uint32_t firstUpper;
    std::uint32_t lastUpper;
    CaseRule rule;
    std::uint32_t shift;
};

constexpr CaseRange kCaseRanges[] = {
    {0x0041, 0x005A, CaseRule::kShift, 32},    // A-Z
    {0x00C0, 0x00D6, CaseRule::kShift, 32},    // Latin-1
    {0x00D8, 0x00DE, CaseRule::kShift, 32},    // Latin-1, behind the multiplication sign
    {0x0100, 0x012E, CaseRule::kEvenPairs, 1}, // Latin Extended-A
    {0x0132, 0x0136, CaseRule::kEvenPairs, 1}, //
    {0x0139, 0x0147, CaseRule::kOddPairs, 1},  //
    {0x014A, 0x0176, CaseRule::kEvenPairs, 1}, //
    {0x0179, 0x017D, CaseRule::kOddPairs, 1},  //
    {0x0386, 0x0386, CaseRule::kShift, 38},    // Greek, accented
    {0x0388, 0x038A, CaseRule::kShift, 37},    //
    {0x038C, 0x038C, CaseRule::kShift, 64},    //
    {0x038E, 0x038F, CaseRule::kShift, 63},    //
    {0x0391, 0x03A1, CaseRule::kShift, 32},    // Greek
    {0x03A3, 0x03AB, CaseRule::kShift, 32},    //
    {0x0400, 0x040F, CaseRule::kShift, 80},    // Cyrillic
    {0x0410, 0x042F, CaseRule::kShift, 32},    //
    {0x0460, 0x0480, CaseRule::kEvenPairs, 1}, //
    {0x048A, 0x04BE, CaseRule::kEvenPairs, 1}, //
    {0x04D0, 0x052E, CaseRule::kEvenPairs, 1}, //
    {0x1E00, 0x1E94, CaseRule::kEvenPairs, 1}, // Latin Extended Additional
    {0x1EA0, 0x1EFE, CaseRule::kEvenPairs, 1}, //
    {0xFF21, 0xFF3A, CaseRule::kShift, 32},    // full-width A-Z
};

/// Whether `letter` is an upper-case letter of the range, given that it lies between its ends.
bool FitsRule(CaseRange const &range, std::uint32_t letter) {
    assert(letter >= range.firstUpper && letter <= range.lastUpper);
    switch (range.rule) {
    case CaseRule::kEvenPairs:
        return letter % 2 == 0;
    case CaseRule::kOddPairs:
        return letter % 2 == 1;
    case CaseRule::kShift:
        break;
    }
    return true;
}

} // namespace

void AppendUnits(std::wstring &units, std::uint32_t character) {
    if (character < base::kFirstBeyondBasicPlane) {
        units.push_back(static_cast<wchar_t>(character));
    } else if (character <= base::kLastCharacter) {
        wchar_t const pair[] = {static_cast<wchar_t>(base::HighSurrogate(character)),
                                static_cast<wchar_t>(base::LowSurrogate(character))};
        units.append(pair, std::size(pair));
    } else {
        units.push_back(kReplacementCharacter);
    }
}

bool AreUnits(std::wstring_view text) {
    if constexpr (sizeof(wchar_t) == sizeof(char16_t))
        return true;
    // Without a way out of the loop it runs over several elements at a time.
    std::uint32_t bits = 0;
    for (wchar_t const element : text)
        bits |= static_cast<std::uint32_t>(element);
    return bits < base::kFirstBeyondBasicPlane;
}

void AppendWide(std::wstring &units, std::wstring_view text) {
    if (AreUnits(text)) {
        units.append(text);
        return;
    }
    for (wchar_t const element : text)
        AppendUnits(units, static_cast<std::uint32_t>(element));
}

wchar_t LowerUnit(wchar_t unit) {
    auto const letter = static_cast<std::uint32_t>(unit);
    for (CaseRange const &range : kCaseRanges) {
        if (letter < range.firstUpper)
            break;
        if (letter <= range.lastUpper && FitsRule(range, letter))
            return static_cast<wchar_t>(letter + range.shift);
    }
    return letter == 0x0178 ? wchar_t{0x00FF} : unit;
}

wchar_t UpperUnit(wchar_t unit) {
    auto const letter = static_cast<std::uint32_t>(unit);
    for (CaseRange const &range : kCaseRanges) {
        std::uint32_t const upper = letter - range.shift;
        if (letter >= range.shift && upper >= range.firstUpper && upper <= range.lastUpper && FitsRule(range, upper))
            return static_cast<wchar_t>(upper);
    }
    if (letter == 0x03C2)
        return 0x03A3; // final sigma
    return letter == 0x00FF ? wchar_t{0x0178} : unit;
}

bool IsBlankUnit(wchar_t unit) {
    switch (static_cast<std::uint32_t>(unit)) {
    case 0x0009:
    case 0x000A:
    case 0x000B:
    case 0x000C:
    case 0x000D:
    case 0x0020:
    case 0x0085:
    case 0x00A0:
    case 0x1680:
    case 0x2028:
    case 0x2029:
    case 0x202F:
    case 0x205F:
    case 0x3000:
        return true;
    default:
        return unit >= 0x2000 && unit <= 0x200A;
    }
}

} // namespace zvi::lib
