#include "zvi/drawing/MakeDrawingDomains.h"

#include "tests/drawing/DrawingFixtures.h"
#include "tests/drawing/FaceTracer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>

using namespace zvi::lib;
using namespace drawing_fixtures;

namespace {

/// How many graphs are tried; the environment may ask for more.
int GraphCount() {
    char const *const wanted = std::getenv("ZVI_RANDOM_GRAPHS");
    return wanted != nullptr ? std::atoi(wanted) : 3000;
}

/// A random plane graph: a net of squares with one diagonal each, bent and torn. Some nets stand on whole numbers, so
/// that edges are parallel to the axes and leftmost places tie; the others are shaken and turned. Tearing many edges
/// out leaves tails, bridges, cut places and parts within parts. Some edges are arcs, some of those two over one chord.
class GraphMaker {
public:
    explicit GraphMaker(unsigned seed) : random(seed) {}

    std::vector<DrawingCurve> Make() {
        int const size = Whole(2, 7);
        share = Real(0.35, 1.0);
        arcShare = Whole(0, 2) == 0 ? 0.0 : Real(0.0, 0.7);
        double const shake = Whole(0, 1) == 0 ? 0.0 : 0.15;
        double const turn = shake == 0.0 ? 0.0 : Real(0.0, 6.3);
        double const scale = std::pow(10.0, Real(0.0, 3.0));
        DrawingPoint const shift{Real(-1e5, 1e5), Real(-1e5, 1e5)};
        points.clear();
        for (int j = 0; j <= size; ++j)
            for (int i = 0; i <= size; ++i) {
                double const x = i + Real(-shake, shake), y = j + Real(-shake, shake);
                points.push_back({shift.x + scale * (x * std::cos(turn) - y * std::sin(turn)),
                                  shift.y + scale * (x * std::sin(turn) + y * std::cos(turn))});
            }
        curves.clear();
        auto const at = [&](int i, int j) { return points[static_cast<std::size_t>(j * (size + 1) + i)]; };
        for (int j = 0; j <= size; ++j)
            for (int i = 0; i <= size; ++i) {
                if (i < size)
                    Add(at(i, j), at(i + 1, j));
                if (j < size)
                    Add(at(i, j), at(i, j + 1));
                if (i < size && j < size)
                    Whole(0, 1) == 0 ? Add(at(i, j), at(i + 1, j + 1)) : Add(at(i + 1, j), at(i, j + 1));
            }
        std::shuffle(curves.begin(), curves.end(), random);
        for (std::size_t k = 0; k < curves.size(); ++k)
            curves[k].id = static_cast<unsigned int>(k) + 1;
        return curves;
    }

private:
    int Whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }
    double Real(double low, double high) { return std::uniform_real_distribution<double>(low, high)(random); }

    void Add(DrawingPoint a, DrawingPoint b) {
        if (Real(0.0, 1.0) > share)
            return;
        if (Whole(0, 1) == 0)
            std::swap(a, b);
        if (Real(0.0, 1.0) >= arcShare) {
            DrawingCurve line;
            line.start = a;
            line.end = b;
            curves.push_back(line);
            return;
        }
        double const rise = Real(0.005, 0.05);
        AddArc(a, b, Whole(0, 1) == 0 ? rise : -rise);
        if (Whole(0, 4) == 0)
            AddArc(b, a, curves.back().clockwise ? -rise : rise);
    }

    /// The arc whose rise is that share of its chord, to the right of the chord when positive.
    void AddArc(DrawingPoint a, DrawingPoint b, double rise) {
        double const dx = b.x - a.x, dy = b.y - a.y, offset = (0.25 - rise * rise) / (2.0 * rise);
        DrawingCurve arc;
        arc.type = DrawingCurveType::kArc;
        arc.start = a;
        arc.end = b;
        arc.center = {0.5 * (a.x + b.x) - dy * offset, 0.5 * (a.y + b.y) + dx * offset};
        arc.radius = std::hypot(a.x - arc.center.x, a.y - arc.center.y);
        arc.clockwise = rise < 0.0;
        curves.push_back(arc);
    }

    std::mt19937 random;
    std::vector<DrawingPoint> points;
    std::vector<DrawingCurve> curves;
    double share = 1.0, arcShare = 0.0;
};

std::vector<TracedFace> FacesOf(DrawingResult const &result) {
    std::vector<TracedFace> faces;
    for (DrawingDomain const &d : result.domains)
        faces.push_back({d.area, static_cast<int>(d.holes.size())});
    std::sort(faces.begin(), faces.end(), [](auto const &a, auto const &b) { return a.area < b.area; });
    return faces;
}

/// Areas are compared in order; holes are compared as totals and for the faces that have many.
std::string Difference(std::vector<TracedFace> const &found, std::vector<TracedFace> const &traced) {
    if (found.size() != traced.size())
        return std::to_string(found.size()) + " faces, traced " + std::to_string(traced.size());
    int foundHoles = 0, tracedHoles = 0;
    for (std::size_t i = 0; i < found.size(); ++i) {
        if (std::fabs(found[i].area - traced[i].area) > 1e-6 * traced[i].area)
            return "area " + std::to_string(found[i].area) + ", traced " + std::to_string(traced[i].area);
        foundHoles += found[i].holes * found[i].holes;
        tracedHoles += traced[i].holes * traced[i].holes;
    }
    return foundHoles == tracedHoles ? "" : "holes differ";
}

} // namespace

TEST(DrawingGraphs, GiveTheFacesThatAWalkFinds) {
    for (int seed = 1; seed <= GraphCount(); ++seed) {
        std::vector<DrawingCurve> const curves = GraphMaker(static_cast<unsigned>(seed)).Make();
        DrawingResult const result = MakeDrawingDomains(curves);
        ASSERT_EQ(Difference(FacesOf(result), TraceFaces(curves)), "") << "seed " << seed;
        ASSERT_EQ(WhatIsWrong(curves, result), "") << "seed " << seed;
        ASSERT_EQ(result.counts.joined + result.counts.cut + result.counts.duplicates, 0) << "seed " << seed;
    }
}
