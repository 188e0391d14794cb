#include "zvi/curves/MDomainMaker.h"

#include <cstdio>

int main() {
    using namespace zvi::lib;
    MDomainMaker maker; // for curves that meet in their ends; a drawing goes to MakeDrawingDomains
    maker.AddCurv(1, {0, 0}, {4, 0.5});
    maker.AddCurv(2, {4, 0.5}, {3.5, 4});
    maker.AddCurv(3, {3.5, 4}, {0, 0});
    maker.AddCurv(4, {3.5, 4}, {-0.5, 3});
    maker.AddCurv(5, {-0.5, 3}, {0, 0});
    maker.MakeDomain();
    for (DM_SURF const &domain : maker.GetResultSurf()) {
        for (int const curve : domain.Curv)
            std::printf("curve %d, ", curve);
        std::printf("%d holes\n", int(domain.Holes.Size())); // curve 1, curve 2, curve 3, 0 holes
                                                             // curve 4, curve 5, curve 3, 0 holes
    }
}
