// What registers itself when the library is loaded is there, in a static library as in a shared one.

#include "zvi/zvi.h"

#include <cstdio>

namespace {

int failures = 0;

void Check(bool isRight, char const *what) {
    if (!isRight)
        std::printf("%s\n", what);
    failures += isRight ? 0 : 1;
}

struct LineCount : zvi::lib::MProfilePrinterAdaptor {
    void PrintLine(wchar_t const *, ...) override { ++lines; }
    int lines = 0;
};

} // namespace

int main() {
    using namespace zvi::lib;
    { MProfiler const profiler(L"at_load.cpp", 1, L"scope"); }
    LineCount printer;
    MProfileMgr::PrintST(&printer);
    Check(printer.lines == 2, "profiling is not on, though the user's test value says so");
    MProfileMgr::StopProfilingST();

    Check(MOptionDB::Instance()->GetOptData(OptionGenTol::kCategory), "the general tolerances are no options");
    Check(MOptionDB::Instance()->GetOptData(OptionAnalCtrl::kCategory),
          "the control values of an analysis are no options");
    Check(MTolerance::GetRegardAsZero() == 1e-10, "the tolerances have no defaults");
    Check(_globalUIUpdateMessage != 0, "the message of a change of units has no number");
    return failures;
}
