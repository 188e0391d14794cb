#include "zvi/command/NormalizeCommandText.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace zvi::lib::test {

namespace {

/// The rewriting as a sequence of plain replacements, then a walk over the characters.
CString NormalizeByReplacing(CString text) {
    text.MakeUpper();
    wchar_t const *const steps[][2] = {
        {L"SQRT", L"__SQRR"},    {L"TAN", L"__RRAN"},  {L"ATAN", L"__ARAN"}, {L"ABS", L"__ARS"},
        {L"TH", L"__RH"},        {L"BY", L"B"},        {L"TO", L"T"},        {L"B", L"#__ARG_BY__#"},
        {L"T", L"#__ARG_TO__#"}, {L"__SQRR", L"SQRT"}, {L"__RRAN", L"TAN"},  {L"__ARAN", L"ATAN"},
        {L"__ARS", L"ABS"},      {L"__RH", L"TH"},
    };
    for (auto const &step : steps)
        text.Replace(step[0], step[1]);
    text.Trim();
    std::wstring out;
    int state = 0;
    for (int i = 0; i < text.GetLength(); ++i) {
        wchar_t const c = text.GetAt(i);
        if (c == L'\t' || c == L'\n' || c == L'\r')
            continue;
        if (c == L' ') {
            state = state == 1 ? 2 : state;
            continue;
        }
        if (c == L',' && state == 3)
            out += L'0';
        if ((c == L'[' && state == 4) || (state == 2 && std::wstring(L"#,[]").find(c) == std::wstring::npos))
            out += L',';
        out += c;
        state = c == L'#' ? 6 : c == L',' ? 3 : c == L'[' ? 5 : c == L']' ? 4 : 1;
    }
    if (!out.empty() && out.back() == L',')
        out.back() = L' ';
    return CString(out.c_str());
}

std::wstring Wide(CString const &text) {
    return text.GetString();
}

} // namespace

TEST(NormalizeCommandText, GivesWhatTheReplacementsGive) {
    unsigned const seed = 77;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::vector<std::wstring> const pieces = {
        L"SQRT", L"TAN", L"ATAN", L"ABS", L"TH", L"BY", L"TO", L"B", L"T", L"_", L"__",  L"S", L"Q", L"R",  L"A",
        L"N",    L"H",   L"Y",    L"O",   L"1",  L" ",  L",",  L"[", L"]", L"#", L"tan", L"b", L"-", L"\t", L"\xE9"};
    for (int round = 0; round < 200000; ++round) {
        std::wstring text;
        for (int length = static_cast<int>(random() % 12); length > 0; --length)
            text += pieces[random() % pieces.size()];
        CString const typed(text.c_str());
        std::vector<int> sources;
        CString const normalized = NormalizeCommandText(typed, sources);
        ASSERT_EQ(Wide(normalized), Wide(NormalizeByReplacing(typed)));
        ASSERT_EQ(sources.size(), static_cast<std::size_t>(normalized.GetLength()));
        for (std::size_t i = 0; i < sources.size(); ++i) {
            ASSERT_GE(sources[i], i > 0 ? sources[i - 1] : 0);
            ASSERT_LT(sources[i], typed.GetLength());
        }
    }
}

} // namespace zvi::lib::test
