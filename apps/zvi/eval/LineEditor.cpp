#include "apps/zvi/eval/LineEditor.h"

namespace zvi::app {

namespace {

/// The control character of a letter.
constexpr char Ctrl(char letter) {
    return static_cast<char>(letter & 0x1F);
}

constexpr char kEscape = 0x1B;
constexpr char kDelete = 0x7F;

/// Longest line that can be typed, in bytes; more than the language reads.
constexpr std::size_t kMostBytes = 8192;

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0u) == 0x80u;
}

bool IsControl(char byte) {
    return static_cast<unsigned char>(byte) < 0x20 || byte == kDelete;
}

} // namespace

void LineEditor::Begin() {
    m_text.clear();
    m_cursor = 0;
    m_escape = Escape::kNone;
    m_recalled = m_history.size();
    m_unfinished.clear();
}

void LineEditor::Remember(std::string const &line) {
    if (!line.empty() && (m_history.empty() || m_history.back() != line))
        m_history.push_back(line);
    m_recalled = m_history.size();
}

LineEditor::Event LineEditor::Feed(char byte) {
    if (m_escape == Escape::kBegun) {
        m_escape = byte == '[' || byte == 'O' ? Escape::kSequence : Escape::kNone;
        m_parameters.clear();
        return Event::kNone;
    }
    if (m_escape == Escape::kSequence) {
        FeedSequence(byte);
        return Event::kNone;
    }
    if (IsControl(byte))
        return FeedControl(byte);
    Insert(byte);
    return Event::kNone;
}

LineEditor::Event LineEditor::FeedControl(char byte) {
    switch (byte) {
    case '\r':
    case '\n':
        return Event::kDone;
    case Ctrl('C'):
        return Event::kCancel;
    case Ctrl('D'):
        if (m_text.empty())
            return Event::kEnd;
        Erase(m_cursor, Right());
        break;
    case Ctrl('H'):
    case kDelete:
        Erase(Left(), m_cursor);
        break;
    case Ctrl('A'):
        m_cursor = 0;
        break;
    case Ctrl('E'):
        m_cursor = m_text.size();
        break;
    case Ctrl('B'):
        m_cursor = Left();
        break;
    case Ctrl('F'):
        m_cursor = Right();
        break;
    case Ctrl('K'):
        Erase(m_cursor, m_text.size());
        break;
    case Ctrl('U'):
        Erase(0, m_cursor);
        break;
    case Ctrl('W'):
        Erase(WordLeft(), m_cursor);
        break;
    case Ctrl('P'):
        Recall(m_recalled == 0 ? 0 : m_recalled - 1);
        break;
    case Ctrl('N'):
        Recall(m_recalled + 1);
        break;
    case kEscape:
        m_escape = Escape::kBegun;
        break;
    default:
        break;
    }
    return Event::kNone;
}

/// The bytes behind "ESC [" or "ESC O": parameters, then the letter or "~" that ends the sequence.
void LineEditor::FeedSequence(char byte) {
    if ((byte >= '0' && byte <= '9') || byte == ';') {
        m_parameters += byte;
        return;
    }
    m_escape = Escape::kNone;
    switch (byte) {
    case 'A':
        Recall(m_recalled == 0 ? 0 : m_recalled - 1);
        break;
    case 'B':
        Recall(m_recalled + 1);
        break;
    case 'C':
        m_cursor = Right();
        break;
    case 'D':
        m_cursor = Left();
        break;
    case 'H':
        m_cursor = 0;
        break;
    case 'F':
        m_cursor = m_text.size();
        break;
    case '~':
        if (m_parameters == "3")
            Erase(m_cursor, Right());
        else if (m_parameters == "1" || m_parameters == "7")
            m_cursor = 0;
        else if (m_parameters == "4" || m_parameters == "8")
            m_cursor = m_text.size();
        break;
    default:
        break;
    }
}

void LineEditor::Insert(char byte) {
    if (m_text.size() < kMostBytes) {
        m_text.insert(m_text.begin() + static_cast<std::ptrdiff_t>(m_cursor), byte);
        ++m_cursor;
    }
}

void LineEditor::Erase(std::size_t from, std::size_t to) {
    m_text.erase(from, to - from);
    m_cursor = from;
}

void LineEditor::Recall(std::size_t place) {
    if (place > m_history.size() || place == m_recalled)
        return;
    if (m_recalled == m_history.size())
        m_unfinished = m_text;
    m_recalled = place;
    m_text = m_recalled == m_history.size() ? m_unfinished : m_history[m_recalled];
    m_cursor = m_text.size();
}

std::size_t LineEditor::Left() const {
    std::size_t at = m_cursor;
    while (at > 0 && IsContinuation(m_text[--at])) {
    }
    return at;
}

std::size_t LineEditor::Right() const {
    std::size_t at = m_cursor;
    while (at < m_text.size() && IsContinuation(m_text[++at])) {
    }
    return at;
}

std::size_t LineEditor::WordLeft() const {
    std::size_t at = m_cursor;
    while (at > 0 && m_text[at - 1] == ' ')
        --at;
    while (at > 0 && m_text[at - 1] != ' ')
        --at;
    return at;
}

} // namespace zvi::app
