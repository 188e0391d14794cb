#include "apps/zvi/common/StandardStreams.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cassert>
#include <cerrno>

namespace zvi::app {

namespace {

/// More than any host's limit for one call.
constexpr std::size_t kBytesAtOnce = std::size_t{1} << 30;

int Descriptor(HostStream stream) {
    return static_cast<int>(stream);
}

/// Behind a call that failed: whether it may succeed when it is made again. Where it would have had to wait, that is
/// done; the flag that forbids waiting belongs to everybody who shares the stream and stays.
bool MayTryAgain(HostStream stream, short event) {
    if (errno != EAGAIN && errno != EWOULDBLOCK)
        return errno == EINTR;
    pollfd waited{Descriptor(stream), event, 0};
    return ::poll(&waited, 1, -1) >= 0 || errno == EINTR;
}

std::error_code LastFailure() {
    return {errno, std::generic_category()};
}

} // namespace

HostStream StandardStream(int number) {
    assert(number >= 0 && number <= 2);
    return number;
}

std::error_code WriteAll(HostStream stream, std::string_view bytes) {
    while (!bytes.empty()) {
        ssize_t const written = ::write(Descriptor(stream), bytes.data(), std::min(bytes.size(), kBytesAtOnce));
        if (written >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
        else if (!MayTryAgain(stream, POLLOUT))
            return LastFailure();
    }
    return {};
}

std::error_code ReadSome(HostStream stream, char *bytes, std::size_t &size) {
    assert(size > 0);
    ssize_t count = 0;
    do
        count = ::read(Descriptor(stream), bytes, size);
    while (count < 0 && MayTryAgain(stream, POLLIN));
    size = static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    return count < 0 ? LastFailure() : std::error_code();
}

} // namespace zvi::app
