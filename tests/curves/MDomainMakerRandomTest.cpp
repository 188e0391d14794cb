#include "tests/curves/MDomainMakerOracle.h"
#include "zvi/curves/MDomainMaker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <random>
#include <sstream>

namespace zvi::lib::test {

namespace {

using Points = std::vector<DM_VTEX>;

constexpr double kTurn = 2 * std::numbers::pi;

/// Builds random input; `size` is roughly the number of points along a side. All of it is small, so that an error shows
/// in a picture that can be drawn by hand.
class CurveSource {
public:
    CurveSource(unsigned int seed, int size) : m_random(seed), m_size(size) {}

    double Uniform(double from, double to) { return std::uniform_real_distribution<double>(from, to)(m_random); }
    int Pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }
    bool Chance(double probability) { return Uniform(0, 1) < probability; }

    /// Edges of a triangulated point grid, some left out; `jitter` moves the points, `height` presses the grid flat.
    void AddGrid(double jitter, double height) {
        double const diagonals = Uniform(0, 1);
        double const keep = Uniform(0.6, 1);
        Points points;
        for (int i = 0; i < m_size * m_size; ++i) {
            double const x = i % m_size + Uniform(-jitter, jitter);
            points.push_back({x, (i / m_size + Uniform(-jitter, jitter)) * height});
        }
        auto const add = [&](int from, int to, double probability) {
            if (Chance(probability))
                Add(points[static_cast<std::size_t>(from)], points[static_cast<std::size_t>(to)]);
        };
        for (int i = 0; i < m_size * m_size; ++i) {
            bool const right = i % m_size + 1 < m_size;
            bool const up = i + m_size < m_size * m_size;
            add(i, right ? i + 1 : i, right ? keep : 0);
            add(i, up ? i + m_size : i, up ? keep : 0);
            add(i, right && up ? i + m_size + 1 : i, right && up ? diagonals * keep : 0);
        }
    }

    /// Segments between random points, crossings uncut.
    void AddTangle(bool isLattice) {
        Points points;
        for (int i = 0; i < m_size * 2; ++i) {
            double const x = Uniform(0, m_size);
            double const y = Uniform(0, m_size);
            points.push_back(isLattice ? DM_VTEX{std::floor(x), std::floor(y)} : DM_VTEX{x, y});
        }
        for (int i = m_size + Pick(3 * m_size); i > 0; --i)
            Add(Any(points), Any(points));
    }

    /// Polygons or squares within and beside one another, some joined by a bridge or in one vertex.
    void AddNest() {
        bool const isRound = Chance(0.5);
        DM_VTEX centre{0, 0};
        double radius = m_size;
        Points outer;
        for (int i = 0; i < m_size + 2; ++i) {
            Points ring = isRound ? Polygon(centre, radius) : Square(centre, radius);
            if (!outer.empty() && Chance(0.15))
                ring[0] = outer[0];
            else if (!outer.empty() && Chance(0.15))
                Add(outer[0], ring[0]);
            AddRing(ring);
            if (Chance(0.5))
                Add(ring[0], ring[2]);
            outer = ring;
            radius *= Uniform(0.4, 0.9);
            centre.x += Chance(0.5) ? radius * Uniform(-0.1, 0.1) : 0;
            if (Chance(0.3)) {
                centre = {Uniform(-m_size, 2 * m_size), Uniform(-m_size, m_size)};
                radius = Uniform(0.2, m_size);
            }
        }
    }

    /// A frame about rows of polygons and squares, some of them nested.
    void AddPlate() {
        AddRing(Square({0.5 * m_size, 0.5 * m_size}, m_size));
        for (int i = 0; i < m_size * m_size; ++i) {
            DM_VTEX const centre{static_cast<double>(i % m_size), static_cast<double>(i / m_size)};
            for (double const radius : {0.4, 0.1}) {
                if (Chance(0.7))
                    AddRing(Chance(0.5) ? Square(centre, radius) : Polygon(centre, radius));
            }
        }
    }

