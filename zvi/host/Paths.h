#pragma once

#include "zvi/Export.h"

#include <filesystem>
#include <string>
#include <string_view>

// Paths. Inside the library a path is wide text in UTF-16 units, its items are parted by backslashes, and it may begin
// with a drive: "C:\plans\floor.dxf". The host's own form is that of std::filesystem::path, and only this room and
// whoever opens a file himself sees it.

namespace zvi::host {

/// A path of the library in the host's own form, for the last moment before it is used.
/// POSIX: '\' becomes '/', a drive becomes the root that the application has set for it.
/// Windows: stays as it is, but for a drive with a root of its own.
/// Empty, so that nothing can be opened by it, when the drive has no root on a host without drives, and when the path
/// holds a zero.
ZVI_API std::filesystem::path NativePath(std::wstring_view path);

/// The host's own form in that of the library; a program passes every path that it gets through it. `NativePath` gives
/// the same file again, whatever bytes its name holds: on POSIX a byte that is not UTF-8, and a '\' in a name, becomes
/// the lone surrogate 0xDC00 + byte, and "C:x" becomes ".\C:x".
ZVI_API std::wstring LibraryPath(std::filesystem::path const &native);

/// From now on a drive (a letter, either case) means that folder; an empty one takes the drive away. The folder is in
/// the host's own form and is best absolute. Holds on Windows too, before the drive that the machine has. May be called
/// from any thread.
ZVI_API void SetDriveRoot(wchar_t drive, std::filesystem::path const &folder);

/// The running program's file. Empty when the host does not tell.
ZVI_API std::wstring ModulePath();

/// The folder in which the user keeps his documents, without a backslash at its end; it is made when it is absent.
/// POSIX: `XDG_DOCUMENTS_DIR` of the user's user-dirs file, else "Documents" in his home folder.
/// Empty when there is none and none can be made.
ZVI_API std::wstring DocumentsFolder();

/// The same without making it: where it is or would be.
ZVI_API std::wstring DocumentsFolderName();

/// The folder from which relative paths go out. Empty when the host does not tell.
ZVI_API std::wstring CurrentFolder();

/// Changes that folder, for the whole process. Says whether it did.
ZVI_API bool SetCurrentFolder(std::wstring_view path);

/// Whether two names in one folder are the same: case counts on POSIX, and does not on Windows.
ZVI_API bool IsSameName(std::wstring_view left, std::wstring_view right);

} // namespace zvi::host
