#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace zvi::app {

/// Input that cannot be read or used. The text says what is wrong and what to try; the file's name is added where
/// the failure is reported.
class InputError : public std::runtime_error {
public:
    /// `atLine` counts from 1; 0 says that no single line is at fault.
    InputError(std::size_t atLine, std::string const &what) : std::runtime_error(what), m_line(atLine) {}
    std::size_t Line() const { return m_line; }

private:
    std::size_t m_line;
};

/// Options or arguments that make no sense. The text says which, and what to try.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace zvi::app
