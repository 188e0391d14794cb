#include "zvi/command/MStringToken.h"

#include <string_view>

namespace zvi::lib {

MStringToken::MStringToken(wchar_t const *text, wchar_t const *delimiters) {
    std::wstring_view const whole = text ? text : L"";
    std::wstring_view const cuts = delimiters ? delimiters : L"";
    std::size_t begin = whole.find_first_not_of(cuts);
    while (begin != std::wstring_view::npos) {
        std::size_t const end = whole.find_first_of(cuts, begin);
        m_pieces.emplace_back(whole.substr(begin, end - begin));
        begin = whole.find_first_not_of(cuts, end);
    }
}

int MStringToken::Size() const {
    return static_cast<int>(m_pieces.size());
}

wchar_t const *MStringToken::Get(int index) const {
    return index >= 0 && index < Size() ? m_pieces[static_cast<std::size_t>(index)].c_str() : L"";
}

CString MStringToken::GetCstring(int index) const {
    return CString(Get(index));
}

std::wstring MStringToken::GetStdwstring(int index) const {
    return Get(index);
}

} // namespace zvi::lib
