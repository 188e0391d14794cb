#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"
#include "zvi/core/MArray.h"
#include "zvi/host/CDC.h"
#include "zvi/host/CFileStatus.h"
#include "zvi/host/tagRECT.h"
#include "zvi/text/TextEncoding.h"

#include <cstdint>
#include <functional>

namespace zvi::lib {

/// A file path in its parts, and helpers for files. Paths are in the library's form, with backslashes
/// (zvi/host/Paths.h). The backslash alone parts a path; a slash is a character like any other, which the host turns
/// native with the rest. A null text counts as an empty one. The `int` operations answer 1 when it is so or was done,
/// else 0.
class ZVI_API MFileCtrl {
public:
    /// Three empty parts.
    MFileCtrl();
    /// As `SetFilePathNameExt`.
    explicit MFileCtrl(wchar_t const *path);
    MFileCtrl(MFileCtrl const &) = default;
    MFileCtrl &operator=(MFileCtrl const &) = default;
    /// There is nothing to free.
    virtual ~MFileCtrl();

    /// Takes a path apart: the folder up to and with its last backslash, the name up to the last dot behind that, the
    /// extension behind the dot. ".profile" has an empty name and the extension "profile".
    void SetFilePathNameExt(wchar_t const *path);
    /// The folder, with its backslash.
    CString GetFilePath() const;
    /// All parts; the dot only with an extension.
    CString GetFilePathNameExt() const;
    /// Folder and name.
    CString GetFilePathName() const;
    /// Name and extension; the dot only with one.
    CString GetFileNameExt() const;
    /// The extension without a dot.
    CString GetFileExt() const;
    /// The path for a display of at most `maxLength` units: its middle folders become "...", from the front on, as in
    /// "C:\...\plans\floor.dxf"; where that does not suffice, the name and extension alone, however long.
    CString GetAbbPathNameExt(int maxLength) const;
    /// The same for the width of a rectangle on a surface, which measures the text; neither is null.
    CString GetAbbPathNameExt(CDC *surface, tagRECT *rectangle) const;

    /// Whether the path leads to a file or folder.
    int FileExists() const;
    /// What the host knows of it; `status` stays when there is nothing.
    int GetFileStatus(CFileStatus &status) const;

    /// 1 when there is a file or folder at the path, else 0.
    static int FileExists(wchar_t const *path);
    /// Copies the bytes of a file. The target is made or overwritten; a copy that fails part-way leaves a part behind.
    /// A file is not copied onto itself.
    static int CopyFileW(wchar_t const *from, wchar_t const *to);
    /// The way from the folder of the file `base` to `path`, such as "..\data\a.txt" or ".\a.txt". 0, and `result`
    /// stays, when there is none, as between two drives.
    static int GetAbsoluteToRelativePath(CString base, CString path, CString &result);
    /// `path` itself unless it is relative; else what it means seen from the folder of the file `base`. Every "..\" or
    /// "../" of `path` goes up a folder, and what stands in front of it is left out.
    static int GetRelativeToAbsolutePath(CString base, CString path, CString &result);
    /// Makes a folder unless it is there; one level, and 1 in every case.
    static int MakeDirectory(wchar_t const *path);
    /// Whether the name holds none of / * \ ? " < > |. The colon is allowed, deliberately.
    static int ValidateFileName(wchar_t const *name);
    /// The name with a blank for each of those.
    static CString GetValidFileName(wchar_t const *name);
    /// Removes a folder with all that is in it. A link in it is removed and never followed; what cannot be removed
    /// stays.
    static void RemoveDirectoryRecursive(wchar_t const *path);
    /// Whether there is such a file, and it is read-only.
    static int IsReadOnlyFile(wchar_t const *path);
    /// Appends the names of the folders in a folder, in order; 0 when there is no such folder. A doubled backslash of
    /// the path counts as one.
    static int FindFolder(CString const &path, MArray<CString> &result);
    /// What stands behind the last backslash; one at the very end does not count.
    static CString GetLastPathItem(CString const &path);
    /// Lines of a file of bytes, the last one also without a line end. 0 when it cannot be read.
    static std::uint64_t GetNumberOfFileLines(wchar_t const *path);
    /// Makes a link to a file or folder, or to an address on the net ("https://..."), which becomes a text file. The
    /// suffix ".lnk", or ".url" for an address, is added where `link` has it not. A link to a file is a shell link on
    /// Windows; on POSIX it is a symbolic link, which has no arguments, working folder or description.
    static int CreateShortcut(CString const &link, CString const &target, CString const &arguments = CString(),
                              CString const &workingFolder = CString(), CString const &description = CString());
    /// Whether the file begins with a mark of Unicode.
    static int IsUnicodeFile(wchar_t const *path);
    /// The encoding that the mark at the start of the file tells. 0, and none, when the file cannot be opened.
    static int GetTextFileEncodingInfo(wchar_t const *path, TEXT_ENCODING &type);

private:
    CString Shortened(std::function<bool(CString const &)> const &fits) const;

    CString m_folder; ///< with its backslash
    CString m_name;
    CString m_extension; ///< without a dot
};

} // namespace zvi::lib
