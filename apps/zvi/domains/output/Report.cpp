#include "apps/zvi/domains/output/Report.h"

#include "apps/zvi/common/NumberText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

namespace zvi::app {

namespace {

using Lines = std::vector<std::string>;

/// Near misses and types that are spelled out; the rest is counted.
constexpr std::size_t kShownGaps = 20;
constexpr std::size_t kShownTypes = 12;

std::string Count(std::size_t count, std::string const &one, std::string const &many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string Count(int count, std::string const &one, std::string const &many) {
    return Count(static_cast<std::size_t>(count), one, many);
}

/// A join tolerance to be typed: three digits, and not below what is needed.
std::string ToleranceToType(double needed) {
    double const unit = std::pow(10.0, std::floor(std::log10(needed)) - 2.0);
    return ShortNumber(std::ceil(needed / unit) * unit);
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

void AddReading(Lines &lines, DrawingInput const &input) {
    ReadingNotes const &notes = input.notes;
    lines.push_back("read " + Count(input.curves.size(), "curve", "curves") + ", units: " + input.units);
    if (!notes.flattened.empty())
        lines.push_back("flattened " + TypeCounts(notes.flattened) + " into " + Count(notes.chords, "chord", "chords") +
                        " (--chord-error sets how closely)");
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

void AddLeftovers(Lines &lines, lib::DrawingResult const &result) {
    std::map<lib::LeftoverReason, int> counts;
    for (lib::DrawingLeftover const &leftover : result.leftovers)
        ++counts[leftover.reason];
    std::string text;
    for (auto const &[reason, count] : counts)
        text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + ReasonName(reason);
    lines.push_back("left over: " + (text.empty() ? "nothing" : text));
}

void AddGaps(Lines &lines, DrawingInput const &input, lib::DrawingResult const &result) {
    for (std::size_t i = 0; i < result.gaps.size(); ++i) {
        if (i == kShownGaps) {
            lines.push_back("and " + Count(result.gaps.size() - i, "near miss", "near misses") +
                            " more (--json lists them all)");
            return;
        }
        lib::DrawingGap const &gap = result.gaps[i];
        lines.push_back("near miss at (" + ShortNumber(gap.at.x) + ", " + ShortNumber(gap.at.y) +
                        "): " + CurveName(input, gap.curves[0]) + " ends " + ShortNumber(gap.distance, 6) + " from " +
                        CurveName(input, gap.curves[1]) + "; --join " + ToleranceToType(gap.closingTolerance) +
                        " would close it");
    }
}

std::string Padded(std::string const &text, std::size_t width) {
    return std::string(width - std::min(width, text.size()), ' ') + text;
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

std::string TotalsLine(lib::DrawingResult const &result) {
    std::size_t holes = 0;
    double area = 0.0;
    for (lib::DrawingDomain const &domain : result.domains) {
        holes += domain.holes.size();
        area += domain.area;
    }
    return std::to_string(result.domains.size()) + " domains, " + std::to_string(holes) + " holes, total area " +
           ShortNumber(area);
}

std::string DomainTable(lib::DrawingResult const &result, bool color) {
    using Row = std::array<std::string, 5>;
    std::vector<Row> rows{{"number", "area", "perimeter", "curves", "holes"}};
    for (lib::DrawingDomain const &domain : result.domains) {
        std::size_t curves = domain.outer.size();
        for (auto const &hole : domain.holes)
            curves += hole.size();
        rows.push_back({std::to_string(rows.size()), ShortNumber(domain.area), ShortNumber(domain.perimeter),
                        std::to_string(curves), std::to_string(domain.holes.size())});
    }
    Row::size_type const columns = rows.front().size();
    std::array<std::size_t, 5> widths{};
    for (Row const &row : rows) {
        for (std::size_t i = 0; i < columns; ++i)
            widths[i] = std::max(widths[i], row[i].size());
    }
    std::string table;
    for (std::size_t r = 0; r < rows.size(); ++r) {
        bool const bold = color && r == 0;
        table += bold ? "\x1B[1m" : "";
        for (std::size_t i = 0; i < columns; ++i)
            table += (i == 0 ? "" : "  ") + Padded(rows[r][i], widths[i]);
        table += bold ? "\x1B[0m\n" : "\n";
    }
    return table + TotalsLine(result) + "\n";
}

bool HasLeftovers(DrawingInput const &input, lib::DrawingResult const &result) {
    return !result.leftovers.empty() || !input.notes.unusable.empty();
}

std::vector<std::string> Summary(DrawingInput const &input, lib::DrawingResult const &result, double joinTolerance) {
    Lines lines;
    AddReading(lines, input);
    AddLeftOut(lines, input.notes);
    lines.push_back("joined " + Count(result.counts.joined, "end", "ends") + " (--join " + ShortNumber(joinTolerance) +
                    "), cut at " + Count(result.counts.cut, "place", "places") + ", dropped " +
                    Count(result.counts.duplicates, "duplicate", "duplicates"));
    AddLeftovers(lines, result);
    AddGaps(lines, input, result);
    return lines;
}

} // namespace zvi::app
