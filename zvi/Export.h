#pragma once

/// ZVI_API marks what other programs may call. Symbols of the shared library are hidden unless they carry it; a static
/// library, which says ZVI_STATIC to whoever uses it, has nothing to mark.
#if defined(ZVI_STATIC)
/// Marks nothing: whoever links a static library may call all of it.
#define ZVI_API
#elif defined(_WIN32)
#if defined(ZVI_BUILDING_LIBRARY)
/// Marks what other programs may call, while the library itself is built.
#define ZVI_API __declspec(dllexport)
#else
/// Marks what a program calls in the library.
#define ZVI_API __declspec(dllimport)
#endif
#else
/// Marks what other programs may call.
#define ZVI_API __attribute__((visibility("default")))
#endif
