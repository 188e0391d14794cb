#include "tests/curves/RandomCurves.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zvi::lib::test {

namespace {

double Uniform(std::mt19937 &random, double from, double to) {
    return std::uniform_real_distribution<double>(from, to)(random);
}

int Pick(std::mt19937 &random, int count) {
    return std::uniform_int_distribution<int>(0, count - 1)(random);
}

bool Chance(std::mt19937 &random, double probability) {
    return Uniform(random, 0, 1) < probability;
}

/// Collects segments; ids count from 1.
struct Builder {
    CurveSet curves;
    std::mt19937 &random;

    void Add(DM_VTEX a, DM_VTEX b) { curves.push_back({static_cast<unsigned int>(curves.size() + 1), {a, b}, false}); }

    void AddRing(std::vector<DM_VTEX> const &ring) {
        for (std::size_t i = 0; i < ring.size(); ++i)
            Add(ring[i], ring[(i + 1) % ring.size()]);
    }

    /// A ring about a centre; without `round` it is an upright square.
    std::vector<DM_VTEX> Ring(DM_VTEX centre, double radius, bool round) {
        if (!round) {
            return {{centre.x - radius, centre.y - radius},
                    {centre.x + radius, centre.y - radius},
                    {centre.x + radius, centre.y + radius},
                    {centre.x - radius, centre.y + radius}};
        }
        int const corners = 3 + Pick(random, 4);
        double const turn = Uniform(random, 0, 6);
        std::vector<DM_VTEX> ring;
        for (int i = 0; i < corners; ++i) {
            double const angle = turn + 2 * std::numbers::pi * i / corners;
            ring.push_back({centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)});
        }
        return ring;
    }
};

/// Edges of a `size` x `size` point grid; `jitter` moves the points, `height` presses the grid flat.
void AddGrid(Builder &b, int size, double jitter, double height, double diagonals, double keep) {
    std::vector<DM_VTEX> points;
    for (int i = 0; i < size * size; ++i) {
        double const x = i % size + Uniform(b.random, -jitter, jitter);
        double const y = i / size + Uniform(b.random, -jitter, jitter);
        points.push_back({x, y * height});
    }
    auto const at = [&](int column, int row) { return points[static_cast<std::size_t>(row * size + column)]; };
    for (int row = 0; row < size; ++row) {
        for (int column = 0; column < size; ++column) {
            bool const right = column + 1 < size;
            bool const up = row + 1 < size;
            if (right && Chance(b.random, keep))
                b.Add(at(column, row), at(column + 1, row));
            if (up && Chance(b.random, keep))
                b.Add(at(column, row), at(column, row + 1));
            if (right && up && Chance(b.random, diagonals * keep))
                b.Add(at(column, row), at(column + 1, row + 1));
        }
    }
}

void AddTangle(Builder &b, int size, bool lattice) {
    std::vector<DM_VTEX> points;
    for (int i = 0; i < size * 2; ++i) {
        if (lattice)
            points.push_back({static_cast<double>(Pick(b.random, size)), static_cast<double>(Pick(b.random, size))});
        else
            points.push_back({Uniform(b.random, 0, size), Uniform(b.random, 0, size)});
    }
    int const edges = size + Pick(b.random, 3 * size);
    for (int i = 0; i < edges; ++i)
        b.Add(points[static_cast<std::size_t>(Pick(b.random, size * 2))],
              points[static_cast<std::size_t>(Pick(b.random, size * 2))]);
}

void AddNest(Builder &b, int size) {
    bool const round = Chance(b.random, 0.5);
    DM_VTEX centre{0, 0};
    double radius = size;
    std::vector<DM_VTEX> outer;
    for (int i = 0; i < size + 2; ++i) {
        std::vector<DM_VTEX> ring = b.Ring(centre, radius, round);
        if (!outer.empty() && Chance(b.random, 0.15))
            ring[0] = outer[0]; // touches the one around it in a vertex
        else if (!outer.empty() && Chance(b.random, 0.15))
            b.Add(outer[0], ring[0]); // hangs on a bridge
        b.AddRing(ring);
        if (Chance(b.random, 0.3))
            b.Add(ring[0], ring[2]);
        outer = ring;
        if (Chance(b.random, 0.3)) {
            centre = {Uniform(b.random, -size, 2 * size), Uniform(b.random, -size, size)};
            radius = Uniform(b.random, 0.2, size);
        } else {
            radius *= Uniform(b.random, 0.4, 0.9);
            if (Chance(b.random, 0.5))
                centre = {centre.x + radius * Uniform(b.random, -0.1, 0.1), centre.y};
        }
    }
}

void AddCactus(Builder &b, int size) {
    std::vector<DM_VTEX> joints{{0, 0}};
    for (int i = 0; i < size * 2; ++i) {
        DM_VTEX joint = joints[static_cast<std::size_t>(Pick(b.random, static_cast<int>(joints.size())))];
        double const angle = Uniform(b.random, 0, 2 * std::numbers::pi);
        double const reach = Uniform(b.random, 0.2, 2);
        DM_VTEX const tip{joint.x + reach * std::cos(angle), joint.y + reach * std::sin(angle)};
        if (Chance(b.random, 0.4)) {
            b.Add(joint, tip);
            joints.push_back(tip);
            joint = tip;
            if (Chance(b.random, 0.3))
                continue;
        }
        std::vector<DM_VTEX> ring = b.Ring({joint.x + reach, joint.y}, reach, true);
        ring[0] = joint;
        b.AddRing(ring);
        joints.insert(joints.end(), ring.begin(), ring.end());
    }
}

