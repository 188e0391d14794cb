#include "zvi/diagnostics/ProcessMessagesDetail.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <utility>

namespace zvi::lib::diagnostics {

namespace {

constexpr std::wstring_view kSame = L"!Same:";

/// Bytes and messages that a batch keeps room for.
constexpr std::size_t kKeptBytes = 1 << 16;
constexpr std::size_t kKeptMessages = 1000;

wchar_t Extended(char byte) {
    return static_cast<wchar_t>(static_cast<std::uint16_t>(static_cast<std::int16_t>(static_cast<signed char>(byte))));
}

} // namespace

void AppendExtended(std::wstring &text, std::string_view bytes) {
    std::size_t const before = text.size();
    text.resize(before + bytes.size());
    std::transform(bytes.begin(), bytes.end(), text.begin() + static_cast<std::ptrdiff_t>(before), Extended);
}

void ProcessMessages::Add(ProcessMessage message, std::string_view ownBytes) {
    message.begin = m_bytes.size();
    if (!message.own) {
        message.size = ownBytes.size();
        m_bytes.append(ownBytes);
    }
    try {
        m_messages.push_back(std::move(message));
    } catch (...) {
        m_bytes.resize(message.begin);
        throw;
    }
}

std::string_view ProcessMessages::OwnBytes(ProcessMessage const &message) const {
    return message.own ? std::string_view(*message.own) : std::string_view(m_bytes).substr(message.begin, message.size);
}

void ProcessMessages::TakeNext(std::wstring &text, T_PROCESS_MSG &about) {
    assert(HasNext());
    ProcessMessage const &message = m_messages[m_next];
    std::string_view const kept = message.kept ? std::string_view(*message.kept).substr(0, message.keptSize) : "";
    std::string_view const own = OwnBytes(message);
    text.clear();
    text.reserve((message.isSame ? kSame.size() : 0) + kept.size() + (message.showsOwn ? own.size() : 0) + 1);
    if (message.isSame)
        text.append(kSame);
    AppendExtended(text, kept);
    if (message.showsOwn)
        AppendExtended(text, own);
    if (message.endsLine)
        text += L'\r';
    about = {text.size(), own, message.back, message.endsLine, 0};
    ++m_next;
}

void ProcessMessages::Clear() {
    m_messages.clear();
    m_next = 0;
    m_bytes.clear();
    if (m_bytes.capacity() > kKeptBytes)
        std::string().swap(m_bytes);
    if (m_messages.capacity() > kKeptMessages)
        std::vector<ProcessMessage>().swap(m_messages);
}

} // namespace zvi::lib::diagnostics
