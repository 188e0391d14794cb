#pragma once

#include <cstddef>
#include <cstdint>
#include <streambuf>
#include <string>
#include <string_view>
#include <system_error>

namespace zvi::app {

/// What the host calls an open stream by: a descriptor, or a handle.
using HostStream = std::intptr_t;

/// The standard input (0), output (1) or error (2) of the process.
HostStream StandardStream(int number);

/// Writes all of the bytes, however many the host takes at a time, and waits while it takes none: a pipe may be full
/// and, because somebody who shares it wants that, refuse instead of waiting. `std::errc::broken_pipe` says that nobody
/// reads any more.
std::error_code WriteAll(HostStream stream, std::string_view bytes);

/// Reads at least one byte, and no more than have come, into the `size` bytes of room, which is not 0; waits while
/// there is none. `size` becomes the number of bytes read, 0 at the end of the input.
std::error_code ReadSome(HostStream stream, char *bytes, std::size_t &size);

/// The reason of a failure in words that are the same on both hosts.
std::string ReasonOf(std::error_code const &failure);

/// A buffer under an output stream that gathers bytes and hands them over in large pieces.
class GatheredOutput : public std::streambuf {
public:
    /// Why bytes could not be handed over; they are lost.
    std::error_code Failure() const { return m_failure; }

protected:
    int_type overflow(int_type byte) override;
    std::streamsize xsputn(char const *bytes, std::streamsize count) override;
    int sync() override;

    /// Hands bytes over. Those at the end that have to wait for more are taken off `bytes` before.
    virtual std::error_code HandOver(std::string_view &bytes) = 0;

private:
    bool Deliver(std::string_view bytes);

    std::string m_bytes; ///< not handed over yet
    std::error_code m_failure;
};

/// What is written to a stream of the host arrives there whole.
class StandardOutput : public GatheredOutput {
public:
    /// `stream` is open as long as the buffer lives.
    explicit StandardOutput(HostStream stream) : m_stream(stream) {}

protected:
    std::error_code HandOver(std::string_view &bytes) override { return WriteAll(m_stream, bytes); }

private:
    HostStream m_stream;
};

/// What comes from a stream of the host, piece by piece as it comes. Throws InputError where it cannot be read.
class StandardInput : public std::streambuf {
public:
    /// `stream` is open as long as the buffer lives.
    explicit StandardInput(HostStream stream) : m_stream(stream) {}

protected:
    int_type underflow() override;

private:
    HostStream m_stream;
    std::string m_bytes;
};

} // namespace zvi::app
