#include "zvi/drawing/CurveFamiliesDetail.h"

#include "zvi/drawing/MeetingsDetail.h"
#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <cassert>
#include <map>

namespace zvi::lib::drawing {

namespace {

/// Fewer edges than this are no family.
constexpr std::size_t kSmallestFamily = 64;

/// Lines whose directions follow one another by less than this angle are parallel.
constexpr double kSameDirection = 1e-9;

/// Arcs whose centres are nearer to one another than this share of their radius are taken for concentric.
constexpr double kNearCenter = 0x1p-6;

/// Pairs of lines that are tried to find where many cross, and how many of them must cross in one point.
constexpr std::size_t kTries = 512;
constexpr int kVotes = 4;

/// Lines that pass a common point by more than this share of rounding do not go through it.
constexpr double kOffPoint = 0.25;

/// What rounding may throw off the computed crossing of two lines at a right angle, by each of them, as a share of what
/// it accounts for in a coordinate; and as a share of the snap distance how far off it may be to give the same place.
constexpr double kComputed = 0x1p-4, kSamePlace = 0.45;

enum class Kind { kParallel, kConcentric, kFromPlace, kThroughPoint };

/// What the members of a family have in common: their direction, their centre, or a place or point they leave.
struct Trait {
    Kind kind = Kind::kParallel;
    DrawingPoint at;
    int place = -1;
};

struct Claim {
    int edge = 0;
    std::size_t trait = 0;
};

/// The direction of a line, upward.
double TurnOf(Stretch const &line) {
    double const angle = Atan2(line.end.y - line.start.y, line.end.x - line.start.x);
    return angle < 0.0 ? angle + kPi : angle;
}

/// Of a line with a length.
double DistanceFromLine(Stretch const &line, DrawingPoint p) {
    assert(!line.isArc && !(line.start == line.end));
    DrawingPoint const chord = line.end - line.start;
    return std::fabs(Cross(chord, p - line.start)) / Length(chord);
}

/// Finds what edges have in common with many others.
class TraitFinder {
public:
    TraitFinder(Network const &network, double reach) : m_network(network), m_reach(reach) {
        FindPlaces();
        FindCenters();
        FindDirections();
        FindCrossings();
    }

    /// Of each edge its trait, the one that it shares with most others; BoxIndex::kNoGroup when these are few.
    std::vector<int> Choose() const {
        std::vector<std::size_t> const sizes = Sizes(m_claims);
        std::vector<int> chosen(m_network.edges.size(), BoxIndex::kNoGroup);
        for (Claim const &claim : m_claims)
            if (int &trait = chosen[Index(claim.edge)]; trait < 0 || sizes[claim.trait] > sizes[Index(trait)])
                trait = static_cast<int>(claim.trait);
        std::vector<std::size_t> members(m_traits.size(), 0);
        for (int const trait : chosen)
            if (trait >= 0)
                ++members[Index(trait)];
        for (int &trait : chosen)
            if (trait >= 0 && members[Index(trait)] < kSmallestFamily)
                trait = BoxIndex::kNoGroup;
        return chosen;
    }

    std::vector<Trait> const &Traits() const { return m_traits; }

private:
    std::vector<std::size_t> Sizes(std::vector<Claim> const &claims) const {
        std::vector<std::size_t> sizes(m_traits.size(), 0);
        for (Claim const &claim : claims)
            ++sizes[claim.trait];
        return sizes;
    }

    void Add(Trait const &trait, std::vector<int> const &edges) {
        if (edges.size() < kSmallestFamily)
            return;
        for (int const edge : edges)
            m_claims.push_back({edge, m_traits.size()});
        m_traits.push_back(trait);
    }

    Stretch const &StretchOf(int edge) const { return m_network.edges[Index(edge)].stretch; }

