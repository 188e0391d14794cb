#pragma once

#include "zvi/host/CFileException.h"

#include <cstdio>
#include <string_view>

namespace zvi::host {

/// Opens a file by the flags of `CFile` as a binary stream, which child programs do not inherit; null, with the reason
/// in `failure`, when it cannot be opened or is a folder.
std::FILE *OpenByFlags(std::wstring_view path, unsigned int flags, CFileException &failure);

/// Has an open stream read and write bytes as they are from now on, where the host's streams do anything else.
void UseBinaryMode(std::FILE *stream);

/// Hands bytes to the system behind those that the open stream has flushed; 0, or the number that the C library tells.
int WriteThrough(std::FILE *stream, std::string_view bytes);

/// The cause behind a number that the C library has left in `errno`.
CFileException::Cause CauseOf(int error);

} // namespace zvi::host
