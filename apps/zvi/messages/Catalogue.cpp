#include "apps/zvi/messages/Catalogue.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/ReadWhole.h"
#include "apps/zvi/common/WideText.h"
#include "zvi/text/MessageFile.h"
#include "zvi/text/MessageLine.h"
#include "zvi/text/TextEncoding.h"

#include <memory>
#include <sstream>
#include <string_view>
#include <utility>

namespace zvi::app {

namespace {

using lib::MessageEntry;
using lib::MessageFile;

void CheckEncoding(std::string const &file, std::string_view bytes) {
    lib::TEXT_ENCODING const encoding = lib::EncodingOfMark(bytes);
    if (encoding == lib::kEncodingUtf16Little)
        return;
    std::string const what = encoding == lib::kEncodingUtf16Big   ? "UTF-16 with the higher byte first"
                             : encoding == lib::kEncodingUtf8     ? "UTF-8"
                             : encoding == lib::kEncodingUtf32Big ? "UTF-32"
                                                                  : "without a mark";
    throw InputError(0, Joined(file, ": is ", what,
                               "; a catalogue is UTF-16 with a mark, which 'zvi text --to utf-16 --out ", "NEW ", file,
                               "' makes of it"));
}

/// The units behind the mark; half a unit at the end is left out.
std::unique_ptr<std::wistream> UnitsOf(std::string_view bytes) {
    constexpr std::size_t kUnitSize = 2;
    std::wstring units;
    for (std::size_t i = kUnitSize; i + 1 < bytes.size(); i += kUnitSize)
        units += static_cast<wchar_t>(static_cast<unsigned char>(bytes[i]) |
                                      static_cast<unsigned int>(static_cast<unsigned char>(bytes[i + 1])) << 8);
    return std::make_unique<std::wistringstream>(units);
}

bool IsQuoted(CString line) {
    line.Trim();
    return line.GetAt(line.GetLength() - 1) == L'"';
}

/// Puts the lines of one file into a catalogue.
class FileReader {
public:
    FileReader(std::string name, Catalogue &catalogue) : m_name(std::move(name)), m_catalogue(catalogue) {}

    void Read(std::string const &bytes) {
        CheckEncoding(m_name, bytes);
        MessageFile file(UnitsOf(bytes));
        MessageEntry entry;
        for (CString line; file.GetLine(line);)
            if (lib::ParseMessageLine(line, entry))
                Take(line, entry, {m_name, file.LineNumber()});
        MessagePlace const end{m_name, file.LineNumber()};
        if (file.HowEnded() == MessageFile::End::kLongLine)
            Remark(CatalogueRemark::Kind::kLongLine, end);
        else if (bytes.size() % 2 != 0)
            Remark(CatalogueRemark::Kind::kCut, end);
    }

private:
    void Take(CString const &line, MessageEntry const &entry, MessagePlace const &place) {
        if (line.Find(L'=') < 0)
            Remark(CatalogueRemark::Kind::kNoKey, place);
        if (!IsQuoted(line))
            Remark(CatalogueRemark::Kind::kNoLastQuote, place);
        auto const [found, isNew] = m_catalogue.messages.try_emplace(entry.key, Message{entry.text, place});
        if (!isNew)
            m_catalogue.remarks.push_back({CatalogueRemark::Kind::kAgain, place, entry.key, found->second.place});
    }

    void Remark(CatalogueRemark::Kind kind, MessagePlace const &place) {
        m_catalogue.remarks.push_back({kind, place, {}, {}});
    }

    std::string m_name;
    Catalogue &m_catalogue;
};

} // namespace

Catalogue ReadCatalogue(std::vector<std::string> const &files, std::istream &standardInput) {
    Catalogue catalogue;
    for (std::string const &file : files) {
        std::string const name = file == "-" ? "standard input" : file;
        std::string bytes;
        try {
            bytes = ReadWhole(file, standardInput);
        } catch (InputError const &error) {
            throw InputError(error.Line(), Joined(name, ": ", error.what()));
        }
        FileReader(name, catalogue).Read(bytes);
    }
    return catalogue;
}

std::string RemarkText(CatalogueRemark const &remark) {
    switch (remark.kind) {
    case CatalogueRemark::Kind::kAgain:
        return Joined("'", Utf8Of(Printable(View(remark.key))), "' is defined again and passed over; it is defined at ",
                      remark.other.file, ":", std::to_string(remark.other.line));
    case CatalogueRemark::Kind::kLongLine:
        return Joined("a line of more than ", std::to_string(MessageFile::kLongestLine),
                      " characters ends the file here; nothing from it on is read, so shorten it");
    case CatalogueRemark::Kind::kCut:
        return "the file ends in the middle of a character; get it whole";
    case CatalogueRemark::Kind::kNoKey:
        return "there is no '=', so the line belongs to the empty key; write KEY = \"text\"";
    case CatalogueRemark::Kind::kNoLastQuote:
        break;
    }
    return "the line does not end in a double quote; its last character is left out";
}

} // namespace zvi::app
