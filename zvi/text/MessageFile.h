#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"

#include <array>
#include <cstddef>
#include <istream>
#include <memory>

namespace zvi::lib {

/// A catalogue file or a font file, read line by line: UTF-16 units, the lower byte first, behind a mark of two bytes
/// that is not looked at.
class ZVI_API MessageFile {
public:
    /// The longest line in units, its end not counted. A longer one ends the reading of its file.
    static constexpr int kLongestLine = 1023;

    /// How the reading has ended.
    enum class End {
        kNotYet,     ///< there may be another line
        kWhole,      ///< at the end of the file
        kLongLine,   ///< at a line over the longest: what the file holds from its first unit on was not read
        kCutUnit,    ///< in the middle of a unit, which the file's size of an odd number of bytes leaves
        kUnreadable, ///< the file could not be opened, or not read any further
    };

    /// Opens a file by its path.
    explicit MessageFile(wchar_t const *path);
    /// Reads what is left of a stream of units.
    explicit MessageFile(std::unique_ptr<std::wistream> units);
    /// Closes the file.
    ~MessageFile();
    MessageFile(MessageFile const &) = delete;
    MessageFile &operator=(MessageFile const &) = delete;

    /// Whether the file could be opened.
    bool IsOpen() const;

    /// The next line without its LF; false, with `line` as it was, when there is none or it is too long. A CR in front
    /// of the LF stays. A last line needs no end.
    bool GetLine(CString &line);

    /// Number of the line that was read last, from 1; of the one that is too long, when that has ended the reading.
    std::size_t LineNumber() const { return m_lineNumber; }
    /// How the reading has ended.
    End HowEnded() const { return m_end; }

private:
    bool EndReading(End end);

    std::unique_ptr<std::wistream> m_units;
    std::array<wchar_t, kLongestLine + 1> m_line{};
    std::size_t m_lineNumber = 0;
    End m_end = End::kNotYet;
};

} // namespace zvi::lib
