#include "zvi/diagnostics/ProcessParserDetail.h"

#include <algorithm>
#include <new>
#include <utility>

namespace zvi::lib::diagnostics {

namespace {

constexpr char kCarriageReturn = '\r';
constexpr char kLineFeed = '\n';
constexpr char kBackspace = '\b';

bool IsBlank(std::string_view bytes) {
    return bytes.find_first_not_of(" \t\n\v\f\r") == bytes.npos;
}

/// Finds the places of CR and BS in their order, each kind with the speed of a search for one character.
class EndFinder {
public:
    explicit EndFinder(std::string_view bytes) : m_bytes(bytes) {}

    /// The first end at or behind `from`, which never falls; npos when there is none.
    std::size_t Next(std::size_t from) {
        Advance(m_return, kCarriageReturn, from);
        Advance(m_backspace, kBackspace, from);
        return std::min(m_return, m_backspace);
    }

private:
    void Advance(std::size_t &place, char character, std::size_t from) const {
        if (place < from || from == 0)
            place = m_bytes.find(character, from);
    }

    std::string_view m_bytes;
    std::size_t m_return = 0;
    std::size_t m_backspace = 0;
};

/// The bytes of a string, if any, with others behind them; gives them back when they are not wanted after all.
class JoinedSegment {
public:
    JoinedSegment(std::string &unfinished, std::string_view bytes)
        : m_unfinished(unfinished), m_sizeBefore(unfinished.size()),
          m_joined(unfinished.empty() ? nullptr : std::make_shared<std::string>()) {
        if (m_joined) {
            m_unfinished.append(bytes);
            m_joined->swap(m_unfinished);
        }
    }
    ~JoinedSegment() {
        if (m_joined) {
            m_joined->resize(m_sizeBefore);
            m_unfinished.swap(*m_joined);
        }
    }
    JoinedSegment(JoinedSegment const &) = delete;
    JoinedSegment &operator=(JoinedSegment const &) = delete;

    /// Null when there was nothing to join with.
    SharedBytes Bytes() const { return m_joined; }
    void Keep() { m_joined.reset(); }

private:
    std::string &m_unfinished;
    std::size_t m_sizeBefore;
    std::shared_ptr<std::string> m_joined;
};

} // namespace

std::size_t ProcessParser::Read(std::string_view output, std::string &unfinished, std::size_t limit, bool isEnd,
                                ProcessMessages &messages) {
    EndFinder finder(output);
    std::size_t begin = 0;
    while (messages.Count() < limit) {
        std::size_t const place = finder.Next(begin);
        if (place == output.npos)
            break;
        bool const isReturn = output[place] == kCarriageReturn;
        bool const isLast = place + 1 == output.size();
        if (isReturn && isLast && !isEnd)
            break;
        bool const isLine = isReturn && !isLast && output[place + 1] == kLineFeed;
        Ending const ending = isLine ? Ending::kLine : isReturn ? Ending::kReturn : Ending::kBackspace;
        try {
            TakeSegment(output.substr(begin, place - begin), ending, unfinished, messages);
        } catch (std::bad_alloc const &) {
            break;
        }
        begin = place + 1;
    }
    return begin;
}

void ProcessParser::TakeSegment(std::string_view bytes, Ending ending, std::string &unfinished,
                                ProcessMessages &messages) {
    // The line feed of the line before.
    if (unfinished.empty() && bytes.starts_with(kLineFeed))
        bytes.remove_prefix(1);
    JoinedSegment joined(unfinished, bytes);
    Segment const segment{joined.Bytes() ? std::string_view(*joined.Bytes()) : bytes, joined.Bytes()};
    if (ending == Ending::kLine)
        TakeLine(segment, messages);
    else
        TakePiece(segment, ending, messages);
    joined.Keep();
}

void ProcessParser::TakeLine(Segment const &segment, ProcessMessages &messages) {
    ProcessMessage message = MessageOf(segment);
    message.endsLine = true;
    if (m_carry >= 1)
        WriteOver(message);
    if (m_carry < 1 || !IsBlank(segment.bytes))
        messages.Add(std::move(message), segment.bytes);
    m_isAtLineStart = 1;
    m_carry = 0;
    m_hasReturned = false;
    m_pending.reset();
}

void ProcessParser::TakePiece(Segment const &segment, Ending ending, ProcessMessages &messages) {
    bool const isReturn = ending == Ending::kReturn;
    if (segment.bytes.empty()) {
        ++m_carry;
        m_hasReturned = m_hasReturned || isReturn;
        return;
    }
    if (m_isAtLineStart == 0)
        AddOverwriting(segment, messages);
    else
        AddFirstPiece(segment, messages);
    m_carry = 1;
    m_hasReturned = isReturn;
}

void ProcessParser::AddOverwriting(Segment const &segment, ProcessMessages &messages) {
    ProcessMessage message = MessageOf(segment);
    WriteOver(message);
    message.showsOwn = !IsBlank(segment.bytes);
    int const isAtLineStart = message.showsOwn ? 0 : 1;
    messages.Add(std::move(message), segment.bytes);
    m_isAtLineStart = isAtLineStart;
}

void ProcessParser::AddFirstPiece(Segment const &segment, ProcessMessages &messages) {
    SharedBytes piece = segment.shared ? segment.shared : std::make_shared<std::string const>(segment.bytes);
    ProcessMessage message = MessageOf(segment);
    message.own = piece;
    messages.Add(std::move(message), segment.bytes);
    m_pending = std::move(piece);
    m_isAtLineStart = 0;
}

ProcessMessage ProcessParser::MessageOf(Segment const &segment) const {
    ProcessMessage message;
    message.own = segment.shared;
    message.back = m_hasReturned ? T_PROCESS_MSG::kLineStart : m_carry;
    return message;
}

void ProcessParser::WriteOver(ProcessMessage &message) const {
    message.isSame = true;
    message.kept = m_pending;
    std::size_t const size = m_pending ? m_pending->size() : 0;
    message.keptSize = size - std::min(size, static_cast<std::size_t>(m_carry));
}

bool HoldsSegmentEnd(std::string_view bytes) {
    // A CR is an end once it is known what follows it.
    std::size_t const carriageReturn = bytes.find(kCarriageReturn);
    return bytes.find(kBackspace) != bytes.npos || (carriageReturn != bytes.npos && carriageReturn + 1 < bytes.size());
}

} // namespace zvi::lib::diagnostics
