#include "apps/zvi/domains/output/SvgPicture.h"

#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/domains/output/Colors.h"
#include "apps/zvi/domains/output/FillClasses.h"
#include "apps/zvi/domains/output/FreeEnds.h"
#include "apps/zvi/domains/output/LabelPoint.h"
#include "apps/zvi/domains/output/Loops.h"
#include "apps/zvi/domains/output/Report.h"
#include "apps/zvi/domains/output/SvgPath.h"
#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <functional>

namespace zvi::app {

namespace {

using lib::DrawingCurveType;
using lib::DrawingPiece;
using lib::DrawingPoint;

/// Strokes, the radius of rings and of the dots on free ends, in pixels.
constexpr double kBorderStroke = 1.2;
constexpr double kLeftoverStroke = 1.6;
constexpr double kRingStroke = 1.4;
constexpr double kRing = 11.0;
constexpr double kDot = 2.6;

/// A ring is at least so many times as wide as its gap.
constexpr double kRingOfGap = 1.5;

/// The same strokes, where they would hide something small: as parts of the free circle of a domain, or of the length
/// of a leftover.
constexpr double kBorderShare = 0.08;
constexpr double kLeftoverShare = 0.06;

/// An end this near to a curve, in pixels, is not free.
constexpr double kOnCurve = 0.01;

/// Dashes and the room between them, in strokes.
constexpr double kDash = 5.0;
constexpr double kDashRoom = 3.5;

/// Font sizes in pixels: of the largest number on a domain, of the smallest that can be read, and of the legend.
constexpr double kLargestNumber = 28.0;
constexpr double kSmallestNumber = 5.0;
constexpr double kLegendText = 13.0;

/// Height of the legend, and length of its samples, in pixels.
constexpr double kLegendHeight = 30.0;
constexpr double kSample = 34.0;

/// How far below the drawing the samples stand, in heights of the legend; the ring among them, as a part of the others;
/// room between a sample and its text, and behind the text, in pixels.
constexpr double kLegendDrop = 0.2;
constexpr double kSampleRing = 0.8 * kRing;
constexpr double kTextRoom = 6.0;
constexpr double kSampleRoom = 24.0;

/// Width of a digit and half height of a line of digits, as parts of the font size.
constexpr double kDigitWidth = 0.6;
constexpr double kHalfDigitHeight = 0.37;

/// Part of the free circle that a number may fill.
constexpr double kNumberFill = 0.8;

std::string Dashes(double stroke) {
    return SvgNumber(kDash * stroke) + " " + SvgNumber(kDashRoom * stroke);
}

/// Leftovers of one reason that follow one another head to tail, drawn as one path so that the dashes run on.
struct Chain {
    std::vector<lib::DrawingLeftover const *> leftovers;
    double length = 0.0; ///< in drawing units
};

bool Continues(lib::DrawingLeftover const &before, lib::DrawingLeftover const &next) {
    DrawingPoint const &end = before.piece.end;
    DrawingPoint const &start = next.piece.start;
    bool const open = before.piece.type != DrawingCurveType::kCircle && next.piece.type != DrawingCurveType::kCircle;
    return open && before.reason == next.reason && end.x == start.x && end.y == start.y;
}

/// What can be drawn of the leftovers, as chains in their order.
std::vector<Chain> ChainsOf(std::vector<lib::DrawingLeftover> const &leftovers) {
    std::vector<Chain> chains;
    for (lib::DrawingLeftover const &leftover : leftovers) {
        DrawingPiece const &piece = leftover.piece;
        bool const isArc = piece.type != DrawingCurveType::kLine;
        if (!IsFinite(piece) || (isArc && !(piece.radius > 0.0)))
            continue;
        if (chains.empty() || !Continues(*chains.back().leftovers.back(), leftover))
            chains.emplace_back();
        chains.back().leftovers.push_back(&leftover);
        chains.back().length += LengthOf(piece);
    }
    return chains;
}

class Picture {
public:
    Picture(std::string const &name, DrawingInput const &read, lib::DrawingResult const &domains)
        : m_input(read), m_result(domains) {
        Measure();
        Head(name);
        Style();
        Domains();
        Leftovers();
        Ends();
        Gaps();
        Numbers();
        Legend();
        m_svg += "</svg>\n";
    }

    std::string Take() { return std::move(m_svg); }

private:
    void Measure();
    void Head(std::string const &name);
    void Style();
    void Domains();
    void Leftovers();
    void Ends();
    void Gaps();
    void Numbers();
    void Legend();

    bool HasLegend() const { return !m_result.leftovers.empty() || !m_result.gaps.empty(); }
    std::string LoopPath(std::vector<DrawingPiece> const &loop) const;

