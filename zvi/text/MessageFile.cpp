#include "zvi/text/MessageFile.h"

#include "zvi/host/Paths.h"
#include "zvi/text/Unicodecvt.h"

#include <fstream>
#include <locale>
#include <string_view>
#include <utility>

namespace zvi::lib {

namespace {

/// Bytes of the mark that every file begins with, whatever it is.
constexpr std::streamoff kMarkSize = 2;

std::unique_ptr<std::wistream> OpenUnits(wchar_t const *path) {
    auto units = std::make_unique<std::wifstream>();
    units->imbue(std::locale(std::locale::classic(), new Unicodecvt));
    units->open(host::NativePath(path ? path : L""), std::ios::in | std::ios::binary);
    units->seekg(kMarkSize);
    return units;
}

} // namespace

MessageFile::MessageFile(wchar_t const *path) : MessageFile(OpenUnits(path)) {}

MessageFile::MessageFile(std::unique_ptr<std::wistream> units) : m_units(std::move(units)) {
    if (m_units->fail())
        m_end = End::kUnreadable;
}

MessageFile::~MessageFile() = default;

bool MessageFile::IsOpen() const {
    return m_end != End::kUnreadable;
}

bool MessageFile::EndReading(End end) {
    m_end = end;
    return false;
}

bool MessageFile::GetLine(CString &line) {
    if (m_end != End::kNotYet)
        return false;
    m_units->getline(m_line.data(), static_cast<std::streamsize>(m_line.size()));
    auto count = static_cast<std::size_t>(m_units->gcount());
    bool const isCut = m_units->bad();
    bool const isLast = m_units->eof();
    if (count == 0)
        return EndReading(isCut ? End::kCutUnit : End::kWhole);
    ++m_lineNumber;
    if (!isCut && !isLast && m_units->fail())
        return EndReading(End::kLongLine);
    if (isCut)
        m_end = End::kCutUnit;
    else if (!isLast)
        --count; // the LF
    line = CString(std::wstring_view(m_line.data(), count));
    return true;
}

} // namespace zvi::lib
