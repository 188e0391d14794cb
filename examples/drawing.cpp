#include "zvi/drawing/MakeDrawingDomains.h"

#include <cstdio>

int main() {
    using namespace zvi::lib;
    DrawingResult const result = MakeDrawingDomains({
        {.id = 1, .start = {0, 0}, .end = {4, 0}},
        {.id = 2, .start = {4, 0.00005}, .end = {4, 3}}, // misses the corner by a hair
        {.id = 3, .start = {4, 3}, .end = {0, 3}},
        {.id = 4, .start = {0, 3}, .end = {0, 0}},
        {.id = 5, .type = DrawingCurveType::kCircle, .center = {2, 1.5}, .radius = 1},
    });
    for (DrawingDomain const &domain : result.domains)
        std::printf("area %.3f, %zu holes\n", domain.area, domain.holes.size()); // area 8.858, 1 holes
                                                                                 // area 3.142, 0 holes
}
