#include "apps/zvi/common/Console.h"

#include "apps/zvi/common/ExitStatus.h"
#include "apps/zvi/common/StandardStreams.h"
#include "apps/zvi/common/Terminal.h"

namespace zvi::app {

void TellFailure(Console &console, std::string const &where, std::size_t line, std::string const &what) {
    console.err << "zvi: ";
    if (!where.empty())
        console.err << where << ":";
    if (line != 0)
        console.err << line << ":";
    console.err << (where.empty() && line == 0 ? "" : " ") << what << std::endl;
}

int WriteResult(Console &console, std::string const &text) {
    console.out.write(text.data(), static_cast<std::streamsize>(text.size()));
    console.out.flush();
    return console.out.good() ? int(kExitDone) : TellWriteFailure(console);
}

int TellWriteFailure(Console &console) {
    auto const *const output = dynamic_cast<GatheredOutput const *>(console.out.rdbuf());
    std::error_code const failure = output ? output->Failure() : std::make_error_code(std::errc::io_error);
    if (failure == std::errc::broken_pipe)
        return kExitDone;
    TellFailure(console, "standard output", 0,
                "cannot be written (" + ReasonOf(failure) + "); check that there is room and try again");
    return kExitBadInput;
}

void TellWaiting(Console &console, std::string const &what, std::string const &verb) {
    if (console.inIsTerminal)
        console.err << "zvi: reading " << what << " from the terminal; " << EndOfInputKeys() << " ends it, 'zvi "
                    << verb << " -h' helps" << std::endl;
}

void Progress::Step(std::string const &what) {
    if (m_shown)
        m_console.err << "\r\x1B[K" << what << " ..." << std::flush;
}

void Progress::Clear() {
    if (m_shown)
        m_console.err << "\r\x1B[K" << std::flush;
}

} // namespace zvi::app
