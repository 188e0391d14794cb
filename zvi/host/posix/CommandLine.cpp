#include "zvi/host/CommandLine.h"

#include "zvi/host/CodePage.h"

#include <algorithm>
#include <cassert>

namespace zvi::host {

namespace {

bool PartsWords(wchar_t character) {
    return character == L' ' || character == L'\t' || character == L'\n';
}

/// Takes the words out of a string one after the other.
class WordReader {
public:
    explicit WordReader(std::wstring_view line) : m_rest(line) { SkipBlanks(); }

    bool HasWord() const { return !m_rest.empty(); }

    std::wstring Next() {
        m_word.clear();
        while (!m_rest.empty() && !PartsWords(m_rest.front()))
            ReadPiece();
        SkipBlanks();
        return m_word;
    }

private:
    void SkipBlanks() {
        while (!m_rest.empty() && PartsWords(m_rest.front()))
            m_rest.remove_prefix(1);
    }

    /// The next character, which there is.
    wchar_t Take() {
        assert(!m_rest.empty());
        wchar_t const first = m_rest.front();
        m_rest.remove_prefix(1);
        return first;
    }

    void ReadPiece() {
        wchar_t const first = Take();
        if (first == L'\'')
            ReadSingleQuoted();
        else if (first == L'"')
            ReadDoubleQuoted();
        else if (first == L'\\')
            ReadEscaped();
        else
            m_word += first;
    }

    void ReadSingleQuoted() {
        std::size_t const end = std::min(m_rest.find(L'\''), m_rest.size());
        m_word += m_rest.substr(0, end);
        m_rest.remove_prefix(std::min(end + 1, m_rest.size()));
    }

    void ReadDoubleQuoted() {
        constexpr std::wstring_view kEscapable = L"\"\\$`\n";
        while (!m_rest.empty()) {
            wchar_t const character = Take();
            if (character == L'"')
                return;
            if (character == L'\\' && !m_rest.empty() && kEscapable.find(m_rest.front()) != kEscapable.npos)
                ReadEscaped();
            else
                m_word += character;
        }
    }

    /// What follows a backslash; a line end behind one is taken out.
    void ReadEscaped() {
        wchar_t const escaped = m_rest.empty() ? L'\\' : Take();
        if (escaped != L'\n')
            m_word += escaped;
    }

    std::wstring_view m_rest;
    std::wstring m_word;
};

/// Whether no shell sees more in the character than itself.
bool IsPlain(wchar_t character) {
    return character > 0x7F || (character >= L'a' && character <= L'z') || (character >= L'A' && character <= L'Z') ||
           (character >= L'0' && character <= L'9') ||
           std::wstring_view(L"%+,-./:=@_").find(character) != std::wstring_view::npos;
}

} // namespace

std::wstring QuotedArgument(NativeWord const &word) {
    std::wstring text(word.size(), L'\0');
    text.resize(WideOfBytes(word, text.data()));
    if (!text.empty() && std::all_of(text.begin(), text.end(), IsPlain))
        return text;
    std::wstring quoted = L"'";
    for (wchar_t const character : text)
        if (character == L'\'')
            quoted += L"'\\''";
        else
            quoted += character;
    return quoted + L"'";
}

std::vector<NativeWord> ArgumentWords(std::wstring_view arguments) {
    std::vector<NativeWord> words;
    for (WordReader reader(arguments); reader.HasWord();)
        words.push_back(BytesOfWide(reader.Next()));
    return words;
}

} // namespace zvi::host
