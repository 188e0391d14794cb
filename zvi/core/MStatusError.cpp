#include "zvi/core/MStatusError.h"

#include <cstdio>
#include <string>

namespace zvi {

namespace {

std::string DescribeStatus(std::uint32_t status) {
    char text[32];
    std::snprintf(text, sizeof text, "status 0x%08X", static_cast<unsigned int>(status));
    return text;
}

} // namespace

MStatusError::MStatusError(std::uint32_t status) : std::runtime_error(DescribeStatus(status)), m_status(status) {}

MStatusError::~MStatusError() = default;

void RaiseStatus(std::uint32_t status) {
    throw MStatusError(status);
}

} // namespace zvi
