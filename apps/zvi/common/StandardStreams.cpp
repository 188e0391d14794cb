#include "apps/zvi/common/StandardStreams.h"

#include "apps/zvi/common/Failure.h"

namespace zvi::app {

namespace {

/// Bytes that are gathered at most before they are handed over, and read at most at once.
constexpr std::size_t kBytesAtOnce = 65536;

} // namespace

std::string ReasonOf(std::error_code const &failure) {
    return failure.default_error_condition().message();
}

std::streambuf::int_type GatheredOutput::overflow(int_type byte) {
    if (traits_type::eq_int_type(byte, traits_type::eof()))
        return traits_type::not_eof(byte);
    char const character = traits_type::to_char_type(byte);
    return xsputn(&character, 1) == 1 ? byte : traits_type::eof();
}

std::streamsize GatheredOutput::xsputn(char const *bytes, std::streamsize count) {
    std::string_view const text(bytes, static_cast<std::size_t>(count));
    if (m_bytes.empty() && text.size() >= kBytesAtOnce)
        return Deliver(text) ? count : 0;
    m_bytes.append(text);
    return m_bytes.size() < kBytesAtOnce || Deliver(m_bytes) ? count : 0;
}

int GatheredOutput::sync() {
    return m_bytes.empty() || Deliver(m_bytes) ? 0 : -1;
}

/// Hands the bytes over, and keeps those that have to wait for more.
bool GatheredOutput::Deliver(std::string_view bytes) {
    std::string_view done = bytes;
    m_failure = HandOver(done);
    m_bytes = m_failure ? std::string() : std::string(bytes.substr(done.size()));
    return !m_failure;
}

std::streambuf::int_type StandardInput::underflow() {
    m_bytes.resize(kBytesAtOnce);
    std::size_t size = m_bytes.size();
    if (std::error_code const failure = ReadSome(m_stream, m_bytes.data(), size))
        throw InputError(0, "cannot be read (" + ReasonOf(failure) + "); give it a file or a pipe");
    setg(m_bytes.data(), m_bytes.data(), m_bytes.data() + size);
    return size > 0 ? traits_type::to_int_type(m_bytes.front()) : traits_type::eof();
}

} // namespace zvi::app
