#include "apps/zvi/common/Terminal.h"

#include <cstdlib>

namespace zvi::app {

bool WantsColor(std::string const &choice, bool isTerminal) {
    if (choice != "auto")
        return choice == "always";
    char const *noColor = std::getenv("NO_COLOR");
    return isTerminal && !(noColor && *noColor);
}

} // namespace zvi::app