    /// Edges that leave a place and only lead away from it.
    void FindPlaces() {
        std::vector<std::vector<int>> leaving(m_network.places.Places().size());
        for (int e = 0; e < static_cast<int>(m_network.edges.size()); ++e)
            if (NetworkEdge const &edge = m_network.edges[Index(e)];
                edge.startPlace != edge.endPlace && std::fabs(edge.stretch.sweep) <= kPi)
                for (int const place : {edge.startPlace, edge.endPlace})
                    leaving[Index(place)].push_back(e);
        for (std::size_t place = 0; place < leaving.size(); ++place)
            Add({Kind::kFromPlace, m_network.places.Places()[place], static_cast<int>(place)}, leaving[place]);
    }

    void FindCenters() {
        std::vector<int> arcs;
        for (int e = 0; e < static_cast<int>(m_network.edges.size()); ++e)
            if (StretchOf(e).isArc)
                arcs.push_back(e);
        std::vector<int> others = AddCenters(arcs, m_network.snap, HUGE_VAL);
        if (others.size() < kSmallestFamily)
            return;
        auto const middle = others.begin() + static_cast<std::ptrdiff_t>(others.size() / 2);
        std::nth_element(others.begin(), middle, others.end(),
                         [this](int a, int b) { return StretchOf(a).radius < StretchOf(b).radius; });
        AddCenters(others, std::max(m_network.snap, kNearCenter * StretchOf(*middle).radius), kNearCenter);
    }

    /// Adds arcs whose centres are nearer than a distance, and than a share of their radius, to a common one. Returns
    /// those that have too few others there.
    std::vector<int> AddCenters(std::vector<int> const &arcs, double distance, double shareOfRadius) {
        PlaceIndex centers(distance);
        std::vector<std::vector<int>> families;
        for (int const arc : arcs) {
            Stretch const &s = StretchOf(arc);
            std::size_t const center = Index(centers.NearestOrAdd(s.center, distance));
            families.resize(std::max(families.size(), center + 1));
            if (Distance(centers.Places()[center], s.center) <= shareOfRadius * s.radius)
                families[center].push_back(arc);
        }
        std::vector<int> others;
        for (std::size_t center = 0; center < families.size(); ++center) {
            Add({Kind::kConcentric, centers.Places()[center], -1}, families[center]);
            if (families[center].size() < kSmallestFamily)
                others.insert(others.end(), families[center].begin(), families[center].end());
        }
        return others;
    }

    void FindDirections() {
        for (int e = 0; e < static_cast<int>(m_network.edges.size()); ++e)
            if (!StretchOf(e).isArc)
                m_lines.push_back(e);
        std::vector<std::pair<double, int>> turns;
        turns.reserve(m_lines.size());
        for (int const line : m_lines)
            turns.emplace_back(TurnOf(StretchOf(line)), line);
        std::sort(turns.begin(), turns.end());
        std::vector<int> edges;
        for (std::size_t i = 0; i < turns.size(); ++i) {
            edges.push_back(turns[i].second);
            if (i + 1 < turns.size() && turns[i + 1].first - turns[i].first < kSameDirection)
                continue;
            double const turn = turns[i - edges.size() / 2].first;
            Add({Kind::kParallel, {Cos(turn), Sin(turn)}, -1}, edges);
            edges.clear();
        }
    }

    /// Points in which many of the lines cross, by trying some pairs of them.
    void FindCrossings() {
        if (m_lines.size() < kSmallestFamily)
            return;
        PlaceIndex points(m_network.snap);
        std::vector<int> votes;
        std::size_t const step = m_lines.size() / kSmallestFamily;
        for (std::size_t k = 0; k < kTries; ++k) {
            std::size_t const i = k * step % m_lines.size(),
                              j = (i + (k / kSmallestFamily + 1) * step) % m_lines.size();
            Meetings const crossings = CrossingsOf(StretchOf(m_lines[i]), StretchOf(m_lines[j]));
            if (crossings.count == 0)
                continue;
            std::size_t const point = Index(points.NearestOrAdd(crossings.points[0], m_network.snap));
            votes.resize(std::max(votes.size(), point + 1));
            if (++votes[point] == kVotes)
                AddCrossing(crossings.points[0]);
        }
    }

