#pragma once

#include "zvi/diagnostics/MProcessObjDetail.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace zvi::lib::diagnostics {

/// Bytes that a worker reads at once.
inline constexpr std::size_t kReadSize = 8191;

/// Ends every line of a child with CR LF: a bare LF gets a CR, and so does a last line that the child did not end.
class LineEnds {
public:
    /// A part of the output of at most `kReadSize` bytes, mended; holds until the next call.
    std::string_view Mended(std::string_view output);
    /// What the output lacks at its end.
    std::string_view AtEnd() const;

private:
    std::array<char, 2 * kReadSize> m_mended;
    char m_last = '\n';
};

/// What a worker reads into and mends in. It comes with the run, so that the worker's stack stays shallow, which costs
/// less to take down when the thread ends.
struct WorkerBuffers {
    std::array<char, kReadSize> bytes;
    LineEnds ends;
};

/// Runs a child from its start to its end, on a thread of its own.
void RunChild(ProcessThreadParameters const &parameters);

} // namespace zvi::lib::diagnostics
