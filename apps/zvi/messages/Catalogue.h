#pragma once

#include "zvi/core/CString.h"

#include <cstddef>
#include <istream>
#include <map>
#include <string>
#include <vector>

namespace zvi::app {

/// A line of a catalogue file.
struct MessagePlace {
    std::string file;
    std::size_t line = 0;
};

/// A text of the catalogue and where it is defined.
struct Message {
    CString text;
    MessagePlace place;
};

/// Something in a catalogue file that its author should know.
struct CatalogueRemark {
    enum class Kind {
        kAgain,       ///< a key that is defined before, where `other` tells
        kLongLine,    ///< an over-long line, which ends the file
        kCut,         ///< the file ends in the middle of a character
        kNoKey,       ///< a line without "="
        kNoLastQuote, ///< a line whose last character, which is left out, is no double quote
    };
    Kind kind;
    MessagePlace place;
    CString key;
    MessagePlace other;
};

/// What a program reads from its catalogue files.
struct Catalogue {
    std::map<CString, Message> messages;
    std::vector<CatalogueRemark> remarks; ///< in the order of the files and lines
};

/// Reads files in their order by the grammar of the library; the first definition of a key holds. "-" is standard
/// input. Throws InputError, with the name of the file in its text, for one that cannot be read or is not UTF-16 with
/// its mark and the lower byte first.
Catalogue ReadCatalogue(std::vector<std::string> const &files, std::istream &standardInput);

/// A remark in words, without its place.
std::string RemarkText(CatalogueRemark const &remark);

} // namespace zvi::app
