#include "zvi/core/TextBufferDetail.h"

#include "zvi/host/Files.h"

#include <cstring>

namespace zvi::lib::core {

namespace {

constexpr std::size_t kBytesAtOnce = std::size_t{1} << 16;

/// Takes the CR of each CR LF out, and gives the new end.
char *WithoutCr(char *first, char *last) {
    auto *from = static_cast<char *>(std::memchr(first, '\r', static_cast<std::size_t>(last - first)));
    if (!from)
        return last;
    char *to = from;
    while (from != last) {
        if (*from == '\r' && from + 1 != last && from[1] == '\n')
            ++from;
        *to++ = *from++;
    }
    return to;
}

} // namespace

TextBuffer::TextBuffer(std::wstring_view path) : m_file(host::OpenStream(path, "rb")), m_bytes(kBytesAtOnce) {
    if (m_file)
        std::setvbuf(m_file.get(), nullptr, _IONBF, 0);
}

TextBuffer::~TextBuffer() = default;

TextBuffer::int_type TextBuffer::underflow() {
    if (!m_file)
        return traits_type::eof();
    char *const first = m_bytes.data();
    std::size_t count = 0;
    if (m_heldCr)
        first[count++] = '\r';
    std::size_t const read = std::fread(first + count, 1, m_bytes.size() - count, m_file.get());
    count += read;
    m_heldCr = read != 0 && first[count - 1] == '\r';
    if (m_heldCr)
        --count;
    if (count == 0)
        return m_heldCr ? underflow() : traits_type::eof();
    setg(first, first, WithoutCr(first, first + count));
    return traits_type::to_int_type(*first);
}

} // namespace zvi::lib::core
