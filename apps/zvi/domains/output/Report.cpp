#include "apps/zvi/domains/output/Report.h"

#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/domains/output/JoinAdvice.h"
#include "apps/zvi/domains/output/TextTable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <utility>

namespace zvi::app {

namespace {

using Lines = std::vector<std::string>;

/// Leftovers, gaps, types and heights that are spelled out; the rest is counted.
constexpr std::size_t kShownLeftovers = 10;
constexpr std::size_t kShownGaps = 10;
constexpr std::size_t kShownTypes = 12;
constexpr std::size_t kShownHeights = 6;

std::string Count(std::size_t count, std::string const &one, std::string const &many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string Count(int count, std::string const &one, std::string const &many) {
    return Count(static_cast<std::size_t>(count), one, many);
}

/// "3 TEXT, 1 HATCH".
std::string TypeCounts(std::map<std::string, int> const &counts) {
    std::string text;
    std::size_t shown = 0;
    for (auto const &[type, count] : counts) {
        if (shown == kShownTypes)
            return text + " and " + Count(counts.size() - shown, "other type", "other types");
        text += (shown++ == 0 ? "" : ", ") + std::to_string(count) + " " + type;
    }
    return text;
}

/// How many curves are on layers that are not shown; they were taken because they were asked for.
std::size_t CurvesNotShown(DrawingInput const &input) {
    auto const isNotShown = [&input](CurveOrigin const &origin) {
        DrawingLayer const &layer = input.layers[origin.layer];
        return layer.isOff || layer.isFrozen;
    };
    return static_cast<std::size_t>(std::count_if(input.origins.begin(), input.origins.end(), isNotShown));
}

/// Tells heights that differ by more than the tolerance, those of most entities first.
void AddHeights(Lines &lines, std::map<double, int> const &heights, double joinTolerance) {
    std::vector<std::pair<double, int>> levels;
    for (auto const &[height, count] : heights) {
        if (levels.empty() || height - levels.back().first > joinTolerance)
            levels.emplace_back(height, 0);
        levels.back().second += count;
    }
    if (levels.size() < 2)
        return;
    std::stable_sort(levels.begin(), levels.end(), [](auto const &a, auto const &b) { return a.second > b.second; });
    std::size_t const shown = std::min(levels.size(), kShownHeights);
    std::string text = "took " + Count(levels.size(), "height", "heights") + " as one, seen from above: ";
    for (std::size_t i = 0; i < shown; ++i)
        text += Joined(i == 0 ? "" : ", ", std::to_string(levels[i].second), " at z = ", ShortNumber(levels[i].first));
    lines.push_back(shown < levels.size() ? Joined(text, " and ", std::to_string(levels.size() - shown), " more")
                                          : text);
}

void AddReading(Lines &lines, DrawingInput const &input, double joinTolerance) {
    ReadingNotes const &notes = input.notes;
    lines.push_back("read " + Count(input.curves.size(), "curve", "curves") + ", units: " + input.units);
    if (std::size_t const count = CurvesNotShown(input); count > 0)
        lines.push_back("took " + Count(count, "curve", "curves") +
                        " on layers that are off or frozen, as --layer asks");
    if (!notes.flattened.empty())
        lines.push_back(
            "flattened " + TypeCounts(notes.flattened) + " into " + Count(notes.chords, "chord", "chords") +
            " (--chord-error " + ShortNumber(notes.chordError, 3) +
            (notes.isCoarse ? "; too many to be as close as ends are joined, so some may miss them)" : ")"));
    AddHeights(lines, notes.heights, joinTolerance);
    if (notes.tilted > 0)
        lines.push_back("took " + Count(notes.tilted, "entity that is", "entities that are") +
                        " not level as seen from above");
    if (notes.bytesAfterEnd > 0)
        lines.push_back("passed over " + Count(notes.bytesAfterEnd, "byte", "bytes") + " after the end of the drawing");
}

void AddLeftOut(Lines &lines, ReadingNotes const &notes) {
    if (!notes.notCurves.empty())
        lines.push_back("left out what is no curve: " + TypeCounts(notes.notCurves));
    struct Cause {
        int count;
        char const *what;
    };
    std::array<Cause, 7> const causes = {{{notes.meshes, "POLYLINE mesh"},
                                          {notes.paperSpace, "in paper space"},
                                          {notes.frozen, "on frozen layers"},
                                          {notes.off, "on layers that are off"},
                                          {notes.invisible, "invisible"},
                                          {notes.otherLayers, "on layers that --layer does not name"},
                                          {notes.missingBlocks, "INSERT of a block that is not defined"}}};
    std::string text;
    for (Cause const &cause : causes) {
        if (cause.count > 0)
            text += (text.empty() ? "left out " : ", ") + std::to_string(cause.count) + " " + cause.what;
    }
    if (!text.empty())
        lines.push_back(text);
    if (!notes.unusable.empty())
        lines.push_back("left out curves that cannot be drawn (no extent seen from above, or bad knots, weights or "
                        "points): " +
                        TypeCounts(notes.unusable));
}

/// Those that a drafter should look at come first.
constexpr std::array<lib::LeftoverReason, 5> kByImportance = {
    lib::LeftoverReason::kUnsupported, lib::LeftoverReason::kDangle, lib::LeftoverReason::kBridge,
    lib::LeftoverReason::kZeroLength, lib::LeftoverReason::kDuplicate};

std::string Place(lib::DrawingPoint p) {
    return Joined("(", ShortNumber(p.x), ", ", ShortNumber(p.y), ")");
}

void AddLeftovers(Lines &lines, DrawingInput const &input, lib::DrawingResult const &result, bool all) {
    Lines named;
    std::string counts;
    for (lib::LeftoverReason const reason : kByImportance) {
        std::size_t const before = named.size();
        for (lib::DrawingLeftover const &leftover : result.leftovers) {
            if (leftover.reason == reason)
                named.push_back(Joined("  ", ReasonName(reason), " at ", Place(PlaceOf(leftover.piece)), ": ",
                                       CurveName(input, leftover.piece.curve)));
        }
        if (named.size() > before)
            counts +=
                Joined(counts.empty() ? "" : ", ", std::to_string(named.size() - before), " ", ReasonName(reason));
    }
    lines.push_back("left over: " + (counts.empty() ? "nothing" : counts));
    std::size_t const shown = all ? named.size() : std::min(named.size(), kShownLeftovers);
    lines.insert(lines.end(), named.begin(), named.begin() + static_cast<std::ptrdiff_t>(shown));
    if (shown < named.size())
        lines.push_back(Joined("  and ", std::to_string(named.size() - shown), " more (--leftovers lists them all)"));
}

void AddGaps(Lines &lines, DrawingInput const &input, lib::DrawingResult const &result) {
    std::optional<JoinAdvice> const advice = AdviseJoin(result.gaps);
    if (!advice)
        return;
    std::size_t const shown = std::min(result.gaps.size(), kShownGaps);
    for (std::size_t i = 0; i < shown; ++i) {
        lib::DrawingGap const &gap = result.gaps[i];
        lines.push_back(Joined("gap of ", ShortNumber(gap.distance, 6), " at ", Place(gap.at), ": ",
                               CurveName(input, gap.curves[0]), " misses ", CurveName(input, gap.curves[1])));
    }
    if (shown < result.gaps.size())
        lines.push_back(
            Joined("and ", Count(result.gaps.size() - shown, "wider gap", "wider gaps"), " (--json lists them all)"));
    bool const isAll = advice->closes == result.gaps.size();
    lines.push_back(Joined("--join ", ShortNumber(advice->join), " would close ",
                           isAll ? "" : Joined(std::to_string(advice->closes), " of "),
                           Count(result.gaps.size(), "gap", "gaps")));
}

} // namespace

char const *ReasonName(lib::LeftoverReason reason) {
    constexpr std::array<char const *, 5> kNames = {"dangle", "bridge", "duplicate", "zero-length", "unsupported"};
    return kNames[static_cast<std::size_t>(reason)];
}

char const *TypeName(lib::DrawingCurveType type) {
    constexpr std::array<char const *, 3> kNames = {"line", "arc", "circle"};
    return kNames[static_cast<std::size_t>(type)];
}

std::string CurveName(DrawingInput const &input, unsigned int id) {
    EntityLabel const &entity = input.EntityOf(id);
    std::string name = "curve " + std::to_string(id);
    if (entity.type.empty())
        return name;
    name += " (" + entity.type + (entity.handle.empty() ? "" : " " + entity.handle);
    return name + " on layer " + input.LayerOf(id) + ", line " + std::to_string(entity.line) + ")";
}

lib::DrawingPoint PlaceOf(lib::DrawingPiece const &piece) {
    if (piece.type == lib::DrawingCurveType::kCircle)
        return {piece.center.x + piece.radius, piece.center.y};
    return piece.start;
}

DomainTotals TotalsOf(lib::DrawingResult const &result) {
    DomainTotals totals;
    totals.domains = result.domains.size();
    for (lib::DrawingDomain const &domain : result.domains) {
        totals.holes += domain.holes.size();
        totals.area += domain.area;
    }
    return totals;
}

std::string TotalsLine(lib::DrawingResult const &result) {
    DomainTotals const totals = TotalsOf(result);
    return std::to_string(totals.domains) + " domains, " + std::to_string(totals.holes) + " holes, total area " +
           ShortNumber(totals.area);
}

std::string DomainTable(lib::DrawingResult const &result, bool color) {
    std::vector<std::vector<std::string>> rows{{"number", "area", "perimeter", "curves", "holes"}};
    for (lib::DrawingDomain const &domain : result.domains) {
        std::size_t curves = domain.outer.size();
        for (auto const &hole : domain.holes)
            curves += hole.size();
        rows.push_back({std::to_string(rows.size()), ShortNumber(domain.area), ShortNumber(domain.perimeter),
                        std::to_string(curves), std::to_string(domain.holes.size())});
    }
    return TextTable(rows, false, color) + TotalsLine(result) + "\n";
}

bool HasLeftovers(DrawingInput const &input, lib::DrawingResult const &result) {
    return !result.leftovers.empty() || !input.notes.unusable.empty();
}

std::vector<std::string> Summary(DrawingInput const &input, lib::DrawingResult const &result, double joinTolerance,
                                 bool allLeftovers) {
    Lines lines;
    AddReading(lines, input, joinTolerance);
    AddLeftOut(lines, input.notes);
    lines.push_back("joined " + Count(result.counts.joined, "end", "ends") + " (--join " + ShortNumber(joinTolerance) +
                    "), cut at " + Count(result.counts.cut, "place", "places") + ", dropped " +
                    Count(result.counts.duplicates, "duplicate", "duplicates"));
    AddLeftovers(lines, input, result, allLeftovers);
    AddGaps(lines, input, result);
    return lines;
}

} // namespace zvi::app
