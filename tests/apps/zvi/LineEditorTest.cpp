#include "apps/zvi/eval/LineEditor.h"
#include "apps/zvi/common/Joined.h"

#include <gtest/gtest.h>

using zvi::app::LineEditor;

namespace {

constexpr char const *kUp = "\x1B[A";
constexpr char const *kDown = "\x1B[B";
constexpr char const *kRight = "\x1B[C";
constexpr char const *kLeft = "\x1B[D";

LineEditor::Event Type(LineEditor &editor, std::string const &keys) {
    LineEditor::Event event = LineEditor::Event::kNone;
    for (char const key : keys)
        event = editor.Feed(key);
    return event;
}

std::string Line(std::string const &keys) {
    LineEditor editor;
    editor.Begin();
    Type(editor, keys);
    return zvi::app::Joined(editor.Text().substr(0, editor.Cursor()), "|", editor.Text().substr(editor.Cursor()));
}

} // namespace

TEST(LineEditor, MovesAndErasesByCharacters) {
    struct Row {
        std::string keys;
        char const *line;
    };
    std::string const left = kLeft;
    for (Row const &row : std::initializer_list<Row>{
             {"12" + left + "+", "1+|2"},
             {"12" + left + left + left + "0", "0|12"},
             {"12\x1B[H+\x1B[F3", "+123|"},
             {"12\x1BOH+", "+|12"},
             {"12\x1B[1~+\x1B[4~3", "+123|"},
             {"12\x7F", "1|"},
             {"\x7F\x08", "|"},
             {"12" + left + left + "\x1B[3~", "|2"},
             {"1\u00E92" + left + left + "x", "1x|\u00E92"},
             {"1\u00E9\x7F", "1|"},
             {"\U0001F600" + left + kRight + "1", "\U0001F6001|"},
             {"1+22 33\x17", "1+22 |"},
             {"123" + left + "\x0B", "12|"},
             {"123" + left + "\x15", "|3"},
             {"12\x01\x06+", "1+|2"},
             {"1\x1B[99Z\x1Bx\t2", "12|"},
             {"12\x01\x04", "|2"},
         }) {
        EXPECT_EQ(Line(row.keys), row.line) << testing::PrintToString(row.keys);
    }
}

TEST(LineEditor, TellsWhatAKeyDoesToTheLine) {
    LineEditor editor;
    editor.Begin();
    EXPECT_EQ(Type(editor, "\x04"), LineEditor::Event::kEnd);
    EXPECT_EQ(Type(editor, "1\x03"), LineEditor::Event::kCancel);
    EXPECT_EQ(Type(editor, "\r"), LineEditor::Event::kDone);
}

TEST(LineEditor, BringsEarlierLinesBackAndKeepsTheUnfinishedOne) {
    LineEditor editor;
    for (char const *line : {"first", "second", "second", ""})
        editor.Remember(line);
    editor.Begin();
    Type(editor, std::string("new") + kUp);
    EXPECT_EQ(editor.Text(), "second");
    Type(editor, std::string(kUp) + kUp + kUp);
    EXPECT_EQ(editor.Text(), "first");
    Type(editor, std::string("!") + kDown + kDown + kDown);
    EXPECT_EQ(editor.Text(), "new");
    EXPECT_EQ(editor.Cursor(), 3u);
}