    /// Loops strung together in single vertices and by tails.
    void AddCactus() {
        Points joints{{0, 0}};
        for (int i = 0; i < m_size * 2; ++i) {
            DM_VTEX joint = Any(joints);
            double const reach = Uniform(0.2, 2);
            if (Chance(0.4)) {
                joints.push_back(Ring(joint, reach, 1, Uniform(0, kTurn))[0]);
                Add(joint, joints.back());
                joint = joints.back();
                if (Chance(0.3))
                    continue;
            }
            Points ring = Polygon({joint.x + reach, joint.y}, reach);
            ring[0] = joint;
            AddRing(ring);
            joints.insert(joints.end(), ring.begin(), ring.end());
        }
    }

    /// Spokes and rims about a few hubs.
    void AddFan() {
        for (int hub = 0; hub < 1 + m_size / 3; ++hub) {
            DM_VTEX const centre{hub * 1.5, Uniform(-0.2, 0.2)};
            double const spread = Chance(0.5) ? kTurn : Uniform(0.003, 3);
            Points const rim = Ring(centre, 1, m_size * 2, 0, spread);
            for (std::size_t i = 0; i < rim.size(); ++i) {
                if (Chance(0.8))
                    Add(centre, rim[i]);
                if (Chance(0.9) && (i + 1 < rim.size() || spread == kTurn))
                    Add(rim[i], rim[(i + 1) % rim.size()]);
            }
        }
    }

    /// Ends in a cloud about as dense as the tolerance: whether a vertex is found, and which of several, decides all
    /// later ones.
    void AddCloud() {
        double const far = Chance(0.3) ? 1e9 : Chance(0.3) ? -70000.0 : 0.0;
        bool const isLattice = Chance(0.5);
        auto const place = [&] { return far + (isLattice ? 0.00005 * Pick(13) : Uniform(0, 0.0008)); };
        for (int i = 0; i < 20 * m_size; ++i) {
            DM_VTEX const p{place(), place() - far};
            Add(p, {place(), place() - far});
        }
    }

    /// Lenses in a row, each of two refined arcs. Some ids come again, and their points go to the first edge that bears
    /// them.
    void AddLenses() {
        int const count = m_size == 7 ? 500 : 20 * m_size; // some so many that their ids are looked up in a map
        for (int i = 1; i <= count; ++i) {
            double const x = 3.0 * (i / 2);
            auto const id = static_cast<unsigned int>(Pick(20) == 0 ? 1 + Pick(i) : i);
            m_curves.push_back({id, {{x, 0}, {x + 1, i % 2 == 0 ? 0.5 : -0.5}, {x + 2, 0.1}}});
        }
    }

    /// What was added, some curves refined with mid points, repeated, turned round or shrunk to a point, and shuffled.
    CurveSet Take() {
        double const bend = Chance(0.3) ? 0.15 : 0.0;
        double const repeat = Chance(0.3) ? 0.1 : 0.0;
        double const angle = Chance(0.5) ? Uniform(0, 6) : 0;
        for (std::size_t i = 0, count = m_curves.size(); i < count; ++i) {
            DM_VTEX const p = m_curves[i].points[0];
            DM_VTEX const q = m_curves[i].points[1];
            if (Chance(bend))
                m_curves[i].points = Bow(p, q, 1 + Pick(3));
            if (Chance(repeat))
                Add(q, p);
            if (Chance(repeat))
                Add(p, p);
            if (Chance(repeat / 2))
                Add({p.x + 0.00009, p.y - 0.00009}, q);
        }
        for (InputCurve &curve : m_curves) {
            for (DM_VTEX &p : curve.points)
                p = {p.x * std::cos(angle) - p.y * std::sin(angle), p.x * std::sin(angle) + p.y * std::cos(angle)};
            if (Chance(0.5))
                std::reverse(curve.points.begin(), curve.points.end());
            if (Chance(0.02))
                curve.id = Any(m_curves).id;
        }
        std::shuffle(m_curves.begin(), m_curves.end(), m_random);
        if (!m_curves.empty() && Chance(0.1)) {
            InputCurve const curve = Any(m_curves);
            DM_VTEX const p = curve.points[0];
            m_curves.push_back({curve.id, {{p.x + 0.01, p.y + 0.3}, {p.x + 0.01, p.y + 0.3}, p}, true});
        }
        return m_curves;
    }

private:
    template <typename T>
    T const &Any(std::vector<T> const &list) {
        return list[static_cast<std::size_t>(Pick(static_cast<int>(list.size())))];
    }

