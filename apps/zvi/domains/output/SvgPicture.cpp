#include "apps/zvi/domains/output/SvgPicture.h"

#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/domains/output/Colors.h"
#include "apps/zvi/domains/output/LabelPoint.h"
#include "apps/zvi/domains/output/Loops.h"
#include "apps/zvi/domains/output/Report.h"
#include "apps/zvi/domains/output/SvgPath.h"

#include <algorithm>
#include <cmath>

namespace zvi::app {

namespace {

using lib::DrawingCurveType;
using lib::DrawingPiece;
using lib::DrawingPoint;

/// Margin around the drawing, strokes and ring sizes as parts of the picture's longer side.
constexpr double kMargin = 0.03;
constexpr double kBorderStroke = 0.0012;
constexpr double kLeftoverStroke = 0.0016;
constexpr double kRing = 0.011;

/// The same strokes, where they would hide something small: as parts of the free circle of a domain, or of the length
/// of a leftover.
constexpr double kBorderShare = 0.08;
constexpr double kLeftoverShare = 0.06;

/// Dashes and the room between them, in strokes.
constexpr double kDash = 5.0;
constexpr double kDashRoom = 3.5;

/// Largest number on a domain as part of the picture's longer side.
constexpr double kLargestNumber = 0.03;

/// Width of a digit and half height of a line of digits, as parts of the font size.
constexpr double kDigitWidth = 0.6;
constexpr double kHalfDigitHeight = 0.37;

/// Part of the free circle that a number may fill.
constexpr double kNumberFill = 0.8;

/// The longer side of the picture on a page, in pixels.
constexpr double kPagePixels = 1000.0;

bool IsFinite(DrawingPiece const &piece) {
    double const sum = piece.start.x + piece.start.y + piece.end.x + piece.end.y;
    return std::isfinite(sum) && std::isfinite(piece.center.x + piece.center.y + piece.radius);
}

std::string LoopPath(std::vector<DrawingPiece> const &loop) {
    std::string path = Joined("M", SvgPlace(PointOn(loop.front(), 0.0)));
    for (DrawingPiece const &piece : loop)
        path += SvgPathAlong(piece);
    return path + "Z";
}

std::string Dashes(double stroke) {
    return SvgNumber(kDash * stroke) + " " + SvgNumber(kDashRoom * stroke);
}

double LengthOf(DrawingPiece const &piece) {
    if (piece.type == DrawingCurveType::kLine)
        return std::hypot(piece.end.x - piece.start.x, piece.end.y - piece.start.y);
    return piece.radius * std::abs(SweepOf(piece));
}

/// Leftovers of one reason that follow one another head to tail, drawn as one path so that the dashes run on.
struct Chain {
    lib::DrawingLeftover const *first = nullptr;
    lib::DrawingLeftover const *last = nullptr;
    std::string path;
    double length = 0.0;
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
        if (chains.empty() || !Continues(*chains.back().last, leftover))
            chains.push_back({&leftover, &leftover, Joined("M", SvgPlace(PointOn(piece, 0.0))), 0.0});
        chains.back().last = &leftover;
        chains.back().path += SvgPathAlong(piece);
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
        Gaps();
        Numbers();
        m_svg += "</svg>\n";
    }

    std::string Take() { return std::move(m_svg); }

private:
    void Measure();
    void Head(std::string const &name);
    void Style();
    void Domains();
    void Leftovers();
    void Gaps();
    void Numbers();

