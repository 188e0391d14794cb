// One number for each room, over the exact bits and the order of many results. It is the same on every compiler,
// processor and host; a commit that changes one changes results, and says so in CHANGELOG.md.

#include "zvi/command/CStrParser.h"
#include "zvi/core/CString.h"
#include "zvi/curves/MIntersectUtil.h"
#include "zvi/drawing/MakeDrawingDomains.h"
#include "zvi/math/elementary/Elementary.h"
#include "zvi/math/free/Angle.h"
#include "zvi/spatial/MQuadTree.h"
#include "zvi/units/MUnitCtrl.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <random>
#include <vector>

namespace zvi::lib::test {

namespace {

/// Takes results in their order.
class ResultHash {
public:
    void Add(std::uint64_t bits) {
        m_hash = (m_hash ^ bits) * 0x9e3779b97f4a7c15;
        m_hash ^= m_hash >> 29;
    }
    void Add(int number) { Add(static_cast<std::uint64_t>(number)); }
    void Add(unsigned number) { Add(std::uint64_t{number}); }
    void Add(double number) { Add(std::bit_cast<std::uint64_t>(number)); }
    void Add(DrawingPoint p) {
        Add(p.x);
        Add(p.y);
    }
    void Add(CString const &text) {
        for (int i = 0; i < text.GetLength(); ++i)
            Add(static_cast<unsigned>(text.GetAt(i)));
    }

