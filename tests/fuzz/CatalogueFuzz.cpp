// Message catalogues of any bytes: the catalogue holds the first text of each key that the lines define.

#include "tests/fuzz/FuzzFile.h"
#include "zvi/text/MMSGFunction.h"
#include "zvi/text/MessageFile.h"
#include "zvi/text/MessageLine.h"
#include "zvi/text/TextEncoding.h"

#include <map>

using namespace zvi;
using namespace zvi::lib;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    std::wstring const path = fuzz::FileWith(data, size);
    MMSGFunction::Reset();
    MMSGFunction::AddFile(path.c_str());
    fuzz::Check(MMSGFunction::LoadFile() == (HasUnicodeMark(path.c_str()) != 0));
    if (!HasUnicodeMark(path.c_str()))
        return 0;
    std::map<CString, CString> expected;
    MessageFile file(path.c_str());
    MessageEntry entry;
    for (CString line; file.GetLine(line);) {
        fuzz::Check(line.GetLength() <= MessageFile::kLongestLine && line.Find(L'\n') < 0);
        if (ParseMessageLine(line, entry))
            expected.emplace(entry.key, entry.text);
    }
    fuzz::Check(file.HowEnded() != MessageFile::End::kNotYet);
    // A key with a zero in it cannot be asked for.
    for (auto const &[key, text] : expected)
        fuzz::Check(CString(key.GetString()) != key || MMSGFunction::GetValue(key) == text);
    return 0;
}
