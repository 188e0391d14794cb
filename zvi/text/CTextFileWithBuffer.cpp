#include "zvi/text/CTextFileWithBuffer.h"

#include "zvi/host/UnicodeStream.h"
#include "zvi/text/CMbcsTextFileWithBuffer.h"
#include "zvi/text/CUnicodeTextFileWithBuffer.h"
#include "zvi/text/TextEncoding.h"

#include <cstdarg>
#include <cstdio>
#include <utility>

namespace zvi::lib {

namespace {

struct StreamCloser {
    void operator()(std::FILE *stream) const { static_cast<void>(std::fclose(stream)); }
};

} // namespace

CTextFileWithBuffer::CTextFileWithBuffer(int bufferSize)
    : m_file(std::make_shared<CMbcsTextFileWithBuffer>(bufferSize)), m_bufferSize(bufferSize) {}

CTextFileWithBuffer::CTextFileWithBuffer(CTextFileWithBuffer const &other) = default;

CTextFileWithBuffer &CTextFileWithBuffer::operator=(CTextFileWithBuffer const &other) = default;

CTextFileWithBuffer::~CTextFileWithBuffer() = default;

int CTextFileWithBuffer::Open(wchar_t const *path, unsigned int flags, int unicode) {
    if (flags & CFile::kWrite) {
        m_isUnicode = unicode;
        if (unicode)
            return OpenUnicode(path, flags);
        return OpenWith(std::make_shared<CMbcsTextFileWithBuffer>(m_bufferSize), path, flags);
    }
    m_isUnicode = HasUnicodeMark(path);
    if (m_isUnicode)
        return OpenWith(std::make_shared<CUnicodeTextFileWithBuffer>(m_bufferSize), path, flags);
    return OpenWith(std::make_shared<CMbcsTextFileWithBuffer>(m_bufferSize), path, flags);
}

int CTextFileWithBuffer::OpenUnicode(wchar_t const *path, unsigned int flags) {
    std::unique_ptr<std::FILE, StreamCloser> stream(path ? host::OpenUnicodeStream(path) : nullptr);
    if (!stream)
        return 0;
    auto const file = std::make_shared<CUnicodeTextFileWithBuffer>(stream.get(), flags, m_bufferSize);
    static_cast<void>(stream.release());
    file->SetFilePath(path);
    m_file = file;
    return 1;
}

int CTextFileWithBuffer::OpenWith(std::shared_ptr<CTextFileBase> file, wchar_t const *path, unsigned int flags) {
    m_file = std::move(file);
    return m_file->Open(path, flags);
}

void CTextFileWithBuffer::Close() {
    m_file->Close();
}

int CTextFileWithBuffer::ReadString(CString &text) {
    return m_file->ReadString(text);
}

int CTextFileWithBuffer::ReadLine(CString &text) {
    return m_file->ReadLine(text);
}

wchar_t *CTextFileWithBuffer::ReadString(wchar_t *buffer, int size) {
    return m_file->ReadString(buffer, size);
}

int CTextFileWithBuffer::Write(wchar_t const *text) {
    return m_file->Write(text);
}

int CTextFileWithBuffer::WriteFmt(wchar_t const *format, ...) {
    CString text;
    std::va_list arguments;
    va_start(arguments, format);
    text.FormatV(format, arguments);
    va_end(arguments);
    return m_file->WriteFmt(L"%s", text.GetString());
}

int CTextFileWithBuffer::IsOpen() {
    return m_file->IsOpen();
}

int CTextFileWithBuffer::WriteTagOpen(wchar_t const *tag) {
    return m_file->WriteTagOpen(tag);
}

int CTextFileWithBuffer::WriteTagClose(wchar_t const *tag) {
    return m_file->WriteTagClose(tag);
}

int CTextFileWithBuffer::WriteData(wchar_t const *format, ...) {
    CString text;
    std::va_list arguments;
    va_start(arguments, format);
    text.FormatV(format, arguments);
    va_end(arguments);
    return m_file->WriteData(L"%s", text.GetString());
}

} // namespace zvi::lib
