// Distinct objects on distinct threads never meet. Run under the thread sanitizer, which sees what they would share.

#include "tests/spatial/Trees.h"
#include "zvi/zvi.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace zvi::lib::test {

namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 20;

std::string Containers() {
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
    std::string text = std::to_string(names.GetCount()) + " " + std::to_string(list.GetCount());
    for (auto const &[key, name] : map)
        text += Utf8Of(name);
    for (int const place : places)
        text += std::to_string(place);
    return text;
}

std::string Vectors() {
    CMathVec vector(1, 2, 3);
    vector.Normalize();
    CMathPln const plane(CMathPnt(0, 0, 1), vector);
    double x = 1;
    double y = 2;
    double z = 3;
    MMathFunc::mathRotate(30, 0, 0, 1, x, y, z);
    return std::to_string(plane.Distance(CMathPnt(x, y, z)) + radian(x));
}

std::string Curves() {
    T_LINE_G line;
    T_LINE_G circle;
    line.Set({-2, 0.5, 0}, {2, 0.5, 0});
    circle.Set({1, 0, 0}, {1, 0, 0}, 1, {0, 0, 0}, {0, 0, 1}, 1, 1e-4);
    MArray<MVector<double, 3>> points;
    MIntersectUtil::GetIntersectPointByLine2Line(line, circle, points, 1e-6);
    MDomainMaker maker;
    for (unsigned int id = 0; id < 3; ++id) {
        std::array<DM_VTEX, 3> const corners = {{{0.1, 0}, {4, 0.3}, {3, 4}}};
        maker.AddCurv(id + 1, corners[id], corners[(id + 1) % 3]);
    }
    maker.MakeDomain();
    DrawingResult const drawing = MakeDrawingDomains({
        {1, DrawingCurveType::kLine, {-3, -3}, {4, -3}, {}, {}},
        {2, DrawingCurveType::kLine, {4, -3}, {4, 5}, {}, {}},
        {3, DrawingCurveType::kLine, {4, 5}, {-3, -3}, {}, {}},
        {4, DrawingCurveType::kCircle, {}, {}, {3, 0}, 2},
    });
    std::string text = std::to_string(points.Size()) + " " + std::to_string(maker.GetResultSurf().Size());
    for (DrawingDomain const &domain : drawing.domains)
        text.append(" ").append(std::to_string(domain.area));
    return text;
}

template <typename In>
std::string TextOfTrees() {
    Forest<In> forest;
    forest.Work();
    std::string text;
    for (double const end : forest.Hits())
        text += std::to_string(end) + " ";
    return text;
}

std::string Trees() {
    return TextOfTrees<Plane>() + TextOfTrees<Space>();
}

std::string PointsAndBodies() {
    MPntOcTree tree(200, 4);
    MHashPointSpatialIndex index;
    double const low[] = {0, 0, 0};
    double const high[] = {100, 100, 100};
    index.SetBoundaryAndDivision(low, high, 10);
    std::vector<TriangleBody> bodies(2);
    int stored = 0;
    for (int i = 0; i < 100; ++i) {
        MVector<double, 3> const p(i * 37 % 101, i * 53 % 97, i);
        tree.Insert(static_cast<std::uint64_t>(i), p);
        stored += index.Insert(p.Data(), static_cast<std::uint64_t>(i));
        bodies[static_cast<std::size_t>(i) % 2].push_back(
            {p, p + MVector<double, 3>(9, 0, 0), p + MVector<double, 3>(0, 9, 1)});
    }
    MList<MPntOcData *> points;
    tree.GetListInBox({0, 0, 0}, {50, 50, 50}, points);
    return std::to_string(points.GetCount() + FindBodyContacts(bodies, 30).contacts.size()) + std::to_string(stored);
}

std::string TypedTexts() {
    MUnitCtrl units(nullptr);
    units.Initialize(1);
    units.SetUnitSystemType(3, 0);
    CString label;
    units.GetUnitSystem(5, label);
    MParser parser;
    char height[] = "H";
    parser.AddDoubleVar(height, 3);
    double value = 0;
    parser.ParsingUNumberArg(L"2m+30cm", &units);
    parser.GetNumberData(value);
    double product = 0;
    parser.ParsingNumberArg(L"2*H");
    parser.GetNumberData(product);
    CArray<int> nodes;
    CStrParser::GetNodeList(L"1to9by2 20", nodes);
    MArray<long> numbers{1, 3, 5, 7, 20};
    MNumericOptimizer optimizer;
    return Utf8Of(label + optimizer.OptimizeSortedArray(numbers) + MSpecialChar::Get(MSpecialChar::kDegree)) +
           std::to_string(value) + std::to_string(product) + std::to_string(nodes.GetSize());
}

std::string ProcessWideServices() {
    return std::to_string(host::RegisterMessage(L"zvi threads test"));
}

using Work = std::string (*)();
constexpr Work kWorks[] = {Containers, Vectors, Curves, Trees, PointsAndBodies, TypedTexts, ProcessWideServices};

} // namespace

TEST(Threads, DistinctObjectsNeverMeet) {
    std::vector<std::string> expected;
    for (Work const work : kWorks)
        expected.push_back(work());
    std::array<std::vector<std::string>, kThreads> found;
    std::vector<std::thread> threads;
    for (std::vector<std::string> &mine : found) {
        threads.emplace_back([&mine] {
            for (int round = 0; round < kRounds; ++round) {
                mine.clear();
                for (Work const work : kWorks)
                    mine.push_back(work());
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    for (std::vector<std::string> const &mine : found)
        EXPECT_EQ(mine, expected);
}

} // namespace zvi::lib::test
