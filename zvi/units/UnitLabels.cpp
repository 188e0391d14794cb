#include "zvi/units/UnitLabelsDetail.h"

#include "zvi/services/MSpecialChar.h"

#include <algorithm>
#include <cassert>
#include <iterator>

namespace zvi::lib::units {

namespace {

constexpr int kHourKind = 35;
constexpr int kDayKind = 36;
constexpr wchar_t const *kHourText = L"hr";
constexpr wchar_t const *kDayText = L"day";

/// In a form, a letter in braces is the name of a base unit: L length, F force, M mass, H heat, T time. {t} is the
/// temperature sign in square brackets, {h} the label of the hour, {d} that of the day. The rest is literal.
struct LabelForm {
    int kind;
    wchar_t const *form;
};

// In the order of the rebuild: by kind, but the hour and the day come after the first labels that show them.
constexpr LabelForm kForms[] = {
    {1, L"{L}"},
    {2, L"{F}"},
    {3, L"{L}/{T}^2"},
    {4, L"[deg]"},
    {5, L"rad"},
    {6, L"{t}"},
    {9, L"{L}^2"},
    {10, L"{L}^3"},
    {11, L"{L}^4"},
    {12, L"{F}*{L}"},
    {13, L"{F}*{L}/{L}"},
    {14, L"{F}/{L}"},
    {15, L"{F}*{L}/rad"},
    {16, L"{F}/rad"},
    {17, L"{F}/{L}^2"},
    {18, L"{F}/{L}^2"},
    {19, L"{F}/{L}^3"},
    {20, L"1/{t}"},
    {21, L"{T}"},
    {22, L"{L}/sec^2"},
    {23, L"{L}/{T}"},
    {24, L"{M}"},
    {25, L"{F}*{L}^2/g"},
    {26, L"{F}/{L}/g"},
    {27, L"{F}/{L}^2/g"},
    {28, L"[cps]"},
    {29, L"1/{T}"},
    {30, L"{F}/{T}"},
    {31, L"{F}*{L}/{T}"},
    {32, L"{L}/sec^2/{T}"},
    {33, L"rad/{T}"},
    {34, L"{L}^6"},
    {37, L"{H}"},
    {38, L"{H}/({M}*{t})"},
    {39, L"{L}^3/{d}"},
    {43, L"{L}^2/{F}"},
    {44, L"{L}^2/{F}"},
    {45, L"1/{L}"},
    {46, L"{F}*{T}/{L}"},
    {47, L"{F}*{L}*{T}/rad"},
    {48, L"{T}/{L}"},
    {49, L"{M}/{L}^3"},
    {50, L"rad/{T}^2"},
    {51, L"min"},
    {52, L"{L}^3/{d}/{L}^2"},
    {53, L"{L}^3/{d}/{L}"},
    {54, L"{L}^2/{d}"},
    {55, L"{L}/{d}"},
    {56, L"1/{d}"},
    {57, L"{F}*{d}/{L}"},
    {58, L"{F}*{L}*{d}/rad"},
    {59, L"{d}"},
    {76, L"{H}/{h}/{L}^2"},
    {kHourKind, kHourText},
    {kDayKind, kDayText},
    {60, L"Gal"},
    {61, L"Hz"},
    {62, L"MB"},
    {63, L"{F}*{L}^2"},
    {64, L"{F}^2"},
    {67, L"{F}*{d}/{L}^2"},
    {68, L"{F}*{d}/{L}^3"},
    {69, L"{L}^3/{h}"},
    {70, L"1/{L}^2"},
    {71, L"{F}*{T}/{L}^3"},
    {72, L"{F}*{L}/g"},
    {73, L"rev/{T}"},
    {74, L"rev/{T}^2"},
    {75, L"{H}/{h}"},
    {81, L"{H}/{L}^3"},
    {83, L"[{T}]"},
    {85, L"{F}*{L}/({L}^3*[t])"},
    {86, L"{F}*{L}/{L}/[t]"},
    {87, L"cycle/{T}"},
    {88, L"{L}^2/{d}^2"},
    {89, L"{L}^3/{F}"},
    {90, L"{t}/{L}"},
    {91, L"{F}/{L}/g"},
    {92, L"{F}/({L}*{T})/g"},
    {93, L"{T}^2/{L}^2"},
    {95, L"mol*{L}/{T}"},
    {96, L"mol/{T}"},
    {97, L"{F}*{L}/[deg]"},
    {98, L"{F}*{L}*{T}/[deg]"},
    {99, L"{M}/{T}"},
    {101, L"{L}^2/({H}/{T})"},
    {102, L"{M}/mol"},
    {103, L"{L}/{T}/{L}"},
    {104, L"{M}/{T}^3"},
    {105, L"{L}/{T}^2/{T}"},
    {106, L"{M}/{T}"},
    {107, L"mol/{L}^3"},
    {109, L"L/{L}^3"},
    {111, L"rad/{L}"},
    {112, L"A/{L}^2"},
    {113, L"A/(V*{L}^2)"},
    {114, L"1/{L}^3*{T}"},
    {115, L"A"},
    {116, L"1/{L}^3"},
    {117, L"ohm.{L}"},
    {118, L"A/{L}*V"},
    {119, L"Num./{T}"},
    {120, L"V"},
    {121, L"V/{L}"},
    {122, L"A/{L}^2"},
    {123, L"{M}/{T}{L}^2"},
    {124, L"{L}^2/{T}^3"},
    {125, L"{F}/{L}/{T}"},
    {126, L"{F}*{T}^2/{L}^4"},
    {127, L"{F}*{T}/{L}^2"},
    {128, L"{H}/{M}"},
};

/// The kinds whose label holds a power, evaluated after the plain labels. In kilowatts the form is that in watts with a
/// "k" before it.
struct PowerForm {
    int kind;
    wchar_t const *inWatts;
    wchar_t const *spelledOut;
};

constexpr PowerForm kPowerForms[] = {
    {40, L"W/({L}^2*{t})", L"{H}/({L}^2*{T}*{t})"},
    {41, L"W/({L}*{t})", L"{H}/({L}*{T}*{t})"},
    {42, L"W/{L}^3", L"{H}/({L}^3*{T})"},
    {77, L"W/{t}", L"{H}/{T}*{t}"},
    {78, L"W/{L}^2", L"{H}/({L}^2*{T})"},
    {79, L"W/{L}^3", L"{H}/({L}^3*{T})"},
    {80, L"W/({L}^2*{t}^4)", L"{H}/({L}^2*{T}*{t}^4)"},
    {82, L"W", L"{H}/{T}"},
    {84, L"W/({L}^2*{t})", L"{H}/({L}^2*{T}*{t})"},
    {94, L"W/({L}^2*{t})", L"{H}/({L}^2*{T}*{t})"},
    {100, L"W/{L}^2", L"{H}/({L}^2*{T})"},
    {108, L"W", L"{H}/{T}"},
};

template <typename Form, std::size_t count>
Form const *FindForm(Form const (&forms)[count], int kind) {
    auto const found = std::find_if(std::begin(forms), std::end(forms), [&](Form const &f) { return f.kind == kind; });
    return found == std::end(forms) ? nullptr : found;
}

CString Piece(wchar_t letter, LabelPieces const &pieces, CString const &hour, CString const &day) {
    switch (letter) {
    case L'L':
        return pieces.L;
    case L'F':
        return pieces.F;
    case L'M':
        return pieces.M;
    case L'H':
        return pieces.H;
    case L'T':
        return pieces.T;
    case L't':
        return L"[" + MSpecialChar::Get(MSpecialChar::kTemperature) + L"]";
    case L'h':
        return hour;
    default:
        assert(letter == L'd');
        return day;
    }
}

CString Expand(wchar_t const *form, LabelPieces const &pieces, CString const &hour, CString const &day) {
    CString label;
    for (wchar_t const *c = form; *c != L'\0'; ++c) {
        if (*c != L'{') {
            label += *c;
            continue;
        }
        label += Piece(c[1], pieces, hour, day);
        c += 2;
    }
    return label;
}

CString ExpandPower(PowerForm const &form, LabelPieces const &pieces) {
    CString const none;
    if (pieces.power == LabelPieces::Power::kHeatOverTime)
        return Expand(form.spelledOut, pieces, none, none);
    CString const inWatts = Expand(form.inWatts, pieces, none, none);
    return pieces.power == LabelPieces::Power::kKilowatt ? L"k" + inWatts : inWatts;
}

} // namespace

bool IsLabelled(int kind) {
    return FindForm(kForms, kind) || FindForm(kPowerForms, kind);
}

void RebuildUnitLabels(LabelPieces const &pieces, LabelArray &labels) {
    for (auto const &[kind, form] : kForms)
        labels[static_cast<std::size_t>(kind)] = Expand(form, pieces, labels[kHourKind], labels[kDayKind]);
    for (PowerForm const &form : kPowerForms)
        labels[static_cast<std::size_t>(form.kind)] = ExpandPower(form, pieces);
}

CString MakeLegendLabel(int kind, LabelPieces const &pieces) {
    assert(IsLabelled(kind));
    if (PowerForm const *const form = FindForm(kPowerForms, kind))
        return ExpandPower(*form, pieces);
    return Expand(FindForm(kForms, kind)->form, pieces, kHourText, kDayText);
}

} // namespace zvi::lib::units
