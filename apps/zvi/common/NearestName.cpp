#include "apps/zvi/common/NearestName.h"

#include <algorithm>

namespace zvi::app {

std::size_t EditDistance(std::string_view a, std::string_view b) {
    std::size_t const width = b.size() + 1;
    std::vector<std::size_t> rows((a.size() + 1) * width);
    auto at = [&rows, width](std::size_t i, std::size_t j) -> std::size_t & { return rows[i * width + j]; };
    for (std::size_t i = 0; i <= a.size(); ++i) {
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                at(i, j) = i + j;
                continue;
            }
            std::size_t const change = a[i - 1] == b[j - 1] ? 0 : 1;
            at(i, j) = std::min({at(i - 1, j) + 1, at(i, j - 1) + 1, at(i - 1, j - 1) + change});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                at(i, j) = std::min(at(i, j), at(i - 2, j - 2) + 1);
        }
    }
    return rows.back();
}

std::string NearestName(std::string_view name, std::vector<std::string> const &names) {
    // Longer than any name of ours by far: no typing slip, and the table of distances would grow without need.
    constexpr std::size_t kLongestTypedName = 256;
    std::string nearest;
    std::size_t least = 0;
    for (std::string const &candidate : names) {
        std::size_t const longer = std::max(name.size(), candidate.size());
        if (longer > kLongestTypedName)
            continue;
        std::size_t const distance = EditDistance(name, candidate);
        bool const near = distance < longer && distance <= std::max<std::size_t>(1, longer / 3);
        if (near && (nearest.empty() || distance < least)) {
            nearest = candidate;
            least = distance;
        }
    }
    return nearest;
}

std::string DidYouMean(std::string_view name, std::vector<std::string> const &names, std::string const &otherwise) {
    std::string const nearest = NearestName(name, names);
    return nearest.empty() ? otherwise : "did you mean '" + nearest + "'?";
}

} // namespace zvi::app
