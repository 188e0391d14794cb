#include "zvi/text/MConvertString.h"

#include "zvi/core/NarrowNumber.h"
#include "zvi/host/CodePage.h"

#include <string_view>

namespace zvi::lib {

namespace {

template <typename Character>
std::basic_string_view<Character> Part(Character const *text, int length) {
    if (!text)
        return {};
    return length < 0 ? std::basic_string_view<Character>(text)
                      : std::basic_string_view<Character>(text, static_cast<std::size_t>(length));
}

std::string Narrow(CString const &text) {
    return MConvertString::WideToMulti(text.GetString(), text.GetLength());
}

} // namespace

MConvertString::~MConvertString() = default;

std::wstring MConvertString::MultiToWide(char const *text, int length, unsigned int codePage) {
    return host::WideOfMulti(Part(text, length), codePage);
}

std::string MConvertString::WideToMulti(wchar_t const *text, int length, unsigned int codePage) {
    return host::MultiOfWide(Part(text, length), codePage);
}

CString MConvertString::MultiToWideCSting(char const *text, int length, unsigned int codePage) {
    return CString::OfUnits(MultiToWide(text, length, codePage));
}

int MConvertString::atoi(CString &text) {
    return NarrowToInt(Narrow(text).c_str());
}

double MConvertString::atof(CString &text) {
    return NarrowToDouble(Narrow(text).c_str());
}

CString MConvertString::UTF8ToANSI(char const *text) {
    std::wstring const wide = MultiToWide(text, -1, host::kUtf8CodePage);
    std::string const narrow = WideToMulti(wide.data(), static_cast<int>(wide.size()));
    return MultiToWideCSting(narrow.data(), static_cast<int>(narrow.size()));
}

} // namespace zvi::lib