    void AddCrossing(DrawingPoint p) {
        std::vector<int> through;
        for (int const line : m_lines)
            if (DistanceFromLine(StretchOf(line), p) < kOffPoint * m_network.rounding && FootOn(StretchOf(line), p) &&
                std::min(Distance(StretchOf(line).start, p), Distance(StretchOf(line).end, p)) > m_reach)
                through.push_back(line);
        Add({Kind::kThroughPoint, p, -1}, through);
    }

    Network const &m_network;
    double m_reach;
    std::vector<int> m_lines;
    std::vector<Trait> m_traits;
    std::vector<Claim> m_claims;
};

/// Adds boxes for a range of angles, which begins at -3 pi or above but for rounding, so that ranges that differ by a
/// turn meet, too.
void AddTurns(double low, double high, double from, double to, std::vector<Box> &boxes) {
    if (!(high - low < kTwoPi)) {
        boxes.push_back({-kTwoPi, from, kTwoPi, to});
        return;
    }
    boxes.push_back({low, from, high, to});
    if (low < -kPi)
        boxes.push_back({low + kTwoPi, from, high + kTwoPi, to});
    if (high > kPi)
        boxes.push_back({low - kTwoPi, from, high - kTwoPi, to});
}

/// The angle that something of the size `size` takes at a distance.
double AngleOf(double size, double distance) {
    return size < distance ? Asin(size / distance) : kPi;
}

/// Adds the boxes of a member in the coordinates of its family, grown so that those of members meet which come nearer
/// to one another than the reach.
class Spreader {
public:
    Spreader(Trait const &trait, double snap, double rounding, double reach)
        : m_trait(trait), m_snap(snap), m_rounding(rounding), m_reach(reach) {}

    void AddBoxes(NetworkEdge const &edge, std::vector<Box> &boxes) const {
        Stretch const &s = edge.stretch;
        switch (m_trait.kind) {
        case Kind::kParallel:
            AddParallel(s, boxes);
            break;
        case Kind::kConcentric:
            AddConcentric(s, boxes);
            break;
        case Kind::kFromPlace:
            AddRay(edge.startPlace == m_trait.place ? s : Reversed(s), boxes);
            break;
        case Kind::kThroughPoint:
            AddHalf(s.start, s, boxes);
            AddHalf(s.end, s, boxes);
            break;
        }
    }

private:
    /// Distance along the common direction, and offset from it.
    void AddParallel(Stretch const &s, std::vector<Box> &boxes) const {
        double const along[] = {Dot(m_trait.at, s.start), Dot(m_trait.at, s.end)};
        double const offset[] = {Cross(m_trait.at, s.start), Cross(m_trait.at, s.end)};
        Box const box{std::min(along[0], along[1]), std::min(offset[0], offset[1]), std::max(along[0], along[1]),
                      std::max(offset[0], offset[1])};
        boxes.push_back(Grown(box, m_reach));
    }

    /// Angle and distance from the common centre, for what the own one may be off that.
    void AddConcentric(Stretch const &s, std::vector<Box> &boxes) const {
        DrawingPoint const first = (s.sweep < 0.0 ? s.end : s.start) - s.center;
        double const off = Distance(s.center, m_trait.at) + m_snap, width = m_reach + off;
        double const low = Atan2(first.y, first.x), grown = AngleOf(width, s.radius - off);
        AddTurns(low - grown, low + std::fabs(s.sweep) + grown, s.radius - width, s.radius + width, boxes);
    }

