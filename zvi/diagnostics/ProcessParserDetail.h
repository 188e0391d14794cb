#pragma once

#include "zvi/Export.h"
#include "zvi/diagnostics/ProcessMessagesDetail.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace zvi::lib::diagnostics {

/// What of a child's output is left of one pass to the next.
///
/// CR LF ends a line. BS, and a CR that no LF follows, end a piece of a line that will be written over. The text of
/// such a line is the first piece less as many characters as BS and CR came one after the other, and the new piece
/// behind it. A lone CR thus takes away one character, as a BS does; counters made with BS rely on that.
class ZVI_API ProcessParser {
public:
    /// Reads a beginning of the child's output up to the last segment that it holds whole, or until `messages` holds
    /// `limit`, and gives the number of bytes read. A CR at the very end is waited with, unless `isEnd` says that
    /// nothing follows. `unfinished` holds bytes from before `output` in which no segment ends, and is empty behind the
    /// first that does. With too little memory it stops early.
    std::size_t Read(std::string_view output, std::string &unfinished, std::size_t limit, bool isEnd,
                     ProcessMessages &messages);

private:
    enum class Ending { kLine, kReturn, kBackspace };

    struct Segment {
        std::string_view bytes;
        /// They, if they can be shared.
        SharedBytes shared;
    };

    // With too little memory these throw, and nothing has changed.
    void TakeSegment(std::string_view bytes, Ending ending, std::string &unfinished, ProcessMessages &messages);
    void TakeLine(Segment const &segment, ProcessMessages &messages);
    void TakePiece(Segment const &segment, Ending ending, ProcessMessages &messages);
    void AddOverwriting(Segment const &segment, ProcessMessages &messages);
    void AddFirstPiece(Segment const &segment, ProcessMessages &messages);

    ProcessMessage MessageOf(Segment const &segment) const;
    /// Lets the message take the place of the pending text, less what is erased of it.
    void WriteOver(ProcessMessage &message) const;

    int m_carry = 0;
    int m_isAtLineStart = 1;
    SharedBytes m_pending;
    /// Whether a CR is among what `m_carry` counts.
    bool m_hasReturned = false;
};

/// Whether a segment that the parser can take ends in these bytes.
ZVI_API bool HoldsSegmentEnd(std::string_view bytes);

} // namespace zvi::lib::diagnostics