    DrawingInput const &m_input;
    lib::DrawingResult const &m_result;
    Box m_box;
    SvgFrame m_frame;
    std::vector<std::size_t> m_fills; ///< beside the domains
    std::vector<DrawingPoint> m_freeEnds;
    std::vector<LabelPoint> m_labels; ///< beside the domains
    std::string m_svg;
};

void Picture::Measure() {
    for (lib::DrawingDomain const &domain : m_result.domains) {
        for (DrawingPiece const &piece : domain.outer)
            AddToBox(m_box, piece);
        m_labels.push_back(FindLabelPoint(domain));
    }
    for (lib::DrawingLeftover const &leftover : m_result.leftovers) {
        if (IsFinite(leftover.piece))
            AddToBox(m_box, leftover.piece);
    }
    double const longer = std::max(m_box.Width(), m_box.Height());
    m_frame = {m_box.minX, m_box.maxY, SvgScale(longer), kSvgMargin};
    m_fills = FillClasses(m_result.domains);
    m_freeEnds = FreeEnds(m_result, kOnCurve / m_frame.scale);
}

std::string Picture::LoopPath(std::vector<DrawingPiece> const &loop) const {
    std::string path = Joined("M", m_frame.Place(PointOn(loop.front(), 0.0)));
    for (DrawingPiece const &piece : loop)
        path += m_frame.PathAlong(piece);
    return path + "Z";
}

void Picture::Head(std::string const &name) {
    std::string const width = SvgNumber(m_box.Width() * m_frame.scale + 2.0 * kSvgMargin);
    std::string const height =
        SvgNumber(m_box.Height() * m_frame.scale + 2.0 * kSvgMargin + (HasLegend() ? kLegendHeight : 0.0));
    m_svg += Joined("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 ", width, " ", height, "\" width=\"",
                    width, "\" height=\"", height, "\" role=\"img\" aria-labelledby=\"title desc\">\n");
    m_svg += "<title id=\"title\">Domains of " + SvgEscaped(name) + "</title>\n";
    m_svg += Joined("<desc id=\"desc\">", SvgEscaped(TotalsLine(m_result)), "; units: ", SvgEscaped(m_input.units),
                    "; one unit is ", ShortNumber(m_frame.scale, 6), " wide</desc>\n");
    m_svg += Joined("<rect class=\"paper\" width=\"", width, "\" height=\"", height, "\"/>\n");
}

void Picture::Style() {
    m_svg += Joined("<style>\n"
                    ".paper{fill:#ffffff}\n"
                    ".domain{stroke:#3b4252;stroke-width:",
                    SvgNumber(kBorderStroke),
                    ";stroke-linejoin:round;fill-rule:evenodd}\n"
                    ".leftover{fill:none;stroke:#c2410c;stroke-linecap:butt;stroke-width:",
                    SvgNumber(kLeftoverStroke), ";stroke-dasharray:", Dashes(kLeftoverStroke),
                    "}\n"
                    ".duplicate,.zero-length{opacity:0.35}\n"
                    ".end{fill:#c2410c}\n"
                    ".gap{fill:none;stroke:#dc2626;stroke-width:",
                    SvgNumber(kRingStroke),
                    ";pointer-events:none}\n"
                    ".number,.legend{fill:#1f2937;font-family:system-ui,sans-serif;pointer-events:none}\n"
                    ".number{font-weight:600;text-anchor:middle}\n"
                    ".legend{font-size:",
                    SvgNumber(kLegendText), "px}\n");
    std::string dark;
    std::size_t const fills = m_fills.empty() ? 0 : *std::max_element(m_fills.begin(), m_fills.end()) + 1;
    for (std::size_t fill = 0; fill < fills; ++fill) {
        DomainColors const colors = ColorsOf(fill);
        std::string const name = Joined(".d", std::to_string(fill), "{fill:");
        m_svg += Joined(name, colors.light, "}\n");
        dark += Joined(name, colors.dark, "}\n");
    }
    m_svg += Joined("@media (prefers-color-scheme:dark){\n"
                    ".paper{fill:#11151c}\n"
                    ".domain{stroke:#c3cad6}\n"
                    ".leftover{stroke:#fb923c}\n"
                    ".end{fill:#fb923c}\n"
                    ".gap{stroke:#f87171}\n"
                    ".number,.legend{fill:#f3f4f6}\n",
                    dark, "}\n</style>\n");
}

void Picture::Domains() {
    m_svg += "<g>\n";
    for (std::size_t i = 0; i < m_result.domains.size(); ++i) {
        lib::DrawingDomain const &domain = m_result.domains[i];
        std::string path = LoopPath(domain.outer);
        for (auto const &hole : domain.holes)
            path += LoopPath(hole);
        double const stroke = kBorderShare * m_labels[i].radius * m_frame.scale;
        bool const thin = stroke > 0.0 && stroke < kBorderStroke;
        std::string const style = thin ? Joined(" style=\"stroke-width:", ShortNumber(stroke, 4), "\"") : std::string();
        m_svg += Joined("<path class=\"domain d", std::to_string(m_fills[i]), "\"", style, " d=\"", path,
                        "\"><title>Domain ", std::to_string(i + 1), ": area ", ShortNumber(domain.area),
                        "</title></path>\n");
    }
    m_svg += "</g>\n";
}

void Picture::Leftovers() {
    m_svg += "<g>\n";
    for (Chain const &chain : ChainsOf(m_result.leftovers)) {
        lib::DrawingLeftover const &first = *chain.leftovers.front();
        std::string path = Joined("M", m_frame.Place(PointOn(first.piece, 0.0)));
        for (lib::DrawingLeftover const *leftover : chain.leftovers)
            path += m_frame.PathAlong(leftover->piece);
        double const stroke = kLeftoverShare * chain.length * m_frame.scale;
        std::string style;
        if (stroke < kLeftoverStroke)
            style =
                Joined(" style=\"stroke-width:", ShortNumber(stroke, 4), ";stroke-dasharray:", Dashes(stroke), "\"");
        m_svg += Joined("<path class=\"leftover ", ReasonName(first.reason), "\"", style, " d=\"", path, "\"><title>",
                        SvgEscaped(CurveName(m_input, first.piece.curve)), ": ", ReasonName(first.reason),
                        "</title></path>\n");
    }
    m_svg += "</g>\n";
}

std::string Circle(char const *name, double x, double y, double radius) {
    return Joined("<circle class=\"", name, "\" cx=\"", SvgNumber(x), "\" cy=\"", SvgNumber(y), "\" r=\"",
                  SvgNumber(radius), "\"");
}

void Picture::Ends() {
    m_svg += "<g>\n";
    for (DrawingPoint const &end : m_freeEnds)
        m_svg += Circle("end", m_frame.X(end.x), m_frame.Y(end.y), kDot) + "/>\n";
    m_svg += "</g>\n";
}

void Picture::Gaps() {
    m_svg += "<g>\n";
    for (lib::DrawingGap const &gap : m_result.gaps) {
        double const radius = std::max(kRing, kRingOfGap * gap.distance * m_frame.scale);
        m_svg += Joined(Circle("gap", m_frame.X(gap.at.x), m_frame.Y(gap.at.y), radius), "><title>gap of ",
                        ShortNumber(gap.distance), "</title></circle>\n");
    }
    m_svg += "</g>\n";
}

/// Puts each number on the centre of the free circle of its domain, as large as fits; one too small to be read is left
/// out, and the title of its domain tells it.
void Picture::Numbers() {
    m_svg += "<g>\n";
    for (std::size_t i = 0; i < m_result.domains.size(); ++i) {
        std::string const number = std::to_string(i + 1);
        LabelPoint const &label = m_labels[i];
        double const halfWidth = 0.5 * kDigitWidth * static_cast<double>(number.size());
        double const fitting = kNumberFill * label.radius * m_frame.scale / lib::Hypot(halfWidth, kHalfDigitHeight);
        double const fontSize = std::min(fitting, kLargestNumber);
        if (!(fontSize >= kSmallestNumber))
            continue;
        m_svg += Joined("<text class=\"number\" x=\"", SvgNumber(m_frame.X(label.at.x)), "\" y=\"",
                        SvgNumber(m_frame.Y(label.at.y) + kHalfDigitHeight * fontSize), "\" font-size=\"",
                        ShortNumber(fontSize, 6), "\">", number, "</text>\n");
    }
    m_svg += "</g>\n";
}

/// Samples of what dashes, dots and rings mean, of those that are there, in a row below the drawing.
void Picture::Legend() {
    if (!HasLegend())
        return;
    double const y = 2.0 * kSvgMargin + m_box.Height() * m_frame.scale + kLegendDrop * kLegendHeight;
    double x = kSvgMargin;
    auto const add = [&](std::string const &sample, double width, std::string const &text) {
        m_svg += Joined(sample, "<text class=\"legend\" x=\"", SvgNumber(x + width + kTextRoom), "\" y=\"",
                        SvgNumber(y + kHalfDigitHeight * kLegendText), "\">", text, "</text>\n");
        x += width + kSampleRoom + kDigitWidth * kLegendText * static_cast<double>(text.size());
    };
    auto const dashes = [&](char const *reason) {
        return Joined("<path class=\"leftover ", reason, "\" d=\"M", SvgNumber(x), " ", SvgNumber(y), "h",
                      SvgNumber(kSample), "\"/>\n");
    };
    auto const has = [this](auto const &wanted) {
        return std::any_of(m_result.leftovers.begin(), m_result.leftovers.end(), wanted);
    };
    auto const isFaint = [](lib::DrawingLeftover const &leftover) {
        return leftover.reason == lib::LeftoverReason::kDuplicate ||
               leftover.reason == lib::LeftoverReason::kZeroLength;
    };
    if (has(std::not_fn(isFaint)))
        add(dashes("dangle"), kSample, "bounds no domain");
    if (has(isFaint))
        add(dashes("duplicate"), kSample, "drawn twice, or without length");
    if (!m_freeEnds.empty())
        add(Circle("end", x + kDot, y, kDot) + "/>\n", 2.0 * kDot, "free end");
    if (!m_result.gaps.empty())
        add(Circle("gap", x + kSampleRing, y, kSampleRing) + "/>\n", 2.0 * kRing, "gap");
}

} // namespace

std::string SvgPicture(std::string const &name, DrawingInput const &input, lib::DrawingResult const &result) {
    return Picture(name, input, result).Take();
}

} // namespace zvi::app
