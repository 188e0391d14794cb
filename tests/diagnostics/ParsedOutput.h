#pragma once

#include "zvi/diagnostics/ProcessParserDetail.h"

#include <string>
#include <vector>

namespace zvi::lib::test {

/// What the parse step makes of a child's output: the text of each message, "<", how far the child went back, a blank,
/// and what it wrote.
using Texts = std::vector<std::string>;

/// Parses the output in parts of this size, so many messages at a time. With `asUnfinished`, what a part leaves over
/// goes the way of what a ring has no room for.
inline Texts Parsed(std::string const &output, std::size_t partSize, std::size_t limit = 100,
                    bool asUnfinished = false) {
    diagnostics::ProcessParser parser;
    diagnostics::ProcessMessages messages;
    Texts texts;
    std::string ring, unfinished;
    std::wstring text;
    T_PROCESS_MSG about;
    for (std::size_t at = 0; at < output.size(); at += partSize) {
        ring += output.substr(at, partSize);
        do {
            ring.erase(0, parser.Read(ring, unfinished, limit, at + partSize >= output.size(), messages));
            while (messages.HasNext()) {
                messages.TakeNext(text, about);
                texts.emplace_back(text.begin(), text.end());
                texts.back().append("<").append(std::to_string(about.back)).append(" ").append(about.bytes);
            }
            messages.Clear();
        } while (diagnostics::HoldsSegmentEnd(ring));
        if (asUnfinished && ring.size() > 2) {
            std::size_t const kept = ring.ends_with('\r') ? 1 : 0;
            std::size_t const skipped = unfinished.empty() && ring.starts_with('\n') ? 1 : 0;
            unfinished += ring.substr(skipped, ring.size() - skipped - kept);
            ring.erase(0, ring.size() - kept);
        }
    }
    return texts;
}

} // namespace zvi::lib::test
