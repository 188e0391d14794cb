#pragma once

// The host's header, without what it holds of the past and without its `min` and `max`.
#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
