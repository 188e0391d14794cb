#pragma once

#include "zvi/Export.h"
#include "zvi/diagnostics/MProcessCommunicator.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zvi::lib::diagnostics {

/// Bytes that several messages refer to, so that memory grows with the longest line and not with their number.
using SharedBytes = std::shared_ptr<std::string const>;

/// A message that has been collected and is not yet sent.
struct ProcessMessage {
    /// What is left of a line that is written over, if there is one: so many bytes of it.
    SharedBytes kept;
    std::size_t keptSize = 0;
    bool isSame = false;
    /// The child's own bytes: these, or else a part of the batch's.
    SharedBytes own;
    std::size_t begin = 0;
    std::size_t size = 0;
    /// Whether they belong to the text.
    bool showsOwn = true;
    bool endsLine = false;
    int back = 0;
};

/// Messages in the order in which they are sent. What throws leaves it as it was.
class ZVI_API ProcessMessages {
public:
    std::size_t Count() const { return m_messages.size(); }
    bool HasNext() const { return m_next < m_messages.size(); }

    /// Adds a message; the child's own bytes are copied unless it shares them.
    void Add(ProcessMessage message, std::string_view ownBytes);

    /// Puts the next message, which there is, together and goes on to the one behind. `text` and `about` hold until the
    /// next call.
    void TakeNext(std::wstring &text, T_PROCESS_MSG &about);

    /// Forgets all, and keeps a moderate amount of memory for the next ones.
    void Clear();

private:
    std::string_view OwnBytes(ProcessMessage const &message) const;

    std::vector<ProcessMessage> m_messages;
    std::size_t m_next = 0;
    std::string m_bytes;
};

/// Appends bytes as units of 16 bits, sign-extended.
void AppendExtended(std::wstring &text, std::string_view bytes);

} // namespace zvi::lib::diagnostics
