#include "zvi/host/CommandLine.h"

#include "zvi/host/windows/WindowsHeader.h"

#include <shellapi.h>

namespace zvi::host {

namespace {

/// Backslashes count double in front of a quote, and at the end, where the closing quote follows.
std::wstring InQuotes(std::wstring const &word) {
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (wchar_t const character : word) {
        if (character == L'"')
            quoted.append(backslashes + 1, L'\\');
        backslashes = character == L'\\' ? backslashes + 1 : 0;
        quoted += character;
    }
    quoted.append(backslashes, L'\\');
    return quoted + L'"';
}

} // namespace

std::wstring QuotedArgument(NativeWord const &word) {
    bool const isPlain = !word.empty() && word.find_first_of(L" \t\n\v\"") == word.npos;
    return isPlain ? word : InQuotes(word);
}

std::vector<NativeWord> ArgumentWords(std::wstring_view arguments) {
    // A program stands in front, because other rules hold for the first word.
    std::wstring const line = L"program " + std::wstring(arguments);
    int count = 0;
    wchar_t **const words = ::CommandLineToArgvW(line.c_str(), &count);
    std::vector<NativeWord> result;
    if (words)
        result.assign(words + 1, words + count);
    ::LocalFree(words);
    return result;
}

} // namespace zvi::host
