// One number for each room, over the exact bits and the order of many results. It is the same on every compiler,
// processor and host; a commit that changes one changes results, and says so in CHANGELOG.md.

#include "zvi/command/CStrParser.h"
#include "zvi/command/MNumericOptimizer.h"
#include "zvi/core/CString.h"
#include "zvi/core/MQSort.h"
#include "zvi/curves/MIntersectUtil.h"
#include "zvi/drawing/MakeDrawingDomains.h"
#include "zvi/math/elementary/Elementary.h"
#include "zvi/math/free/Angle.h"
#include "zvi/spatial/MOcTree.h"
#include "zvi/spatial/MQuadTree.h"
#include "zvi/units/MUnitCtrl.h"

#include "tests/ResultHash.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace zvi::lib::test {

namespace {

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

void AddPoint(ResultHash &hash, DrawingPoint p) {
    hash.Add(p.x);
    hash.Add(p.y);
}

void AddLoop(ResultHash &hash, std::vector<DrawingPiece> const &loop) {
    for (DrawingPiece const &piece : loop) {
        hash.Add(piece.curve);
        hash.Add(piece.from);
        hash.Add(piece.to);
        AddPoint(hash, piece.start);
        AddPoint(hash, piece.center);
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
    MQuadTree flat;
    MOcTree solid;
    for (unsigned key = 1; key <= 2000; ++key) {
        DrawingPoint const p = source.Point(100.0), size = {source.Next(0.0, 5.0), source.Next(0.0, 5.0)};
        double const z = source.Next(-100.0, 100.0);
        flat.Insert(key, MQuadMBR2D{p.x, p.y, p.x + size.x, p.y + size.y});
        solid.Insert(key, MOcMBR3D{p.x, p.y, z, p.x + size.x, p.y + size.y, z + size.x});
    }
    for (int i = 0; i < 200; ++i) {
        DrawingPoint const p = source.Point(100.0);
        zvi::MList<MQuadObj *> rectangles;
        flat.GetIntersectObjList({p.x, p.y, p.x + 20.0, p.y + 20.0}, rectangles, i % 2);
        for (MQuadObj *const object : rectangles)
            hash.Add(object->GetKey());
        zvi::MList<MOcObj *> boxes;
        solid.GetIntersectObjList({p.x, p.y, p.x, p.x + 50.0, p.y + 50.0, p.x + 50.0}, boxes, i % 2);
        for (MOcObj *const object : boxes)
            hash.Add(object->GetItr());
    }
    return hash.Value();
}

std::uint64_t OfSorts() {
    ResultHash hash;
    Source source;
    std::vector<int> byNumber(500), byText(500), numbers;
    std::vector<double> sizes;
    std::vector<CString> texts(500), names;
    std::vector<unsigned> order(500);
    for (unsigned i = 0; i < 500; ++i) {
        numbers.push_back(static_cast<int>(source.Next(60U)) - 30);
        sizes.push_back(source.Next(9U) * 0.5);
        byNumber[i] = byText[i] = static_cast<int>(i);
        order[i] = i;
        int const letter = static_cast<int>(source.Next(3U)), digits = static_cast<int>(source.Next(3U));
        texts[i].Format(L"%c%0*d", L'A' + letter, 1 + digits, static_cast<int>(source.Next(40U)));
    }
    names = texts;
    MQSort::QSortIntWithIndex(byNumber.data(), numbers.data(), 500);
    MQSort::QSortDblWithIndex(byText.data(), sizes.data(), 500);
    MQSort::QSortString(texts.data(), 500);
    MQSort::QSortStringNumWithIndex(order.data(), names.data(), 500);
    for (std::size_t i = 0; i < 500; ++i) {
        hash.Add(byNumber[i]);
        hash.Add(byText[i]);
        hash.Add(order[i]);
        hash.Add(texts[i]);
    }
    return hash.Value();
}

std::uint64_t OfWideFormats() {
    ResultHash hash;
    Source source;
    wchar_t const *const formats[] = {L"%g",     L"%.17g", L"%12.4f|%-9d",  L"%e",    L"%+.3E|%x", L"% .0f|%#o",
                                      L"%G|%5u", L"%a",    L"%015.6g|%03d", L"%.40f", L"%#.3g|%X", L"%.1f|%+d"};
    for (int i = 0; i < 3000; ++i) {
        double const size = Pow(10.0, source.Next(-30.0, 30.0)), number = source.Next(-1.0, 1.0) * size;
        CString text;
        text.Format(formats[i % 12], number, static_cast<int>(source.Next(100'000U)));
        hash.Add(text);
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
    for (int i = 0; i < 200; ++i) {
        MArray<long> numbers;
        for (long number = 1, step = 1; number < 900; number += step) {
            numbers.PushBack(number);
            if (source.Next(5U) == 0)
                step = 1 + static_cast<long>(source.Next(4U));
        }
        CString const list = MNumericOptimizer().OptimizeSortedArray(numbers);
        CArray<int> nodes;
        hash.Add(list);
        hash.Add(CStrParser::GetNodeList(list, nodes));
        for (int node = 0; node < nodes.GetSize(); ++node)
            hash.Add(nodes[node]);
    }
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
    EXPECT_EQ(OfSorts(), 5630429132646872184U);
    EXPECT_EQ(OfWideFormats(), 6413837148296680666U);
    EXPECT_EQ(OfUnits(), 8789899047308588428U);
    EXPECT_EQ(OfCurves(), 15000891219495167926U);
    EXPECT_EQ(OfTrees(), 9291807345556235911U);
    EXPECT_EQ(OfTypedTexts(), 16911511244330838321U);
    EXPECT_EQ(OfDrawings(), 1364726869113468560U);
}

} // namespace zvi::lib::test
