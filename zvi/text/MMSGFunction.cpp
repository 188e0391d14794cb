#include "zvi/text/MMSGFunction.h"

#include "zvi/text/MMSGParser.h"

namespace zvi::lib {

namespace {

constexpr wchar_t kApostrophe = L'\'';

/// Never destroyed, so that texts can be had until the process ends.
MMSGParser &Catalogue() {
    static MMSGParser *const catalogue = new MMSGParser;
    return *catalogue;
}

} // namespace

MMSGFunction::~MMSGFunction() = default;

void MMSGFunction::Reset() {
    Catalogue().Clear();
}

void MMSGFunction::AddFile(wchar_t const *path) {
    Catalogue().AddPath(path);
}

bool MMSGFunction::LoadFile() {
    return Catalogue().Load(1);
}

bool MMSGFunction::LoadAddedFile() {
    return Catalogue().Load(0);
}

CString MMSGFunction::GetValue(wchar_t const *key) {
    return Catalogue().GetValue(key);
}

CString MMSGFunction::RemoveQuote(wchar_t const *text) {
    CString const whole(text);
    int const length = whole.GetLength();
    bool const isQuoted = length >= 2 && whole.GetAt(0) == kApostrophe && whole.GetAt(length - 1) == kApostrophe;
    return isQuoted ? whole.Mid(1, length - 2) : whole;
}

void MMSGFunction::SetFontPath(wchar_t const *path) {
    Catalogue().m_fontPath = path;
}

CString MMSGFunction::GetFont() {
    return Catalogue().m_font;
}

int MMSGFunction::GetFontSize() {
    return Catalogue().m_fontSize;
}

} // namespace zvi::lib