    /// The angles between the tangent and the chord at the common place, where the edge starts.
    void AddRay(Stretch const &s, std::vector<Box> &boxes) const {
        DrawingPoint const chord = s.end - s.start;
        double const end = Atan2(chord.y, chord.x), begin = end - 0.5 * s.sweep;
        double const grown = AngleOf(m_reach, Length(chord));
        AddTurns(std::min(begin, end) - grown, std::max(begin, end) + grown, 0.0, 0.0, boxes);
    }

    /// The angle of one half of a line. Lines at small angles may cross beside the common point by more than the snap
    /// distance allows, as far as rounding goes.
    void AddHalf(DrawingPoint end, Stretch const &line, std::vector<Box> &boxes) const {
        DrawingPoint const half = end - m_trait.at;
        double const angle = Atan2(half.y, half.x);
        double const miss = kComputed * m_rounding + DistanceFromLine(line, m_trait.at);
        double const grown = std::max(AngleOf(m_reach, Length(half)), AngleOf(miss, kSamePlace * m_snap));
        AddTurns(angle - grown, angle + grown, 0.0, 0.0, boxes);
    }

    Trait m_trait;
    double m_snap;
    double m_rounding;
    double m_reach;
};

/// Lets the first of some lines lead, and the one that crosses it at the widest angle.
void Lead(Network const &network, int line, std::vector<int> &leading) {
    auto const direction = [&](int edge) {
        Stretch const &s = network.edges[Index(edge)].stretch;
        return (s.end - s.start) * (1.0 / LengthOf(s));
    };
    auto const sine = [&](int edge) { return std::fabs(Cross(direction(leading[0]), direction(edge))); };
    if (leading.size() < 2)
        leading.push_back(line);
    else if (sine(line) > sine(leading[1]))
        leading[1] = line;
}

} // namespace

CurveFamilies::CurveFamilies(Network const &network, Carriers const &carriers, double reach)
    : m_begins(network.edges.size(), 0) {
    TraitFinder const finder(network, reach);
    m_familyOf = finder.Choose();
    std::map<int, int> numbers; // of traits that have become families
    m_families.resize(carriers.All().size());
    for (std::size_t e = 0; e < m_familyOf.size(); ++e) {
        if (int const carrier = carriers.CarrierOf(static_cast<int>(e)); carrier >= 0) {
            m_familyOf[e] = carrier;
            continue;
        }
        if (m_familyOf[e] < 0)
            continue;
        Trait const &trait = finder.Traits()[Index(m_familyOf[e])];
        auto const [number, isNew] = numbers.try_emplace(m_familyOf[e], static_cast<int>(m_families.size()));
        if (isNew)
            m_families.emplace_back();
        m_familyOf[e] = number->second;
        Family &family = m_families[Index(number->second)];
        if (trait.kind == Kind::kThroughPoint)
            Lead(network, static_cast<int>(e), family.leading);
        m_begins[e] = family.boxes.size();
        Spreader(trait, network.snap, network.rounding, reach).AddBoxes(network.edges[e], family.boxes);
        family.owners.resize(family.boxes.size(), static_cast<int>(e));
    }
    for (Family &family : m_families)
        family.index = BoxIndex(family.boxes, base::Workers());
}

void CurveFamilies::AddNear(int edge, std::vector<int> &out, std::vector<int> &boxes) const {
    if (m_familyOf.empty() || m_familyOf[Index(edge)] < 0)
        return;
    Family const &family = m_families[Index(m_familyOf[Index(edge)])];
    out.insert(out.end(), family.leading.begin(), family.leading.end());
    if (std::find(family.leading.begin(), family.leading.end(), edge) != family.leading.end()) {
        out.insert(out.end(), family.owners.begin(), family.owners.end());
        return;
    }
    for (std::size_t box = m_begins[Index(edge)]; box < family.owners.size() && family.owners[box] == edge; ++box) {
        family.index.Find(family.boxes[box], boxes);
        for (int const found : boxes)
            out.push_back(family.owners[Index(found)]);
    }
}

} // namespace zvi::lib::drawing
