#pragma once

#include "zvi/Export.h"
#include "zvi/core/CArray.h"
#include "zvi/core/CString.h"

#include <map>
#include <set>

namespace zvi::lib {

class MessageFile;

/// A catalogue of the texts that the user sees, read from UTF-16 files (see MessageLine.h), and the font that goes with
/// their language. Used through `MMSGFunction` alone.
class ZVI_API MMSGParser {
public:
    /// No texts, and the default font.
    MMSGParser();
    /// Copies the texts and the font.
    MMSGParser(MMSGParser const &other);
    MMSGParser &operator=(MMSGParser const &other);
    /// Virtual: a class of an application may derive from it.
    virtual ~MMSGParser();

protected:
    friend class MMSGFunction;

    /// Forgets texts, files and what was loaded; the font and its file stay.
    void Clear();

    /// Appends a file to the list unless it is there already, by the letter.
    void AddPath(wchar_t const *path);

    /// Reads the font file and every file of the list, or with 0 those that were not read yet. A file that cannot be
    /// opened, or has no mark of a Unicode file, ends the load with false; what was read before stays. With 0 and
    /// nothing new it is true at once.
    bool Load(int all);

    /// Reads the font file; false when it cannot be opened or has no mark of a Unicode file.
    bool LoadFont();

    /// The text of a key, or the key with the words that it is not registered.
    CString GetValue(wchar_t const *key) const;

    /// The next line of a file, of 1,023 units at most; see MessageFile.
    static bool GetLine(MessageFile &file, CString &line);

private:
    bool LoadFile(CString const &path);
    void TakeFontLine(CString const &line);

    std::map<CString, CString> m_entries;
    CArray<CString> m_paths;
    std::set<CString> m_loaded;
    CString m_fontPath;
    CString m_font;
    int m_fontSize;
};

} // namespace zvi::lib