    std::uint64_t Value() const { return m_hash; }

private:
    std::uint64_t m_hash = 0;
};

/// Even numbers from a range, made alike on every host.
class Source {
public:
    double Next(double from, double to) {
        return from + (to - from) * (static_cast<double>(m_random() >> 11) * 0x1p-53);
    }
    unsigned Next(unsigned count) { return static_cast<unsigned>(m_random() % count); }
    DrawingPoint Point(double size) {
        double const x = Next(-size, size);
        return {x, Next(-size, size)};
    }

private:
    std::mt19937_64 m_random{20240607};
};

DrawingCurve RandomCurve(Source &source, unsigned id) {
    DrawingCurve curve{.id = id, .start = source.Point(10.0), .end = source.Point(10.0)};
    unsigned const kind = source.Next(4U);
    if (kind == 0)
        return {.id = id, .type = DrawingCurveType::kCircle, .center = curve.start, .radius = source.Next(0.5, 4.0)};
    if (kind == 1) {
        double const from = source.Next(-3.0, 3.0), to = from + source.Next(0.3, 6.0), radius = source.Next(0.5, 6.0);
        DrawingPoint const c = curve.start;
        curve = {.id = id, .type = DrawingCurveType::kArc, .center = c, .radius = radius};
        curve.start = {c.x + radius * Cos(from), c.y + radius * Sin(from)};
        curve.end = {c.x + radius * Cos(to), c.y + radius * Sin(to)};
    }
    return curve;
}

void AddLoop(ResultHash &hash, std::vector<DrawingPiece> const &loop) {
    for (DrawingPiece const &piece : loop) {
        hash.Add(piece.curve);
        hash.Add(piece.from);
        hash.Add(piece.to);
        hash.Add(piece.start);
        hash.Add(piece.center);
        hash.Add(piece.radius);
    }
}

std::uint64_t OfDrawings() {
    ResultHash hash;
    Source source;
    for (int drawing = 0; drawing < 60; ++drawing) {
        std::vector<DrawingCurve> curves;
        for (unsigned id = 1; id <= 25; ++id)
            curves.push_back(RandomCurve(source, id));
        DrawingResult const result = MakeDrawingDomains(curves, {.joinTolerance = drawing % 2 == 0 ? 1e-4 : 0.1});
        for (DrawingDomain const &domain : result.domains) {
            AddLoop(hash, domain.outer);
            for (auto const &hole : domain.holes)
                AddLoop(hash, hole);
            hash.Add(domain.area);
            hash.Add(domain.perimeter);
        }
        for (DrawingGap const &gap : result.gaps)
            hash.Add(gap.distance);
    }
    return hash.Value();
}

std::uint64_t OfCurves() {
    ResultHash hash;
    Source source;
    auto const line = [&source] {
        double const x = source.Next(-9.0, 9.0), y = source.Next(-9.0, 9.0), from = source.Next(-3.0, 3.0);
        double const radius = source.Next(2.0, 8.0), to = from + source.Next(0.3, 6.0);
        T_LINE_G made;
        if (source.Next(2U) == 0)
            made.Set({x, y, 0.0}, {x + radius * Cos(from), y + radius * Sin(from), 0.0});
        else
            made.Set({x + radius * Cos(from), y + radius * Sin(from), 0.0},
                     {x + radius * Cos(to), y + radius * Sin(to), 0.0}, 1, {x, y, 0.0}, {0.0, 0.0, 1.0}, 1, 1e-4);
        return made;
    };
    for (int i = 0; i < 3000; ++i) {
        MArray<MVector<double, 3>> points;
        T_LINE_G const a = line(), b = line();
        hash.Add(MIntersectUtil::GetIntersectPointByLine2Line(a, b, points, 1e-6));
        for (auto const &p : points)
            for (int axis = 0; axis < 3; ++axis)
                hash.Add(p[static_cast<std::size_t>(axis)]);
    }
    return hash.Value();
}

std::uint64_t OfTrees() {
    ResultHash hash;
    Source source;
    MQuadTree tree;
    for (unsigned key = 1; key <= 2000; ++key) {
        DrawingPoint const p = source.Point(100.0);
        tree.Insert(key, MQuadMBR2D{p.x, p.y, p.x + source.Next(0.0, 5.0), p.y + source.Next(0.0, 5.0)});
    }
    for (int i = 0; i < 200; ++i) {
        DrawingPoint const p = source.Point(100.0);
        zvi::MList<MQuadObj *> found;
        tree.GetIntersectObjList({p.x, p.y, p.x + 20.0, p.y + 20.0}, found, i % 2);
        for (MQuadObj *const object : found)
            hash.Add(object->GetKey());
    }
    return hash.Value();
}

std::uint64_t OfTypedTexts() {
    ResultHash hash;
    Source source;
    wchar_t const *const functions[] = {L"sin", L"cos", L"tan",  L"atan", L"exp",
                                        L"ln",  L"log", L"sqrt", L"sinh", L"cosh"};
    for (int i = 0; i < 2000; ++i) {
        double const argument = source.Next(0.0, 9.0), factor = source.Next(0.1, 9.0);
        CString text;
        text.Format(L"%s(%.15g)*%.17g^%d", functions[source.Next(10U)], argument, factor, 1 + i % 7);
        double value = 0.0;
        hash.Add(CStrParser::GetFloatNumber(text, value));
        hash.Add(value);
        hash.Add(text);
    }
    CArray<int> nodes;
    CStrParser::GetNodeList(L"1to900by7 5 3to1by-1 12", nodes);
    for (int i = 0; i < nodes.GetSize(); ++i)
        hash.Add(nodes[i]);
    return hash.Value();
}

std::uint64_t OfUnits() {
    ResultHash hash;
    MUnitCtrl units(nullptr);
    for (int type = 0; type < 8; ++type) {
        units.Initialize(type);
        for (int kind = 0; kind < 129; ++kind) {
            CString label;
            units.GetUnitSystem(kind, label);
            hash.Add(label);
            hash.Add(units.ConvertUnitDataIn(kind, 12.345));
            hash.Add(units.ConvertUnitDataOut(kind, 12.345));
        }
    }
    return hash.Value();
}

std::uint64_t OfMath() {
    ResultHash hash;
    Source source;
    for (int i = 0; i < 3000; ++i) {
        double const a[] = {source.Next(-9.0, 9.0), source.Next(-9.0, 9.0), source.Next(-9.0, 9.0)};
        double const b[] = {source.Next(-9.0, 9.0), source.Next(-9.0, 9.0), source.Next(-9.0, 9.0)};
        hash.Add(angle_2d(a, b));
        hash.Add(angle_3d(a, b));
    }
    return hash.Value();
}

} // namespace

TEST(Results, AreTheSameOnEveryCompilerProcessorAndHost) {
    EXPECT_EQ(OfMath(), 2089238438604117305U);
    EXPECT_EQ(OfUnits(), 8789899047308588428U);
    EXPECT_EQ(OfCurves(), 15000891219495167926U);
    EXPECT_EQ(OfTrees(), 7319982876985047455U);
    EXPECT_EQ(OfTypedTexts(), 3146604537266195836U);
    EXPECT_EQ(OfDrawings(), 1364726869113468560U);
}

} // namespace zvi::lib::test