void AddFan(Builder &b, int size) {
    std::vector<DM_VTEX> previous;
    for (int hub = 0; hub < 1 + size / 3; ++hub) {
        DM_VTEX const centre{hub * 1.5, Uniform(b.random, -0.2, 0.2)};
        std::vector<DM_VTEX> rim = b.Ring(centre, 1, true);
        int const spokes = size * 2;
        rim.clear();
        double const spread = Chance(b.random, 0.5) ? 2 * std::numbers::pi : Uniform(b.random, 0.003, 3);
        for (int i = 0; i < spokes; ++i) {
            double const angle = spread * i / spokes;
            rim.push_back({centre.x + std::cos(angle), centre.y + std::sin(angle)});
        }
        for (std::size_t i = 0; i < rim.size(); ++i) {
            if (Chance(b.random, 0.8))
                b.Add(centre, rim[i]);
            if (Chance(b.random, 0.9) && (i + 1 < rim.size() || spread > 6))
                b.Add(rim[i], rim[(i + 1) % rim.size()]);
        }
    }
}

/// Refines, repeats, turns and shuffles curves.
void Disturb(Builder &b) {
    std::mt19937 &random = b.random;
    double const bend = Chance(random, 0.3) ? 0.15 : 0.0;
    double const repeat = Chance(random, 0.3) ? 0.1 : 0.0;
    bool const turn = Chance(random, 0.5);
    CurveSet const plain = b.curves;
    for (InputCurve const &curve : plain) {
        DM_VTEX const p = curve.points[0];
        DM_VTEX const q = curve.points[1];
        InputCurve &kept = b.curves[curve.id - 1];
        if (Chance(random, bend)) {
            int const middles = 1 + Pick(random, 3);
            kept.points = {p};
            for (int i = 1; i <= middles; ++i) {
                double const t = static_cast<double>(i) / (middles + 1);
                double const bow = 0.1 * t * (1 - t);
                kept.points.push_back(
                    {p.x + t * (q.x - p.x) - bow * (q.y - p.y), p.y + t * (q.y - p.y) + bow * (q.x - p.x)});
            }
            kept.points.push_back(q);
        }
        if (Chance(random, repeat))
            b.Add(q, p);
        if (Chance(random, repeat))
            b.Add(p, p);
        if (Chance(random, repeat / 2))
            b.Add({p.x + 0.00009, p.y - 0.00009}, q);
    }
    if (turn) {
        double const angle = Uniform(random, 0, 6);
        for (InputCurve &curve : b.curves) {
            for (DM_VTEX &p : curve.points)
                p = {p.x * std::cos(angle) - p.y * std::sin(angle), p.x * std::sin(angle) + p.y * std::cos(angle)};
        }
    }
    for (InputCurve &curve : b.curves) {
        if (Chance(random, 0.5))
            std::reverse(curve.points.begin(), curve.points.end());
        if (Chance(random, 0.02))
            curve.id = 1 + static_cast<unsigned int>(Pick(random, static_cast<int>(b.curves.size())));
    }
    std::shuffle(b.curves.begin(), b.curves.end(), random);
    if (!b.curves.empty() && Chance(random, 0.1)) {
        InputCurve const &curve = b.curves[static_cast<std::size_t>(Pick(random, static_cast<int>(b.curves.size())))];
        DM_VTEX const p = curve.points.front();
        b.curves.push_back({curve.id, {{p.x + 0.01, p.y + 0.3}, {p.x + 0.01, p.y + 0.3}, p}, true});
    }
}

} // namespace

std::string NameOf(CurveKind kind) {
    static char const *const names[] = {"grid", "lattice", "tangle", "slivers", "nest", "cactus", "fan"};
    return names[static_cast<int>(kind)];
}

CurveSet MakeRandomCurves(CurveKind kind, int size, std::mt19937 &random) {
    Builder b{{}, random};
    switch (kind) {
    case CurveKind::kGrid:
        AddGrid(b, size, Uniform(random, 0, 0.3), 1, Uniform(random, 0, 1), Uniform(random, 0.6, 1));
        break;
    case CurveKind::kLattice:
        if (Chance(random, 0.5))
            AddGrid(b, size, 0, 1, Uniform(random, 0, 1), Uniform(random, 0.6, 1));
        else
            AddTangle(b, size, true);
        break;
    case CurveKind::kTangle:
        AddTangle(b, size, false);
        break;
    case CurveKind::kSlivers:
        AddGrid(b, size, Uniform(random, 0, 0.3), std::pow(10.0, Uniform(random, -4.0, -2.0)), Uniform(random, 0, 1),
                Uniform(random, 0.6, 1));
        break;
    case CurveKind::kNest:
        AddNest(b, size);
        break;
    case CurveKind::kCactus:
        AddCactus(b, size);
        break;
    default:
        AddFan(b, size);
        break;
    }
    Disturb(b);
    return b.curves;
}

} // namespace zvi::lib::test
