#include "zvi/text/CMbcsTextFileWithBuffer.h"

#include "zvi/host/CodePage.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace zvi::lib {

CMbcsTextFileWithBuffer::CMbcsTextFileWithBuffer(int bufferSize) : BufferedTextFile(bufferSize) {}

CMbcsTextFileWithBuffer::~CMbcsTextFileWithBuffer() = default;

bool CMbcsTextFileWithBuffer::Refill() {
    m_validCount = static_cast<std::int32_t>(Read(m_readBuffer.get(), static_cast<std::size_t>(m_bufferSize) - 1));
    m_readPosition = 0;
    return m_validCount > 0;
}

int CMbcsTextFileWithBuffer::ScanLine(std::wstring &units) {
    if (!m_readBuffer)
        m_readBuffer = std::make_unique<char[]>(static_cast<std::size_t>(m_bufferSize));
    std::string cut; // what earlier buffers held of the line
    do {
        std::string_view const unread(m_readBuffer.get() + std::min(m_readPosition, m_validCount),
                                      static_cast<std::size_t>(std::max(m_validCount - m_readPosition, 0)));
        std::size_t const length = unread.find('\n');
        bool const isEnded = length != std::string_view::npos;
        std::string_view const segment = unread.substr(0, length);
        m_readPosition += static_cast<std::int32_t>(segment.size() + (isEnded ? 1 : 0));
        if (isEnded) {
            host::AppendWideOfMulti(units, cut.empty() ? segment : cut.append(segment), host::kSystemCodePage);
            return 1;
        }
        cut += segment;
    } while (Refill());
    host::AppendWideOfMulti(units, cut, host::kSystemCodePage);
    return IsAtEnd() ? 0 : 1;
}

int CMbcsTextFileWithBuffer::Write(wchar_t const *text) {
    std::string const bytes = host::MultiOfWide(text ? text : L"", host::kSystemCodePage);
    CStdioFile::Write(bytes.data(), bytes.size());
    return 1;
}

} // namespace zvi::lib
