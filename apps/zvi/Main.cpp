#include "apps/zvi/Program.h"

#ifdef _WIN32

#include "zvi/core/Utf8.h"

int wmain(int argc, wchar_t **argv) {
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i)
        arguments.push_back(zvi::lib::Utf8Of(std::wstring_view(argv[i])));
    return zvi::app::RunProgram(arguments);
}

#else

int main(int argc, char **argv) {
    return zvi::app::RunProgram({argc > 0 ? argv + 1 : argv, argv + argc});
}

#endif
