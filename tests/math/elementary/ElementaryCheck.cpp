// Compares the elementary functions with MPFR, also for COUNT drawn arguments: zvi_elementary_check [COUNT [SEED
// [NAME]]].

#include "tests/math/elementary/Elementaries.h"
#include "tests/math/elementary/Mpfr.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

using namespace zvi::lib::test;

int main(int argc, char **argv) {
    std::uint64_t const count = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 10'000'000;
    std::uint64_t const seed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1;
    bool isRight = true;
    for (Elementary const &of : Elementaries()) {
        if (argc > 3 && std::string_view(argv[3]) != of.name)
            continue;
        std::uint64_t wrong = 0;
        VisitArguments(of, seed, count, [&](Arguments const &x) {
            double const ours = of.ours(x), right = ByMpfr(of.name, x);
            if (!IsSame(ours, right) && ++wrong <= 10)
                std::printf("%s(%a, %a, %a) is %a, should be %a\n", of.name, x[0], x[1], x[2], ours, right);
        });
        std::printf("%-6s %llu of %llu wrong\n", of.name, static_cast<unsigned long long>(wrong),
                    static_cast<unsigned long long>(count));
        std::fflush(stdout);
        isRight = isRight && wrong == 0;
    }
    return isRight ? EXIT_SUCCESS : EXIT_FAILURE;
}