    void Add(DM_VTEX a, DM_VTEX b) { m_curves.push_back({static_cast<unsigned int>(m_curves.size() + 1), {a, b}}); }

    void AddRing(Points const &ring) {
        for (std::size_t i = 0; i < ring.size(); ++i)
            Add(ring[i], ring[(i + 1) % ring.size()]);
    }

    static Points Ring(DM_VTEX centre, double radius, int corners, double first, double spread = kTurn) {
        Points ring;
        for (int i = 0; i < corners; ++i) {
            double const angle = first + spread * i / corners;
            ring.push_back({centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)});
        }
        return ring;
    }

    Points Polygon(DM_VTEX centre, double radius) { return Ring(centre, radius, 3 + Pick(6), Uniform(0, 6)); }

    /// Upright to the last bit.
    static Points Square(DM_VTEX c, double r) {
        return {{c.x - r, c.y - r}, {c.x + r, c.y - r}, {c.x + r, c.y + r}, {c.x - r, c.y + r}};
    }

    static MArray<DM_VTEX> Bow(DM_VTEX p, DM_VTEX q, int middles) {
        MArray<DM_VTEX> points;
        for (int i = 0; i <= middles + 1; ++i) {
            double const t = static_cast<double>(i) / (middles + 1);
            double const rise = 0.1 * t * (1 - t);
            points.PushBack({p.x + t * (q.x - p.x) - rise * (q.y - p.y), p.y + t * (q.y - p.y) + rise * (q.x - p.x)});
        }
        return points;
    }

    CurveSet m_curves;
    std::mt19937 m_random;
    int m_size;
};

struct Kind {
    char const *name;
    void (*add)(CurveSource &);
};

Kind const kKinds[] = {
    {"grid", [](CurveSource &s) { s.AddGrid(s.Uniform(0, 0.3), 1); }},
    {"lattice", [](CurveSource &s) { s.Chance(0.5) ? s.AddGrid(0, 1) : s.AddTangle(true); }},
    {"tangle", [](CurveSource &s) { s.AddTangle(false); }},
    {"slivers", [](CurveSource &s) { s.AddGrid(s.Uniform(0, 0.3), std::pow(10.0, s.Uniform(-4, -2))); }},
    {"nest", [](CurveSource &s) { s.AddNest(); }},
    {"plate", [](CurveSource &s) { s.AddPlate(); }},
    {"cactus", [](CurveSource &s) { s.AddCactus(); }},
    {"fan", [](CurveSource &s) { s.AddFan(); }},
    {"cloud", [](CurveSource &s) { s.AddCloud(); }},
    {"lenses", [](CurveSource &s) { s.AddLenses(); }},
};

template <typename Loop>
void Write(std::ostream &out, Loop const &loop) {
    for (auto const *list : {&loop.Vtex, &loop.Curv, &loop.CurvDir}) {
        out << " ";
        for (int const value : *list)
            out << ' ' << value;
        out << '\n';
    }
}

