#include "zvi/drawing/LandmarksDetail.h"

#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <array>
#include <complex>

namespace zvi::lib::drawing {

namespace {

using Complex = std::complex<double>;

/// Moments up to this order are looked at: a drawing that comes to lie on itself at smaller turns than a sixth of a
/// full one does so nearly always at all that are told apart here.
constexpr int kHighestOrder = 6;

/// A moment below this share of the greatest that it could be is 0.
constexpr double kNoMoment = 1e-8;

/// The second direction counts by this much, no likely ratio of two distances in a drawing.
constexpr double kGoldenRatio = 0.6180339887498949;

DrawingPoint MiddleOf(Stretch const &s) {
    return s.IsFullTurn() ? s.center : PointAt(s, 0.5);
}

/// Calls `look(point, weight)` for what stands for the curves, their middles and their ends, by their lengths: a curve
/// that rounding may or may not leave without length counts for nothing.
template <typename Look>
void ForEachSample(std::vector<Stretch> const &stretches, Look look) {
    for (Stretch const &s : stretches) {
        double const length = LengthOf(s);
        look(MiddleOf(s), 2.0 * length);
        if (s.IsFullTurn())
            continue;
        look(s.start, length);
        look(s.end, length);
    }
}

/// Sums of the directions from a middle, once, twice, ... turned, by weight times distance and times its square: as the
/// drawing turns by an angle, each turns by so many times that.
class Moments {
public:
    Moments(DrawingPoint middle, double size) : m_middle(middle), m_scale(1.0 / size) {}

    /// Sums up the samples of the stretches, whose weights are divided by `weights`.
    void Sum(std::vector<Stretch> const &stretches, double weights, base::Workers const &workers) {
        // Each sum in the order of the stretches, some of them at a time.
        if (workers.PartsOf(stretches.size()) == 1)
            SumOrders<0, kHighestOrder>(stretches, weights);
        else
            workers.Do(3, [&](std::size_t task) {
                task == 0   ? SumOrders<0, 2>(stretches, weights)
                : task == 1 ? SumOrders<2, 4>(stretches, weights)
                            : SumOrders<4, 6>(stretches, weights);
            });
    }

    /// The direction of the first axis, and of the second one beside it.
    std::array<Complex, 2> Axes() const {
        Frame best;
        for (int order = 1; order <= kHighestOrder; ++order)
            for (Complex const m : m_sums[Index(order - 1)]) {
                if (IsNothing(Hypot(m.real(), m.imag())))
                    continue;
                for (int turn = 0; turn < order; ++turn)
                    for (bool const isMirrored : {false, true}) {
                        double const angle = (Atan2(m.imag(), m.real()) + kTwoPi * turn) / order;
                        Frame const frame{Complex(Cos(angle), Sin(angle)), isMirrored};
                        if ((turn == 0 && !isMirrored) || IsBetter(frame, best))
                            best = frame;
                    }
                return {best.axis, best.axis * Complex(0.0, best.isMirrored ? -1.0 : 1.0)};
            }
        return {Complex(1.0, 0.0), Complex(0.0, 1.0)};
    }

private:
    using Pair = std::array<Complex, 2>;

    struct Frame {
        Complex axis;
        bool isMirrored = false;
    };

    template <std::size_t kFirst, std::size_t kEnd>
    void SumOrders(std::vector<Stretch> const &stretches, double weights) {
        std::array<Pair, kEnd> sums{};
        double greatest = 0.0;
        ForEachSample(stretches, [&](DrawingPoint p, double sampleWeight) {
            double const weight = sampleWeight / weights;
            Complex const z((p.x - m_middle.x) * m_scale, (p.y - m_middle.y) * m_scale);
            double const r = std::sqrt(std::norm(z));
            if (!(r > 0.0))
                return;
            Complex const u = z / r;
            Complex power = weight * z;
            for (std::size_t order = 0; order < kEnd; ++order) {
                if (order >= kFirst) {
                    sums[order][0] += power;
                    sums[order][1] += r * power;
                }
                power = Multiply(power, u);
            }
            greatest += weight * r * (1.0 + r);
        });
        std::copy(sums.begin() + kFirst, sums.end(), m_sums.begin() + kFirst);
        if (kFirst == 0)
            m_greatest = greatest;
    }

    static Complex Multiply(Complex a, Complex b) {
        return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
    }

    bool IsNothing(double m) const { return !(m > kNoMoment * m_greatest); }

    /// Whether the moments, as seen in the frame, lie farther along its axes than in the other one.
    bool IsBetter(Frame const &a, Frame const &b) const {
        Complex turnA(1.0, 0.0), turnB = turnA;
        for (Pair const &of : m_sums) {
            turnA *= std::conj(a.axis);
            turnB *= std::conj(b.axis);
            for (Complex const m : of) {
                Complex const inA = m * turnA, inB = m * turnB;
                double const first = inA.real() - inB.real();
                double const second =
                    (a.isMirrored ? -1.0 : 1.0) * inA.imag() - (b.isMirrored ? -1.0 : 1.0) * inB.imag();
                for (double const difference : {first, second})
                    if (!IsNothing(std::fabs(difference)))
                        return difference > 0.0;
            }
        }
        return false;
    }

    DrawingPoint m_middle;
    double m_scale;
    std::array<Pair, kHighestOrder> m_sums{};
    double m_greatest = 0.0;
};

} // namespace

Landmarks LandmarksOf(std::vector<Stretch> const &stretches, base::Workers const &workers) {
    Landmarks landmarks;
    double weights = 0.0, lengths = 0.0;
    ForEachSample(stretches, [&](DrawingPoint p, double weight) {
        landmarks.middle = landmarks.middle + p * weight;
        weights += weight;
    });
    if (!(weights > 0.0))
        return {};
    landmarks.middle = landmarks.middle * (1.0 / weights);
    for (Stretch const &s : stretches) {
        double const length = LengthOf(s);
        lengths += length;
        landmarks.size += length * (length + Distance(MiddleOf(s), landmarks.middle));
    }
    landmarks.size /= lengths;
    if (!std::isfinite(landmarks.size))
        return {};
    Moments moments(landmarks.middle, landmarks.size);
    moments.Sum(stretches, weights, workers);
    auto const [first, second] = moments.Axes();
    Complex const direction = first + kGoldenRatio * second;
    landmarks.direction = {direction.real(), direction.imag()};
    return landmarks;
}

} // namespace zvi::lib::drawing
