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
    text.clear();
    cursor = 0;
    escape = Escape::kNone;
    recalled = history.size();
    unfinished.clear();
}

void LineEditor::Remember(std::string const &line) {
    if (!line.empty() && (history.empty() || history.back() != line)) {
        history.push_back(line);
    }
    recalled = history.size();
}

LineEditor::Event LineEditor::Feed(char byte) {
    if (escape == Escape::kBegun) {
        escape = byte == '[' || byte == 'O' ? Escape::kSequence : Escape::kNone;
        parameters.clear();
        return Event::kNone;
    }
    if (escape == Escape::kSequence) {
        FeedSequence(byte);
        return Event::kNone;
    }
    if (IsControl(byte)) {
        return FeedControl(byte);
    }
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
        if (text.empty()) {
            return Event::kEnd;
        }
        Erase(cursor, Right());
        break;
    case Ctrl('H'):
    case kDelete:
        Erase(Left(), cursor);
        break;
    case Ctrl('A'):
        cursor = 0;
        break;
    case Ctrl('E'):
        cursor = text.size();
        break;
    case Ctrl('B'):
        cursor = Left();
        break;
    case Ctrl('F'):
        cursor = Right();
        break;
    case Ctrl('K'):
        Erase(cursor, text.size());
        break;
    case Ctrl('U'):
        Erase(0, cursor);
        break;
    case Ctrl('W'):
        Erase(WordLeft(), cursor);
        break;
    case Ctrl('P'):
        Recall(recalled == 0 ? 0 : recalled - 1);
        break;
    case Ctrl('N'):
        Recall(recalled + 1);
        break;
    case kEscape:
        escape = Escape::kBegun;
        break;
    default:
        break;
    }
    return Event::kNone;
}

/// The bytes behind "ESC [" or "ESC O": parameters, then the letter or "~" that ends the sequence.
void LineEditor::FeedSequence(char byte) {
    if ((byte >= '0' && byte <= '9') || byte == ';') {
        parameters += byte;
        return;
    }
    escape = Escape::kNone;
    switch (byte) {
    case 'A':
        Recall(recalled == 0 ? 0 : recalled - 1);
        break;
    case 'B':
        Recall(recalled + 1);
        break;
    case 'C':
        cursor = Right();
        break;
    case 'D':
        cursor = Left();
        break;
    case 'H':
        cursor = 0;
        break;
    case 'F':
        cursor = text.size();
        break;
    case '~':
        if (parameters == "3") {
            Erase(cursor, Right());
        } else if (parameters == "1" || parameters == "7") {
            cursor = 0;
        } else if (parameters == "4" || parameters == "8") {
            cursor = text.size();
        }
        break;
    default:
        break;
    }
}

void LineEditor::Insert(char byte) {
    if (text.size() < kMostBytes) {
        text.insert(text.begin() + static_cast<std::ptrdiff_t>(cursor), byte);
        ++cursor;
    }
}

void LineEditor::Erase(std::size_t from, std::size_t to) {
    text.erase(from, to - from);
    cursor = from;
}

void LineEditor::Recall(std::size_t place) {
    if (place > history.size() || place == recalled) {
        return;
    }
    if (recalled == history.size()) {
        unfinished = text;
    }
    recalled = place;
    text = recalled == history.size() ? unfinished : history[recalled];
    cursor = text.size();
}

std::size_t LineEditor::Left() const {
    std::size_t at = cursor;
    while (at > 0 && IsContinuation(text[--at])) {
    }
    return at;
}

std::size_t LineEditor::Right() const {
    std::size_t at = cursor;
    while (at < text.size() && IsContinuation(text[++at])) {
    }
    return at;
}

std::size_t LineEditor::WordLeft() const {
    std::size_t at = cursor;
    while (at > 0 && text[at - 1] == ' ') {
        --at;
    }
    while (at > 0 && text[at - 1] != ' ') {
        --at;
    }
    return at;
}

} // namespace zvi::app