/// Every vertex, and every field of every domain, as text.
template <typename Vertices, typename Surfs>
std::string Print(Vertices const &vertices, Surfs const &surfs) {
    std::ostringstream out;
    out.precision(17);
    for (DM_VTEX const &vertex : vertices)
        out << vertex.x << ", " << vertex.y << '\n';
    for (auto const &surf : surfs) {
        out << "domain: vertices, curves, directions\n";
        Write(out, surf);
        for (auto const &hole : surf.Holes) {
            out << " hole\n";
            Write(out, hole);
        }
    }
    return out.str();
}

std::string Print(CurveSet const &curves) {
    std::ostringstream out;
    out.precision(17);
    for (InputCurve const &curve : curves) {
        out << curve.id << (curve.isMidPoints ? " mid" : "");
        for (DM_VTEX const &p : curve.points)
            out << " (" << p.x << ", " << p.y << ")";
        out << '\n';
    }
    return out.str();
}

/// How often the oracle met what makes a division hard.
struct Coverage {
    std::size_t holes = 0, hung = 0, barred = 0, abandoned = 0;
};

/// Runs one input through both; false, with the input printed, when any field differs.
bool IsSame(Kind const &kind, unsigned int seed, int size, Coverage &coverage) {
    CurveSource source(seed, size);
    kind.add(source);
    CurveSet curves = source.Take();
    MDomainMaker maker;
    for (auto &[id, points, isMidPoints] : curves) {
        if (isMidPoints)
            maker.AddCurvMidPoint(id, points);
        else if (points.Size() == 2)
            maker.AddCurv(id, points[0], points[1]);
        else
            maker.AddCurvedCurvOnce(id, points);
    }
    EXPECT_TRUE(maker.IsConsistent());
    maker.MakeDomain();
    EXPECT_TRUE(maker.IsConsistent());
    OracleResult const oracle = DomainsByDefinition(curves);
    for (OracleSurf const &surf : oracle.surfs)
        coverage.holes += surf.Holes.size();
    coverage.hung += oracle.hasHungLoops ? 1 : 0;
    coverage.barred += oracle.hasBarredEdges ? 1 : 0;
    coverage.abandoned += oracle.isAbandoned ? 1 : 0;
    MArray<DM_VTEX> vertices;
    maker.GetResultVtexCoord(vertices);
    std::string const expected = Print(oracle.vertices, oracle.surfs);
    std::string const found = Print(vertices, maker.GetResultSurf());
    EXPECT_EQ(found, expected) << kind.name << ", seed " << seed << ", size " << size << '\n' << Print(curves);
    return found == expected;
}

unsigned int FromEnvironment(char const *name, unsigned int usual) {
    char const *const text = std::getenv(name);
    return text != nullptr ? static_cast<unsigned int>(std::atoi(text)) : usual;
}

} // namespace

// Field by field the result of the plain algorithm, whatever the input. ZVI_DOMAIN_CASES sets the number of cases of
// each kind, ZVI_DOMAIN_SEED the seed.
TEST(MDomainMakerRandom, GivesWhatThePlainAlgorithmGives) {
    unsigned int const cases = FromEnvironment("ZVI_DOMAIN_CASES", 25);
    unsigned int const seed = FromEnvironment("ZVI_DOMAIN_SEED", 20260501);
    Coverage coverage;
    for (Kind const &kind : kKinds) {
        for (unsigned int i = 0; i < cases; ++i)
            ASSERT_TRUE(IsSame(kind, seed + i, 2 + static_cast<int>(i % 6), coverage));
    }
    EXPECT_GE(coverage.holes, cases);
    EXPECT_GE(coverage.hung, cases / 5);
    EXPECT_GE(coverage.barred, cases / 5);
    EXPECT_GE(coverage.abandoned, cases / 5);
    // Fewer and larger: long rims, many rounds, corners that stay open for long.
    for (Kind const &kind : {kKinds[0], kKinds[7]})
        ASSERT_TRUE(IsSame(kind, seed, 12, coverage) && IsSame(kind, seed + 1, 12, coverage));
}

} // namespace zvi::lib::test
