#include "apps/zvi/domains/model/ReadingOptions.h"

#include "apps/zvi/common/Failure.h"

namespace zvi::app {

std::string DrawingNamed(std::vector<std::string> const &words) {
    if (words.size() > 1)
        throw UsageError("one drawing at a time; '" + words[1] + "' is one too many");
    if (!words.empty() && words[0].empty())
        throw UsageError("the name of the drawing is empty; name a file, or '-' for standard input");
    return words.empty() ? "-" : words[0];
}

} // namespace zvi::app
