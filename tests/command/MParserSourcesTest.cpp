#include "zvi/command/MParser.h"
#include "zvi/units/MUnitCtrl.h"

#include <gtest/gtest.h>

namespace zvi::lib::test {

TEST(MParserSources, EveryCharacterComesFromTheTypedOneItStandsFor) {
    MUnitCtrl metres(nullptr);
    metres.Initialize(1);
    MParser parser;
    std::vector<int> sources;
    CString const typed = L" 1,250 mm + sin( 30 )*x1";
    CString const read = parser.SetUnitArgTokenString(typed, &metres, sources);
    ASSERT_EQ(static_cast<int>(sources.size()), read.GetLength());
    EXPECT_EQ(read, parser.SetUnitArgTokenString(typed, L"", &metres));
    for (int i = 0; i < read.GetLength(); ++i) {
        wchar_t const c = read.GetAt(i);
        CString from(typed.GetAt(sources[static_cast<std::size_t>(i)]));
        from.MakeUpper();
        // What the unit became comes from its first letter; the number keeps its digits.
        int const star = read.Find(L'*');
        int const end = read.Find(L')');
        bool const inFactor = i > star && i < end;
        if (inFactor) {
            EXPECT_EQ(sources[static_cast<std::size_t>(i)], typed.Find(L"mm")) << i;
        }
        if (!inFactor && ((c >= L'0' && c <= L'9') || (c >= L'A' && c <= L'Z'))) {
            EXPECT_EQ(from, CString(c)) << i;
        }
    }
    for (std::size_t i = 1; i < sources.size(); ++i)
        EXPECT_LE(sources[i - 1], sources[i]) << i;
}

} // namespace zvi::lib::test
