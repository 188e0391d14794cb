#pragma once

// ZVI_API marks what other programs may call. Symbols are hidden unless they carry it.
#if defined(_WIN32)
#if defined(ZVI_BUILDING_LIBRARY)
#define ZVI_API __declspec(dllexport)
#else
#define ZVI_API __declspec(dllimport)
#endif
#else
#define ZVI_API __attribute__((visibility("default")))
#endif
