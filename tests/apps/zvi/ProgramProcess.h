#pragma once

#include "apps/zvi/common/FileAccess.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#ifdef _WIN32
#include "zvi/core/Utf8.h"
#else
#include <sys/wait.h>
#endif

namespace zvi::app::test {

/// A command that runs the program as a process of its own, through the host's shell. Arguments are UTF-8 and hold no
/// quotes. Files of a run lie in the folder.
class ProgramProcess {
public:
    ProgramProcess(std::filesystem::path const &folder, std::vector<std::string> const &arguments)
        : m_folder(folder), m_command(Quoted(NameOf(std::filesystem::path(ZVI_PROGRAM).make_preferred()))) {
        for (std::string const &argument : arguments)
            m_command.append(" ").append(Quoted(argument));
    }

    /// Runs to the end and gives the exit status; -1 when the process died of anything else.
    int Run(std::string const &input = "") {
        std::ofstream(m_folder / "in", std::ios::binary) << input;
        return StatusOf(System(m_command + " <" + Name("in") + " >" + Name("out") + " 2>" + Name("err")));
    }

    /// The same with nobody who reads the standard output.
    int RunWithoutReader() {
        std::FILE *const pipe = OpenPipe(m_command + " 2>" + Name("err"));
        return StatusOf(pipe ? ClosePipe(pipe) : -1);
    }

    std::string Out() const { return Content("out"); }
    std::string Err() const { return Content("err"); }

private:
    static std::string Quoted(std::string const &word) { return std::string(1, kQuote).append(word) += kQuote; }

#ifdef _WIN32
    static constexpr char kQuote = '"';
    /// The shell takes the outermost quotes away.
    static CString Wide(std::string const &command) {
        return lib::WideOf(Quoted(command));
    }
    static int System(std::string const &command) {
        return _wsystem(Wide(command).GetString());
    }
    static std::FILE *OpenPipe(std::string const &command) {
        return _wpopen(Wide(command).GetString(), L"rb");
    }
    static int ClosePipe(std::FILE *pipe) {
        return _pclose(pipe);
    }
    static int StatusOf(int result) {
        return result;
    }
#else
    static constexpr char kQuote = '\'';
    static int System(std::string const &command) {
        return std::system(command.c_str());
    }
    static std::FILE *OpenPipe(std::string const &command) {
        return popen(command.c_str(), "r");
    }
    static int ClosePipe(std::FILE *pipe) {
        return pclose(pipe);
    }
    static int StatusOf(int result) {
        return WIFEXITED(result) ? WEXITSTATUS(result) : -1;
    }
#endif

    std::string Name(char const *file) const {
        return Quoted(NameOf(m_folder / file));
    }

    std::string Content(char const *file) const {
        std::ifstream stream(m_folder / file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::filesystem::path m_folder;
    std::string m_command;
};

} // namespace zvi::app::test
