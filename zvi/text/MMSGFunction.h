#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"

namespace zvi::lib {

/// The one message catalogue of the process, from which every text comes that the user sees. A program sets the font
/// path, adds its files and loads them at its start; where the same key stands twice, the first one holds. Nothing is
/// locked: a load while another thread reads is a fault of the caller.
class ZVI_API MMSGFunction {
public:
    /// The catalogue stays: it is of the process.
    virtual ~MMSGFunction();

    /// Empties the catalogue and the list of files; the font and its path stay.
    static void Reset();

    /// Adds a catalogue file to the list unless it is there already, by the letter. Nothing is read.
    static void AddFile(wchar_t const *path);

    /// Reads the font file and every file of the list; false when one is no Unicode file, which leaves out those behind
    /// it. Texts that are there already stay as they are.
    static bool LoadFile();

    /// The same for the files that were not read yet; true, without a look at the font file, when there are none.
    static bool LoadAddedFile();

    /// The text of a key, by the letter. A key that is not in the catalogue gives itself followed by Korean words that
    /// say so, and stays unknown: a missing translation is seen on the screen and stops nothing.
    static CString GetValue(wchar_t const *key);

    /// The text between an apostrophe at the start and one at the end, or the text as it is; null is an empty text.
    static CString RemoveQuote(wchar_t const *text);

    /// Sets the font file. Nothing is read.
    static void SetFontPath(wchar_t const *path);

    /// Name of the font, "Tahoma" until a font file says FONT=name. With CR LF in the font file it ends in a CR.
    static CString GetFont();

    /// Size of the font, 8 until a font file says SIZE=number.
    static int GetFontSize();
};

} // namespace zvi::lib
