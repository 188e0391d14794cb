#include "tests/FailingMemory.h"

#include <cerrno>
#include <cstddef>
#include <cstdlib>

#if defined(__SANITIZE_ADDRESS__)
#define ZVI_TEST_SANITIZED 1
#include <dlfcn.h>
#endif

// Where the C library lets a program put its own allocator in front, every allocation of the process passes here.
#if defined(__GLIBC__) && !defined(__clang__) && !defined(__SANITIZE_THREAD__)
#define ZVI_TEST_FRONTS_MALLOC 1
#endif

namespace zvi::lib::test {

namespace {

/// Allocations until the shortage; below 0 there is none.
thread_local long allocationsLeft = -1;
thread_local Shortage currentShortage = Shortage::kOnce;
thread_local bool hasFailed = false;
thread_local long liveBlocks = 0;

/// Whether the allocation that is asked for now is to fail.
[[maybe_unused]] bool IsShort() {
    if (allocationsLeft < 0)
        return false;
    if (allocationsLeft > 0) {
        --allocationsLeft;
        return false;
    }
    hasFailed = true;
    if (currentShortage == Shortage::kOnce)
        allocationsLeft = -1;
    return true;
}

[[maybe_unused]] void *Refused() {
    errno = ENOMEM;
    return nullptr;
}

[[maybe_unused]] void *Counted(void *block) {
    liveBlocks += block ? 1 : 0;
    return block;
}

} // namespace

bool FailingMemory::IsPossible() {
#if defined(ZVI_TEST_FRONTS_MALLOC)
    return true;
#else
    return false;
#endif
}

long FailingMemory::LiveBlocks() {
#if defined(ZVI_TEST_SANITIZED)
    return 0;
#else
    return liveBlocks;
#endif
}

FailingMemory::FailingMemory(long index, Shortage shortage) {
    hasFailed = false;
    currentShortage = shortage;
    allocationsLeft = index;
}

FailingMemory::~FailingMemory() {
    allocationsLeft = -1;
}

bool FailingMemory::HasFailed() const {
    return hasFailed;
}

} // namespace zvi::lib::test

#if defined(ZVI_TEST_FRONTS_MALLOC)

using zvi::lib::test::Counted;
using zvi::lib::test::IsShort;
using zvi::lib::test::Refused;

#if defined(ZVI_TEST_SANITIZED)
#define ZVI_TEST_BEHIND(name) __interceptor_##name
#else
#define ZVI_TEST_BEHIND(name) __libc_##name
#endif

extern "C" {

void *ZVI_TEST_BEHIND(malloc)(std::size_t) noexcept;
void *ZVI_TEST_BEHIND(calloc)(std::size_t, std::size_t) noexcept;
void *ZVI_TEST_BEHIND(realloc)(void *, std::size_t) noexcept;
void *ZVI_TEST_BEHIND(memalign)(std::size_t, std::size_t) noexcept;

void *malloc(std::size_t size) noexcept {
    return IsShort() ? Refused() : Counted(ZVI_TEST_BEHIND(malloc)(size));
}

void *calloc(std::size_t count, std::size_t size) noexcept {
    return IsShort() ? Refused() : Counted(ZVI_TEST_BEHIND(calloc)(count, size));
}

void *realloc(void *block, std::size_t size) noexcept {
    if (IsShort())
        return Refused();
    void *const moved = ZVI_TEST_BEHIND(realloc)(block, size);
    return block ? moved : Counted(moved);
}

void *aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return IsShort() ? Refused() : Counted(ZVI_TEST_BEHIND(memalign)(alignment, size));
}

#if !defined(ZVI_TEST_SANITIZED)

void __libc_free(void *) noexcept;

void free(void *block) noexcept {
    zvi::lib::test::liveBlocks -= block ? 1 : 0;
    __libc_free(block);
}

#endif

} // extern "C"

#if defined(ZVI_TEST_SANITIZED)

// A sanitizer has an operator new of its own beside malloc; its delete is left to it, so that it goes on comparing
// them.

namespace {

template <typename... Arguments>
using Operator = void *(*)(Arguments...);

/// The sanitizer's operator of that name.
template <typename... Arguments>
Operator<Arguments...> Behind(char const *name) {
    return reinterpret_cast<Operator<Arguments...>>(::dlsym(RTLD_NEXT, name));
}

void *New(std::size_t size) {
    static auto const behind = Behind<std::size_t>("_Znwm");
    return IsShort() ? nullptr : behind(size);
}

void *NewArray(std::size_t size) {
    static auto const behind = Behind<std::size_t>("_Znam");
    return IsShort() ? nullptr : behind(size);
}

void *NewAligned(std::size_t size, std::align_val_t alignment) {
    static auto const behind = Behind<std::size_t, std::align_val_t>("_ZnwmSt11align_val_t");
    return IsShort() ? nullptr : behind(size, alignment);
}

void *OrRaise(void *block) {
    return block ? block : throw std::bad_alloc();
}

} // namespace

void *operator new(std::size_t size) {
    return OrRaise(New(size));
}

void *operator new(std::size_t size, std::nothrow_t const &) noexcept {
    return New(size);
}

void *operator new[](std::size_t size) {
    return OrRaise(NewArray(size));
}

void *operator new(std::size_t size, std::align_val_t alignment) {
    return OrRaise(NewAligned(size, alignment));
}

void *operator new(std::size_t size, std::align_val_t alignment, std::nothrow_t const &) noexcept {
    return NewAligned(size, alignment);
}

#endif

#endif
