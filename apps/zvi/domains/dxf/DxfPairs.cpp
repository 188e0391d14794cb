#include "apps/zvi/domains/dxf/DxfPairs.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/common/TextDecoding.h"

#include <string>

namespace zvi::app {

namespace {

/// A binary DXF starts with a line of this many bytes that holds these words.
constexpr std::size_t kBinarySignatureBytes = 22;
constexpr std::string_view kBinarySignature = "Binary DXF";

/// Group codes that the format defines lie between these.
constexpr long long kLowestGroupCode = -5;
constexpr long long kHighestGroupCode = 1071;

bool IsBinaryDxf(std::string_view text) {
    return text.substr(0, kBinarySignatureBytes).find(kBinarySignature) != std::string_view::npos;
}

} // namespace

DxfPairs::DxfPairs(std::string_view text) : m_rest(text) {
    if (IsBinaryDxf(m_rest))
        throw InputError(0, "this is a binary DXF, which is not read; save the drawing as ASCII DXF and try again");
    m_rest = WithoutUtf8Mark(m_rest);
    if (Trimmed(m_rest).empty())
        throw InputError(0, "the file is empty; a DXF drawing was expected");
}

std::string_view DxfPairs::TakeLine() {
    std::size_t const end = m_rest.find('\n');
    std::string_view taken = m_rest.substr(0, end);
    m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + 1);
    ++m_line;
    while (!taken.empty() && taken.back() == '\r')
        taken.remove_suffix(1);
    return taken;
}

std::optional<DxfPair> DxfPairs::Next() {
    if (Trimmed(m_rest).empty())
        return std::nullopt;
    std::string_view const codeText = TakeLine();
    std::optional<long long> const code = ParseInteger(codeText);
    if (!code || *code < kLowestGroupCode || *code > kHighestGroupCode)
        throw InputError(m_line - 1, "expected a group code, found " + Quoted(codeText) +
                                         "; the file is damaged or no DXF drawing");
    if (m_rest.empty())
        throw InputError(m_line - 1, "the file ends within a group; it was cut short, export the drawing again");
    std::string_view const value = TakeLine();
    return DxfPair{static_cast<int>(*code), m_line - 1, value};
}

bool LooksLikeDxf(std::string_view text) {
    if (IsBinaryDxf(text))
        return true;
    text = WithoutUtf8Mark(text);
    std::size_t const end = text.find('\n');
    std::string_view const first = Trimmed(text.substr(0, end));
    if (end == std::string_view::npos || (first != "0" && first != "999"))
        return false;
    std::string_view const second = text.substr(end + 1, text.find('\n', end + 1) - end - 1);
    return first == "999" || Trimmed(second) == "SECTION";
}

} // namespace zvi::app
