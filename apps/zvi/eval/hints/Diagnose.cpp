#include "apps/zvi/eval/hints/Diagnose.h"

#include "apps/zvi/common/Characters.h"
#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/WideText.h"
#include "apps/zvi/eval/hints/Mistakes.h"

#include <vector>

namespace zvi::app {

namespace {

using enum lib::ParseFaultKind;

/// What is longer than a text may be.
constexpr MistakeRow kLimits[] = {
    {kTooLong, nullptr,
     "the text is too long; a line holds about 2,000 characters, and a B or T that stands for BY or TO counts as 12"},
    {kTooManyNumbers, nullptr, "a line holds at most 1,000 numbers; write runs as ranges, or two lines"},
    {kTooManyArguments, nullptr, "a list holds at most 10,000,000 numbers"},
};

bool IsRepeat(Subject const &item) {
    return item.typed.find('@') != std::string::npos;
}

/// Items of a list that are not read by themselves.
constexpr MistakeRow kItems[] = {
    {kAnyFault, [](auto &s) { return s.failed.Mode() == EvalMode::kPoints; },
     "a point has one to three coordinates, numbers all"},
    {kRepeatTwice, IsRepeat, "an item has one @, as in 3@2"},
    {kRepeatCount, [](auto &s) { return IsRepeat(s) && !ReadsDoubles(s.failed.Mode()); },
     "the count in front of @ is an integer, as in 3@2"},
    {kAnyFault, IsRepeat, "% is a repeat, which --mode grid-rel and grid-abs take"},
    {kAnyFault, [](auto &s) { return s.failed.ValueOf(s.failed.Part(s.where), EvalMode::kGridRel).has_value(); },
     "% is no integer (a quotient never is); --mode grid-rel takes any numbers"},
    {kRangeStep, nullptr,
     "a range needs a step that leads from its first number to its last; a single number stands alone"},
    {kNoInteger, nullptr, "% is no integer"},
    {kRangeEnds, nullptr, "a range is FIRSTtoLAST or FIRSTtoLASTbySTEP, its ends plain integers without sign"},
};

/// Whether a part of TO or BY stands at the place or before it.
bool IsByMarker(Subject const &place) {
    constexpr std::wstring_view kMarkers = L"TOBYtoby";
    return place.failed.IsHere(kMarkers) || kMarkers.find(place.failed.Before(place.where.begin)) != kNowhere;
}

/// Whether the text ends, behind an operand.
bool IsOpen(Subject const &place) {
    wchar_t const last = place.failed.Before(place.failed.typed.size());
    return place.failed.Here() == 0 && (IsNameChar(last) || last == L')');
}

/// What stands where the reading stopped, and has no place there.
constexpr MistakeRow kPlaces[] = {
    {kUnexpectedToken, IsOpen, "a bracket is not closed"},
    {kUnexpectedToken, [](auto &s) { return s.failed.Here() == 0; }, "the text ends where a number is expected"},
    {kUnexpectedToken, [](auto &s) { return s.failed.IsHere(L"TtBb") && !ReadsIntegers(s.failed.Mode()); },
     "T and B stand for TO and BY, as in 1to9by2, which --mode nodes reads"},
    {kUnexpectedToken, [](auto &s) { return s.failed.IsHere(L"."); }, "a number has one decimal point"},
    {kUnexpectedToken, IsByMarker, "the ends of a range are plain integers, without sign or parentheses"},
    {kUnexpectedToken, [](auto &s) { return IsNameChar(s.failed.Here()) || s.failed.IsHere(L"("); },
     "an operator is missing here, or a comma in a list"},
    {kUnexpectedToken, [](auto &s) { return s.failed.IsHere(L","); }, "a comma has no place here"},
    {kUnexpectedToken, [](auto &s) { return s.failed.IsHere(L"+-*/^@<)]"); }, "'%' stands where a number is expected"},
    {kUnexpectedToken, nullptr, "'%' has no meaning here"},
};

/// The items of a list, each up to a comma that is in no bracket.
std::vector<Span> Items(std::wstring const &line) {
    std::vector<Span> items(1);
    int depth = 0;
    for (wchar_t const c : line) {
        depth += c == L'(' || c == L'[' ? 1 : c == L')' || c == L']' ? -1 : 0;
        if (c == L',' && depth <= 0)
            items.push_back({items.back().End() + 1, 0});
        else
            ++items.back().length;
    }
    return items;
}

constexpr MistakeRow kAssignments[] = {{kAnyFault, nullptr, "a variable is set apart from the text, by --var %"}};

/// `name=expression`, which is no expression.
std::optional<Subject> FindAssignment(FailedText const &failed) {
    std::size_t const equals = failed.typed.find(L'=');
    if (equals == kNowhere || failed.First() >= equals || !IsLetter(failed.At(failed.First())))
        return std::nullopt;
    return Subject{failed, {equals, 1}, Utf8Of(failed.typed)};
}

/// An item that the mode does not take, such as a fraction in a list of integers.
std::optional<Subject> FindItem(FailedText const &failed) {
    if (failed.Fault() == kUnexpectedToken || ReadsOneExpression(failed.Mode()) || failed.MayNameMany())
        return std::nullopt;
    for (Span const &item : Items(failed.line)) {
        Span const where = item.length == 0 ? Span{} : failed.SpanOfLine(item);
        if (where.length > 0 && !failed.Other(failed.Part(where), failed.Mode()).parsed)
            return Subject{failed, where};
    }
    return std::nullopt;
}

/// The name of a mode and what it takes.
std::string TakenBy(EvalMode mode) {
    return Joined(EntryOf(mode).name, " takes ", EntryOf(mode).takes);
}

/// The first item beyond those that the mode takes, under what it takes; the place if there is none.
std::optional<Subject> FindSurplus(FailedText const &failed) {
    std::vector<Span> const items = Items(failed.line);
    std::size_t const most = failed.Mode() == EvalMode::kPosition ? 3 : 2;
    bool const tooMany = failed.Fault() == kExtraArgument && items.size() > most && items[most].length > 0;
    Span const where = tooMany ? failed.SpanOfLine(items[most]) : Span{failed.Place(), 1};
    return Subject{failed, where, TakenBy(failed.Mode())};
}

/// The modes that may read what another one does not, and the character that their texts begin with, if it is one.
constexpr std::pair<EvalMode, wchar_t> kOtherModes[] = {
    {EvalMode::kPoints, L'['}, {EvalMode::kPosition, L'@'}, {EvalMode::kGridRel, 0}, {EvalMode::kNodes, 0}};

/// What is taken by another mode, which reads the text.
std::string TakenElsewhere(Subject const &surplus) {
    FailedText const &failed = surplus.failed;
    bool const hasRange = failed.typed.find_first_of(L"Tt") != kNowhere;
    for (auto const &[mode, begin] : kOtherModes) {
        bool const may =
            (begin == 0 || begin == failed.At(failed.First())) && (mode != EvalMode::kGridRel || !hasRange);
        if (may && failed.Other(failed.typed, mode).parsed)
            return TakenBy(mode);
    }
    return "";
}

constexpr MistakeRow kElsewhere[] = {
    {kAnyFault, [](auto &s) { return s.failed.MayNameMany(); }, ""},
    {kAnyFault, nullptr, "the mode %; --mode $", TakenElsewhere},
};

/// The character at which the reading stopped.
std::optional<Subject> FindPlace(FailedText const &failed) {
    bool const isPair = failed.Here() >= 0xD800 && failed.Here() <= 0xDBFF && failed.At(failed.Place() + 1) != 0;
    Span const where{failed.Place(), isPair ? 2u : 1u};
    return Subject{failed, where, Utf8Of(Printable(failed.Part(where)))};
}

/// The parser's words for what it refuses, and ours for what only the program does.
std::string FaultName(lib::ParseFaultKind kind) {
    if (kind == kIntegerOverflow || kind == kNotFinite)
        return "the number is out of range";
    std::string const text = lib::ParseFaultText(kind);
    return text.empty() ? "there is no number in the text" : text;
}

} // namespace

Diagnosis Diagnose(CString const &typed, EvalSettings const &settings, EvalOutcome const &outcome) {
    FailedText const failed{typed.GetString(), settings, outcome};
    Search const inOrder[] = {
        {CulpritOf, kLimits}, {FindAssignment, kAssignments}, kUnknownWord,        kWrongValue, kSlip,
        {FindItem, kItems},   {FindSurplus, kElsewhere},      {FindPlace, kPlaces}};
    for (auto const &[find, rows] : inOrder) {
        std::optional<Subject> const found = find(failed);
        std::string const hint = found ? FirstSeen(rows, *found) : "";
        if (!hint.empty())
            return {found->where, FaultName(failed.Fault()), hint};
    }
    return {FindPlace(failed)->where, FaultName(failed.Fault()), ""};
}

} // namespace zvi::app
