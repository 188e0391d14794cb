#include "apps/zvi/eval/LineEditor.h"

namespace zvi::app {

std::unique_ptr<LineEditor> LineEditor::ForTerminal() {
    return nullptr;
}

} // namespace zvi::app
