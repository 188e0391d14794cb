#pragma once

#include <cstdio>
#include <memory>
#include <streambuf>
#include <string_view>
#include <vector>

namespace zvi::lib::core {

/// Reads a file in text mode, the same on every host: CR LF becomes LF, whatever wrote the file; every other byte
/// stays.
class TextBuffer : public std::streambuf {
public:
    /// A path of the library.
    explicit TextBuffer(std::wstring_view path);
    ~TextBuffer() override;

    bool IsOpen() const { return static_cast<bool>(m_file); }
    /// Whether reading came to an end before the file did.
    bool HasFailed() const { return m_file && std::ferror(m_file.get()) != 0; }

protected:
    int_type underflow() override;

private:
    struct Close {
        void operator()(std::FILE *file) const { std::fclose(file); }
    };

    std::unique_ptr<std::FILE, Close> m_file;
    std::vector<char> m_bytes;
    bool m_heldCr = false; ///< a CR whose next byte has not been seen
};

} // namespace zvi::lib::core
