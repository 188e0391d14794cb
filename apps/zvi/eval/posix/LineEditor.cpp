#include "apps/zvi/eval/LineEditor.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <histedit.h>
#include <langinfo.h>
#include <string_view>

namespace zvi::app {

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

class LibeditEditor : public LineEditor {
public:
    LibeditEditor() : m_edit(el_init("zvi", stdin, stdout, stderr)), m_history(history_init()) {
        if (Works())
            Prepare();
    }
    ~LibeditEditor() override {
        if (m_history)
            history_end(m_history);
        if (m_edit)
            el_end(m_edit);
    }
    LibeditEditor(LibeditEditor const &) = delete;
    LibeditEditor &operator=(LibeditEditor const &) = delete;

    bool Works() const { return m_edit && m_history; }

    std::optional<std::string> Read(std::string const &prompt, std::ostream &out) override {
        m_prompt = prompt;
        do {
            m_givenUp = false;
            int length = 0;
            char const *const text = el_gets(m_edit, &length);
            if (text && length > 0)
                return Remembered(std::string(text, static_cast<std::size_t>(length)));
            out << (m_givenUp ? "^C\n" : "\n") << std::flush;
        } while (m_givenUp);
        return std::nullopt;
    }

private:
    void Prepare() {
        HistEvent event;
        history(m_history, &event, H_SETSIZE, kMostRemembered);
        history(m_history, &event, H_SETUNIQUE, 1);
        el_set(m_edit, EL_CLIENTDATA, this);
        el_set(m_edit, EL_PROMPT, &LibeditEditor::Prompt);
        el_set(m_edit, EL_HIST, history, m_history);
        el_set(m_edit, EL_EDITOR, "emacs");
        el_set(m_edit, EL_SIGNAL, 1); // a signal that ends the program leaves the terminal as it was
        el_set(m_edit, EL_ADDFN, "zvi-give-up-line", "Give up the line", &LibeditEditor::GiveUp);
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

    static LibeditEditor &Of(EditLine *edit) {
        void *editor = nullptr;
        el_get(edit, EL_CLIENTDATA, &editor);
        return *static_cast<LibeditEditor *>(editor);
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

} // namespace

std::unique_ptr<LineEditor> LineEditor::ForTerminal() {
    if (!CanMoveCursor())
        return nullptr;
    UseUtf8();
    auto editor = std::make_unique<LibeditEditor>();
    return editor->Works() ? std::move(editor) : nullptr;
}

} // namespace zvi::app
