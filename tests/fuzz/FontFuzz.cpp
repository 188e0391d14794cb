// Font files of any bytes.

#include "tests/fuzz/FuzzFile.h"
#include "zvi/text/MMSGFunction.h"
#include "zvi/text/MessageFile.h"

using namespace zvi;
using namespace zvi::lib;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    MMSGFunction::SetFontPath(fuzz::FileWith(data, size).c_str());
    MMSGFunction::LoadFile();
    CString const font = MMSGFunction::GetFont();
    fuzz::Check(font.GetLength() < MessageFile::kLongestLine && font.Find(L'\n') < 0);
    return 0;
}
