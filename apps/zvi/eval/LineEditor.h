#pragma once

#include <string>
#include <vector>

namespace zvi::app {

/// The line that a user edits at a prompt, key by key, and the lines before it. Knows nothing of the terminal: keys
/// come in as the bytes that terminals send, UTF-8 and escape sequences included.
class LineEditor {
public:
    enum class Event {
        kNone,   ///< the line may have changed
        kDone,   ///< Enter: `Text` is the line
        kCancel, ///< Ctrl-C: the line is to be given up
        kEnd     ///< Ctrl-D on an empty line: no further line comes
    };

    /// Takes the next byte. Keys: left, right, Home, End, Backspace, Delete, up and down for the history, and Ctrl-A
    /// -B -D -E -F -H -K -N -P -U -W as in most line editors; other control keys do nothing.
    Event Feed(char byte);

    /// Begins an empty line.
    void Begin();

    /// Puts a line behind the history, unless it is empty or repeats the last one.
    void Remember(std::string const &line);

    std::string const &Text() const { return m_text; }
    /// Index of the byte before which the cursor stands; always at the begin of a character.
    std::size_t Cursor() const { return m_cursor; }

private:
    enum class Escape { kNone, kBegun, kSequence };

    Event FeedControl(char byte);
    void FeedSequence(char byte);
    void Insert(char byte);
    void Erase(std::size_t from, std::size_t to);
    void Recall(std::size_t place);
    std::size_t Left() const;
    std::size_t Right() const;
    std::size_t WordLeft() const;

    std::string m_text;
    std::size_t m_cursor = 0;
    Escape m_escape = Escape::kNone;
    std::string m_parameters; ///< of an escape sequence
    std::vector<std::string> m_history;
    std::size_t m_recalled = 0; ///< index of the line shown; the size of the history for the new one
    std::string m_unfinished;   ///< the new line while an older one is shown
};

} // namespace zvi::app
