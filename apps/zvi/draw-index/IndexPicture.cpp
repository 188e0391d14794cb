#include "apps/zvi/draw-index/IndexPicture.h"

#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/domains/output/SvgPath.h"
#include "apps/zvi/draw-index/CurveIndex.h"

#include <algorithm>
#include <vector>

namespace zvi::app {

namespace {

using lib::MQuadMBR2D;
using lib::MQuadNode;

/// Strokes, in pixels.
constexpr double kRegionStroke = 0.6;
constexpr double kCurveStroke = 1.4;

/// How much of its colour the fullest leaf shows.
constexpr double kDarkest = 0.7;

/// All nodes from the root down, parents before children.
std::vector<MQuadNode const *> NodesOf(lib::MQuadTree const &tree) {
    std::vector<MQuadNode const *> nodes;
    if (tree.GetRoot())
        nodes.push_back(tree.GetRoot());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        MQuadNode const &node = *nodes[i];
        for (int child = 0; !node.IsLeaf() && child < MQuadNode::kChildCount; ++child)
            nodes.push_back(node.GetChild(child));
    }
    return nodes;
}

std::string CountText(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " curve" : " curves");
}

std::string RectangleAttributes(SvgFrame const &frame, MQuadMBR2D const &r) {
    return Joined(" x=\"", SvgNumber(frame.X(r.minX)), "\" y=\"", SvgNumber(frame.Y(r.maxY)), "\" width=\"",
                  SvgNumber((r.maxX - r.minX) * frame.scale), "\" height=\"",
                  SvgNumber((r.maxY - r.minY) * frame.scale), "\"");
}

std::string Head(std::string const &name, SvgFrame const &frame, MQuadMBR2D const &region, IndexTotals const &totals) {
    std::string const width = SvgNumber((region.maxX - region.minX) * frame.scale + 2.0 * frame.margin);
    std::string const height = SvgNumber((region.maxY - region.minY) * frame.scale + 2.0 * frame.margin);
    return Joined("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 ", width, " ", height, "\" width=\"", width,
                  "\" height=\"", height, "\" role=\"img\" aria-labelledby=\"title desc\">\n",
                  "<title id=\"title\">Quadtree of ", SvgEscaped(name), "</title>\n<desc id=\"desc\">",
                  CountText(totals.inLeaves + totals.inInner), " in ", std::to_string(totals.nodes), " nodes, ",
                  std::to_string(totals.inInner), " of them across mid lines</desc>\n<rect class=\"paper\" width=\"",
                  width, "\" height=\"", height, "\"/>\n");
}

std::string Style() {
    return Joined(
        "<style>\n.paper{fill:#ffffff}\n.leaf{fill:#2563eb;stroke:#64748b;stroke-width:", SvgNumber(kRegionStroke),
        "}\n.curve{fill:none;stroke:#1f2937;stroke-linecap:round;stroke-width:", SvgNumber(kCurveStroke),
        "}\n.across{stroke:#c2410c}\n@media (prefers-color-scheme:dark){\n.paper{fill:#11151c}\n"
        ".leaf{fill:#3b82f6}\n.curve{stroke:#e5e7eb}\n.across{stroke:#fb923c}\n}\n</style>\n");
}

std::string LeafRectangle(SvgFrame const &frame, MQuadNode const &leaf, std::size_t largest) {
    auto const count = static_cast<std::size_t>(leaf.GetPool().GetCount());
    double const share = largest == 0 ? 0.0 : static_cast<double>(count) / static_cast<double>(largest);
    return Joined("<rect class=\"leaf\" fill-opacity=\"", ShortNumber(kDarkest * share, 3), "\"",
                  RectangleAttributes(frame, leaf.GetRegion()), "><title>", CountText(count), "</title></rect>\n");
}

lib::DrawingPiece PieceOf(lib::DrawingCurve const &curve) {
    lib::DrawingPiece piece;
    piece.type = curve.type;
    piece.start = curve.start;
    piece.end = curve.end;
    piece.center = curve.center;
    piece.radius = curve.radius;
    piece.clockwise = curve.clockwise;
    if (curve.type == lib::DrawingCurveType::kCircle)
        piece.start = piece.end = {curve.center.x + curve.radius, curve.center.y};
    return piece;
}

/// One path of all curves in the pool of a node.
std::string CurvesOf(SvgFrame const &frame, MQuadNode const &node, DrawingInput const &input) {
    std::string path;
    for (int i = 0; i < node.GetPool().GetCount(); ++i) {
        lib::DrawingPiece const piece = PieceOf(input.curves[node.GetPool().GetAt(i)->GetKey()]);
        path += Joined("M", frame.Place(piece.start), frame.PathAlong(piece));
    }
    if (path.empty())
        return path;
    return Joined("<path class=\"curve", node.IsLeaf() ? "" : " across", "\" d=\"", path, "\"/>\n");
}

} // namespace

std::string IndexPicture(std::string const &name, DrawingInput const &input, lib::MQuadTree const &tree) {
    IndexTotals const totals = TotalsOf(tree);
    std::vector<MQuadNode const *> const nodes = NodesOf(tree);
    MQuadMBR2D const region = nodes.empty() ? MQuadMBR2D{0, 0, 1, 1} : nodes.front()->GetRegion();
    double const longer = std::max(region.maxX - region.minX, region.maxY - region.minY);
    SvgFrame const frame{region.minX, region.maxY, SvgScale(longer), kSvgMargin};
    std::string svg = Head(name, frame, region, totals) + Style();
    for (MQuadNode const *node : nodes) {
        if (node->IsLeaf())
            svg += LeafRectangle(frame, *node, totals.largestLeaf);
    }
    for (MQuadNode const *node : nodes)
        svg += CurvesOf(frame, *node, input);
    return svg + "</svg>\n";
}

} // namespace zvi::app
