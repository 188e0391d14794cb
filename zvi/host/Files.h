#pragma once

#include "zvi/Export.h"
#include "zvi/host/CFileStatus.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

// Files and folders by paths of the library; see Paths.h. What is told by `bool` was done when it is true.

namespace zvi::host {

/// An entry of a folder.
struct FoundFile {
    std::wstring name;       ///< without the folder
    std::uint8_t attributes; ///< bits of `CFileStatus::Attribute`
};

/// What the host knows of the file or folder that the path leads to, links followed; false, with `status` as it was,
/// when there is nothing. On POSIX a file is read-only when no permission lets the process write it, or none anybody,
/// and hidden when its name begins with a dot.
ZVI_API bool GetFileStatus(std::wstring_view path, CFileStatus &status);

/// Whether the path leads to a file or folder.
ZVI_API bool Exists(std::wstring_view path);

/// Whether two paths lead to one file or folder, which is there.
ZVI_API bool IsSameFile(std::wstring_view left, std::wstring_view right);

/// The entries of a folder whose names fit a pattern, sorted by name: "folder\*.txt", with '*' for any characters and
/// '?' for any one. "*.*" fits every name. The entries "." and ".." are left out. Case counts where it does for the
/// host's own names. Empty when there is no such folder.
ZVI_API std::vector<FoundFile> FindFiles(std::wstring_view pattern);

/// Makes one folder; the one that holds it must be there.
ZVI_API bool MakeFolder(std::wstring_view path);

/// Removes a file or a link, never what a link leads to.
ZVI_API bool RemoveFile(std::wstring_view path);

/// Removes an empty folder.
ZVI_API bool RemoveFolder(std::wstring_view path);

/// Removes a folder and all that is in it, or a single file. A link is removed and never followed. What cannot be
/// removed stays, and the rest goes; false then.
ZVI_API bool RemoveTree(std::wstring_view path);

/// Gives a file or folder another path on the same drive. False, with everything as it was, when something is there.
ZVI_API bool RenameFile(std::wstring_view from, std::wstring_view to);

/// What a link to a file or folder holds. On POSIX all but the target is left out.
struct Shortcut {
    std::wstring target;             ///< where it leads
    std::wstring arguments = {};     ///< for a program that it starts
    std::wstring workingFolder = {}; ///< of that program
    std::wstring description = {};   ///< for the user
    std::wstring icon = {};          ///< the file of its picture
};

/// Makes a link, in place of a link that is there; anything else that is there stays, and the answer is false. On
/// Windows it is a shell link, whose name ends in ".lnk"; on POSIX a symbolic link.
ZVI_API bool MakeShortcut(std::wstring_view path, Shortcut const &shortcut);

/// `fopen` by a path of the library, with the modes of C. Child programs do not inherit the stream. Null when the file
/// cannot be opened.
ZVI_API std::FILE *OpenStream(std::wstring_view path, char const *mode);

/// The line end of multi-byte text files of this host: LF on POSIX, CR LF on Windows.
ZVI_API std::string_view LineEnd() noexcept;

} // namespace zvi::host
