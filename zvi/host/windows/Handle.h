#pragma once

#include "zvi/host/windows/WindowsHeader.h"

#include <utility>

namespace zvi::host {

/// A handle of the host that is closed with its object.
class Handle {
public:
    explicit Handle(HANDLE handle = nullptr) : m_handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
    Handle(Handle &&other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
    Handle &operator=(Handle &&other) noexcept {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    ~Handle() {
        if (m_handle)
            ::CloseHandle(m_handle);
    }

    HANDLE Get() const { return m_handle; }
    bool IsOpen() const { return m_handle; }

private:
    HANDLE m_handle;
};

} // namespace zvi::host
