#pragma once

#include "zvi/Export.h"

#include <string_view>
#include <system_error>

namespace zvi::host {

/// Gives a file this content, and makes it when it is absent. Who reads it, also after the process was ended in the
/// middle, finds the old content or the new one, never a part: it is written to a new file beside, which is brought to
/// the disk and renamed over it.
///
/// - Links are followed; the permissions stay, and so does the owner where the process may give files away.
/// - The file's own permission decides: what the process may not write is refused, also where it could be renamed over.
/// - Where nothing can be made beside the file, or not be renamed over it, the file is written in place. It then keeps
///   its old content unless the disk has room for the new one.
/// - A device or a pipe is written as it is.
/// - What an ended process left beside is removed by the next writer.
///
/// No error when it is done; else the file is as it was, as far as it was not written in place.
ZVI_API std::error_code ReplaceContent(std::wstring_view path, std::string_view content);

} // namespace zvi::host
