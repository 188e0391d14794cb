#include "apps/zvi/eval/LineInput.h"

#ifndef _WIN32
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <histedit.h>
#include <langinfo.h>
#include <string_view>
#endif

namespace zvi::app {

#ifdef _WIN32

/// Nothing to do: the console edits the line before the program sees it.
class LineInput::Editor {
public:
    static std::unique_ptr<Editor> ForTerminal() { return nullptr; }
    std::optional<std::string> Read(Console &, std::string const &) { return std::nullopt; }
};

#else

namespace {

/// Most lines that are kept to be brought back.
constexpr int kMostRemembered = 1000;

bool CanMoveCursor() {
    char const *const terminal = std::getenv("TERM");
    return terminal && *terminal && std::string_view(terminal) != "dumb";
}

/// Lets characters be those of UTF-8, whatever the user's language is.
void UseUtf8() {
    std::setlocale(LC_CTYPE, "");
    if (std::string_view(nl_langinfo(CODESET)) != "UTF-8")
        std::setlocale(LC_CTYPE, "C.UTF-8");
}

} // namespace

/// The line editing of libedit, with the keys that the user's .editrc asks for.
class LineInput::Editor {
public:
    /// Null where the terminal cannot be drawn on, or libedit cannot be had.
    static std::unique_ptr<Editor> ForTerminal() {
        if (!CanMoveCursor())
            return nullptr;
        UseUtf8();
        std::unique_ptr<Editor> editor(new Editor);
        return editor->m_edit && editor->m_history ? std::move(editor) : nullptr;
    }

    ~Editor() {
        if (m_history)
            history_end(m_history);
        if (m_edit)
            el_end(m_edit);
    }
    Editor(Editor const &) = delete;
    Editor &operator=(Editor const &) = delete;

    std::optional<std::string> Read(Console &console, std::string const &prompt) {
        m_prompt = prompt;
        do {
            m_givenUp = false;
            int length = 0;
            char const *const text = el_gets(m_edit, &length);
            if (text && length > 0)
                return Remembered(std::string(text, static_cast<std::size_t>(length)));
            console.out << (m_givenUp ? "^C\n" : "\n") << std::flush;
        } while (m_givenUp);
        return std::nullopt;
    }

private:
    Editor() : m_edit(el_init("zvi", stdin, stdout, stderr)), m_history(history_init()) {
        if (!m_edit || !m_history)
            return;
        HistEvent event;
        history(m_history, &event, H_SETSIZE, kMostRemembered);
        history(m_history, &event, H_SETUNIQUE, 1);
        el_set(m_edit, EL_CLIENTDATA, this);
        el_set(m_edit, EL_PROMPT, &Editor::Prompt);
        el_set(m_edit, EL_HIST, history, m_history);
        el_set(m_edit, EL_EDITOR, "emacs");
        el_set(m_edit, EL_SIGNAL, 1); // a signal that ends the program leaves the terminal as it was
        el_set(m_edit, EL_ADDFN, "zvi-give-up-line", "Give up the line", &Editor::GiveUp);
        el_set(m_edit, EL_SETTY, "-d", "-isig", nullptr);
        el_source(m_edit, nullptr);
        el_set(m_edit, EL_BIND, "^C", "zvi-give-up-line", nullptr);
    }

    std::string Remembered(std::string line) {
        if (line.back() == '\n')
            line.pop_back();
        HistEvent event;
        if (!line.empty())
            history(m_history, &event, H_ENTER, line.c_str());
        return line;
    }

    static Editor &Of(EditLine *edit) {
        void *editor = nullptr;
        el_get(edit, EL_CLIENTDATA, &editor);
        return *static_cast<Editor *>(editor);
    }

    static char *Prompt(EditLine *edit) { return Of(edit).m_prompt.data(); }

    static unsigned char GiveUp(EditLine *edit, int) {
        Of(edit).m_givenUp = true;
        return CC_EOF;
    }

    EditLine *m_edit;
    History *m_history;
    std::string m_prompt;
    bool m_givenUp = false;
};

#endif

LineInput::LineInput(Console &console) : m_console(console), m_editor(Editor::ForTerminal()) {}

LineInput::~LineInput() = default;

std::optional<std::string> LineInput::Next(std::string const &prompt) {
    if (m_editor) {
        m_console.out << std::flush;
        return m_editor->Read(m_console, prompt);
    }
    m_console.out << prompt << std::flush;
    std::string line;
    if (std::getline(m_console.in, line))
        return line;
    m_console.out << "\n";
    return std::nullopt;
}

} // namespace zvi::app
