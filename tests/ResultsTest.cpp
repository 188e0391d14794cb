// One number for each room, over the exact bits and the order of many results. It is the same on every compiler,
// processor and host, and on every thread: distinct objects never meet, and the thread sanitizer sees what they would
// share. A commit that changes a number changes results, and says so in CHANGELOG.md.

#include "zvi/zvi.h"

#include "tests/ResultHash.h"
#include "tests/spatial/Trees.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <thread>
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
    MDomainMaker maker;
    std::array<DM_VTEX, 3> const corners = {{{0.1, 0}, {4, 0.3}, {3, 4}}};
    for (unsigned i = 0; i < 3; ++i)
        maker.AddCurv(i + 1, corners[i], corners[(i + 1) % 3]);
    maker.MakeDomain();
    for (int const curve : maker.GetResultSurf()[0].Curv)
        hash.Add(curve);
    return hash.Value();
}

template <typename In>
void AddTree(ResultHash &hash) {
    Forest<In> forest;
    forest.Work();
    for (std::uint64_t const hit : forest.Hits())
        hash.Add(hit);
}

std::uint64_t OfTrees() {
    ResultHash hash;
    AddTree<Plane>(hash);
    AddTree<Space>(hash);
    AddTree<Points>(hash);
    return hash.Value();
}

std::uint64_t OfPointsAndBodies() {
    ResultHash hash;
    MHashPointSpatialIndex index;
    double const low[] = {0, 0, 0}, high[] = {100, 100, 100};
    index.SetBoundaryAndDivision(low, high, 10);
    std::vector<TriangleBody> bodies(2);
    for (int i = 0; i < 100; ++i) {
        MVector<double, 3> const p(i * 37 % 101, i * 53 % 97, i);
        hash.Add(index.Insert(p.Data(), static_cast<std::uint64_t>(i)));
        bodies[static_cast<std::size_t>(i) % 2].push_back(
            {p, p + MVector<double, 3>(9, 0, 0), p + MVector<double, 3>(0, 9, 1)});
    }
    for (BodyContact const &contact : FindBodyContacts(bodies, 30).contacts)
        hash.Add(contact.smallestGap);
    return hash.Value();
}

std::uint64_t OfContainers() {
    ResultHash hash;
    MHashMap<int, CString> map;
    CMap<CString, int> names;
    MList<int> list;
    MArray<double> values;
    std::vector<int> places;
    for (int i = 0; i < 200; ++i) {
        CString name;
        name.Format(L"%d:%S", i * 37 % 101, "\xC3\xA9");
        map.SetAt(i * 37 % 101, name);
        names.SetAt(name, i);
        list.AddTail(i);
        values.PushBack(i * 37 % 101);
        places.push_back(i);
    }
    MQSort::QSortDblWithIndex(places.data(), values.Data(), places.size());
    for (auto const &[key, name] : map)
        hash.Add(name);
    for (auto const &[name, number] : names)
        hash.Add(number);
    for (int const number : list)
        hash.Add(places[static_cast<std::size_t>(number)]);
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
    MUnitCtrl units(nullptr);
    units.Initialize(1);
    MParser parser;
    char height[] = "H";
    parser.AddDoubleVar(height, 3);
    double value = 0.0;
    hash.Add(parser.ParsingUNumberArg(L"2m+H*30cm", &units) + parser.GetNumberData(value));
    hash.Add(value);
    hash.Add(MSpecialChar::Get(MSpecialChar::kDegree));
    std::uint32_t const message = host::RegisterMessage(L"zvi results");
    hash.Add(int{host::RegisterMessage(L"zvi results") == message});
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
        CMathPln const plane{CMathPnt(a), CMathVec(b)};
        double p[] = {1, 2, 3};
        MMathFunc::mathRotate(a[0], b[0], b[1], b[2], p[0], p[1], p[2]);
        hash.Add(plane.Distance(CMathPnt(p)));
    }
    return hash.Value();
}

struct RoomResults {
    char const *room;
    std::uint64_t (*hash)();
    std::uint64_t expected;
};

void ExpectAll() {
    for (RoomResults const &results : {RoomResults{"math", OfMath, 8096858053755288547U},
                                       {"containers", OfContainers, 12092358634132931913U},
                                       {"wide formats", OfWideFormats, 6413837148296680666U},
                                       {"units", OfUnits, 8789899047308588428U},
                                       {"curves", OfCurves, 5996723046042282980U},
                                       {"trees", OfTrees, 16035671381705304179U},
                                       {"points and bodies", OfPointsAndBodies, 11981994233471057211U},
                                       {"typed texts", OfTypedTexts, 8004828130561413523U},
                                       {"drawings", OfDrawings, 1364726869113468560U}})
        EXPECT_EQ(results.hash(), results.expected) << results.room;
}

} // namespace

TEST(Results, AreTheSameOnEveryCompilerProcessorAndHost) {
    ExpectAll();
}

TEST(Results, AreTheSameOnEachOfFourThreads) {
    std::array<std::thread, 4> threads;
    for (std::thread &thread : threads)
        thread = std::thread(ExpectAll);
    for (std::thread &thread : threads)
        thread.join();
}

} // namespace zvi::lib::test