    DrawingInput const &m_input;
    lib::DrawingResult const &m_result;
    Box m_box;
    double m_size = 1.0;              ///< longer side of the drawing
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
    m_size = longer > 0.0 && std::isfinite(longer) ? longer : 1.0;
}

void Picture::Head(std::string const &name) {
    double const margin = kMargin * m_size;
    double const width = m_box.Width() + 2.0 * margin;
    double const height = m_box.Height() + 2.0 * margin;
    double const scale = kPagePixels / std::max(width, height);
    std::string const x = SvgNumber(m_box.minX - margin);
    std::string const y = SvgNumber(-m_box.maxY - margin);
    std::string const extent = " width=\"" + SvgNumber(width) + "\" height=\"" + SvgNumber(height) + "\"";
    m_svg += "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"" + x + " " + y + " " + SvgNumber(width) + " " +
             SvgNumber(height) + "\" width=\"" + ShortNumber(width * scale, 6) + "\" height=\"" +
             ShortNumber(height * scale, 6) + "\" role=\"img\" aria-labelledby=\"title desc\">\n";
    m_svg += "<title id=\"title\">Domains of " + SvgEscaped(name) + "</title>\n";
    m_svg +=
        "<desc id=\"desc\">" + SvgEscaped(TotalsLine(m_result)) + "; units: " + SvgEscaped(m_input.units) + "</desc>\n";
    m_svg += "<rect class=\"paper\" x=\"" + x + "\" y=\"" + y + "\"" + extent + "/>\n";
}

void Picture::Style() {
    std::string const border = SvgNumber(kBorderStroke * m_size);
    std::string const dashes = Dashes(kLeftoverStroke * m_size);
    m_svg += "<style>\n"
             ".paper{fill:#ffffff}\n"
             ".domain{stroke:#3b4252;stroke-width:" +
             border +
             ";stroke-linejoin:round;fill-rule:evenodd}\n"
             ".leftover{fill:none;stroke:#c2410c;stroke-linecap:butt;stroke-width:" +
             SvgNumber(kLeftoverStroke * m_size) + ";stroke-dasharray:" + dashes +
             "}\n"
             ".duplicate,.zero-length{opacity:0.35}\n"
             ".gap{fill:none;stroke:#dc2626;stroke-width:" +
             SvgNumber(1.5 * kLeftoverStroke * m_size) +
             "}\n"
             ".number{fill:#1f2937;font-family:system-ui,sans-serif;font-weight:600;text-anchor:middle;"
             "pointer-events:none}\n";
    std::string dark;
    for (std::size_t i = 0; i < m_result.domains.size(); ++i) {
        DomainColors const colors = ColorsOf(i);
        m_svg += ".d" + std::to_string(i + 1) + "{fill:" + colors.light + "}\n";
        dark += ".d" + std::to_string(i + 1) + "{fill:" + colors.dark + "}\n";
    }
    m_svg += "@media (prefers-color-scheme:dark){\n"
             ".paper{fill:#11151c}\n"
             ".domain{stroke:#c3cad6}\n"
             ".leftover{stroke:#fb923c}\n"
             ".gap{stroke:#f87171}\n"
             ".number{fill:#f3f4f6}\n" +
             dark + "}\n</style>\n";
}

void Picture::Domains() {
    m_svg += "<g>\n";
    for (std::size_t i = 0; i < m_result.domains.size(); ++i) {
        lib::DrawingDomain const &domain = m_result.domains[i];
        std::string const number = std::to_string(i + 1);
        std::string path = LoopPath(domain.outer);
        for (auto const &hole : domain.holes)
            path += LoopPath(hole);
        double const stroke = kBorderShare * m_labels[i].radius;
        bool const thin = stroke > 0.0 && stroke < kBorderStroke * m_size;
        std::string const style = thin ? " style=\"stroke-width:" + ShortNumber(stroke, 4) + "\"" : std::string();
        m_svg += Joined("<path class=\"domain d", number, "\"", style, " d=\"", path, "\"><title>Domain ", number,
                        ": area ", ShortNumber(domain.area), "</title></path>\n");
    }
    m_svg += "</g>\n";
}

void Picture::Leftovers() {
    m_svg += "<g>\n";
    for (Chain const &chain : ChainsOf(m_result.leftovers)) {
        double const stroke = kLeftoverShare * chain.length;
        std::string style;
        if (stroke < kLeftoverStroke * m_size)
            style = " style=\"stroke-width:" + ShortNumber(stroke, 4) + ";stroke-dasharray:" + Dashes(stroke) + "\"";
        m_svg += "<path class=\"leftover " + std::string(ReasonName(chain.first->reason)) + "\"" + style + " d=\"" +
                 chain.path + "\"><title>" + SvgEscaped(CurveName(m_input, chain.first->piece.curve)) + ": " +
                 ReasonName(chain.first->reason) + "</title></path>\n";
    }
    m_svg += "</g>\n";
}

void Picture::Gaps() {
    m_svg += "<g>\n";
    for (lib::DrawingGap const &gap : m_result.gaps)
        m_svg += "<circle class=\"gap\" cx=\"" + SvgNumber(gap.at.x) + "\" cy=\"" + SvgNumber(-gap.at.y) + "\" r=\"" +
                 SvgNumber(std::max(kRing * m_size, 1.5 * gap.distance)) + "\"><title>gap of " +
                 ShortNumber(gap.distance) + "</title></circle>\n";
    m_svg += "</g>\n";
}

/// Puts each number on the centre of the free circle of its domain, as large as fits.
void Picture::Numbers() {
    m_svg += "<g>\n";
    for (std::size_t i = 0; i < m_result.domains.size(); ++i) {
        std::string const number = std::to_string(i + 1);
        LabelPoint const &label = m_labels[i];
        double const halfWidth = 0.5 * kDigitWidth * static_cast<double>(number.size());
        double const fitting = kNumberFill * label.radius / std::hypot(halfWidth, kHalfDigitHeight);
        double const fontSize = std::min(fitting, kLargestNumber * m_size);
        if (!(fontSize > 0.0))
            continue;
        m_svg += "<text class=\"number\" x=\"" + SvgNumber(label.at.x) + "\" y=\"" +
                 SvgNumber(-label.at.y + kHalfDigitHeight * fontSize) + "\" font-size=\"" + ShortNumber(fontSize, 6) +
                 "\">" + number + "</text>\n";
    }
    m_svg += "</g>\n";
}

} // namespace

std::string SvgPicture(std::string const &name, DrawingInput const &input, lib::DrawingResult const &result) {
    return Picture(name, input, result).Take();
}

} // namespace zvi::app
