// A plate with a round hole, drawn carelessly: one corner misses by 0.00005, and a stray line hangs inside.

#include "zvi/drawing/MakeDrawingDomains.h"

#include <cstdio>
#include <vector>

int main() {
    using namespace zvi::lib;
    std::vector<DrawingCurve> const curves = {
        {.id = 1, .start = {0, 0}, .end = {4, 0}},
        {.id = 2, .start = {4, 0.00005}, .end = {4, 3}},
        {.id = 3, .start = {4, 3}, .end = {0, 3}},
        {.id = 4, .start = {0, 3}, .end = {0, 0}},
        {.id = 5, .type = DrawingCurveType::kCircle, .center = {2, 1.5}, .radius = 1},
        {.id = 6, .start = {0, 0}, .end = {0.5, 0.5}},
    };

    DrawingResult const result = MakeDrawingDomains(curves);

    int number = 0;
    for (DrawingDomain const &domain : result.domains) {
        std::printf("domain %d: area %.4f, %zu curves, %zu holes\n", ++number, domain.area, domain.outer.size(),
                    domain.holes.size());
    }
    for (DrawingLeftover const &left : result.leftovers)
        std::printf("curve %u bounds nothing\n", left.piece.curve);
    return 0;
}
