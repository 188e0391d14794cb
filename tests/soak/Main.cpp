// The tests of child programs under a heavy load, with time and memory of each. Takes minutes, so it is no part of the
// tests: `cmake --build --preset release --target zvi_soak && build/release/tests/zvi_soak`.

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>

namespace {

/// Most memory that this process has had so far, in MB; 0 where the host does not tell.
double PeakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (double kilobytes = 0; word == "VmHWM:" && status >> kilobytes)
            return kilobytes / 1024;
    return 0;
}

struct Figures : testing::EmptyTestEventListener {
    void OnTestStart(testing::TestInfo const &) override { before = PeakMemory(); }
    void OnTestEnd(testing::TestInfo const &test) override {
        double const seconds = static_cast<double>(test.result()->elapsed_time()) / 1000;
        std::printf("%-50s %7.2f s, peak %6.0f MB, %+.0f\n", test.name(), seconds, PeakMemory(), PeakMemory() - before);
    }
    double before = 0;
};

} // namespace

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new Figures);
    return RUN_ALL_TESTS();
}
