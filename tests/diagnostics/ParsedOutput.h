#pragma once

#include "zvi/diagnostics/ProcessParserDetail.h"

#include <algorithm>
#include <string>
#include <vector>

namespace zvi::lib::test {

/// What the parse step makes of a child's output: the text of each message, "<", how far the child went back, a blank,
/// and what it wrote.
using Texts = std::vector<std::string>;

inline void TakeAll(diagnostics::ProcessMessages &messages, Texts &texts) {
    std::wstring text;
    T_PROCESS_MSG about;
    while (messages.HasNext()) {
        messages.TakeNext(text, about);
        texts.emplace_back();
        for (wchar_t const unit : text)
            texts.back() += static_cast<char>(unit);
        texts.back().append("<").append(std::to_string(about.back)).append(" ").append(about.bytes);
    }
    messages.Clear();
}

/// Parses the output in parts that end at `cuts`, so many messages at a time. With `asUnfinished`, what a part leaves
/// over goes the way of what a ring has no room for.
inline Texts Parsed(std::string const &output, std::vector<std::size_t> const &cuts, std::size_t limit = 100,
                    bool asUnfinished = false) {
    diagnostics::ProcessParser parser;
    diagnostics::ProcessMessages messages;
    Texts texts;
    std::string ring;
    std::string unfinished;
    std::size_t from = 0;
    for (std::size_t i = 0; i <= cuts.size(); ++i) {
        std::size_t const to = i < cuts.size() ? cuts[i] : output.size();
        ring += output.substr(from, to - from);
        from = to;
        do {
            ring.erase(0, parser.Read(ring, unfinished, limit, to == output.size(), messages));
            TakeAll(messages, texts);
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

/// The same by the rules as they are told, character for character.
inline Texts ParsedByTheRules(std::string const &output) {
    Texts texts;
    std::string pending;
    std::size_t carry = 0;
    bool isAtLineStart = true;
    bool hasReturned = false;
    std::size_t start = 0;
    for (std::size_t i = 0; i < output.size(); ++i) {
        if (output[i] != '\r' && output[i] != '\b')
            continue;
        bool const isLine = output[i] == '\r' && i + 1 < output.size() && output[i + 1] == '\n';
        start += start < i && output[start] == '\n' ? 1 : 0;
        std::string const own = output.substr(start, i - start);
        std::string const text = isLine ? own + '\r' : own;
        start = i + 1;
        bool const isBlank = text.find_first_not_of(" \t\n\v\f\r") == text.npos;
        std::string const kept = pending.substr(0, pending.size() - std::min(carry, pending.size()));
        std::string source = "<";
        source.append(hasReturned ? "-1" : std::to_string(carry)).append(" ").append(own);
        if (isLine) {
            if (carry < 1)
                texts.push_back(text + source);
            else if (!isBlank)
                texts.push_back("!Same:" + kept + text + source);
            isAtLineStart = true;
            carry = 0;
            hasReturned = false;
            pending.clear();
            continue;
        }
        if (text.empty()) {
            ++carry;
            hasReturned = hasReturned || output[i] == '\r';
            continue;
        }
        if (isAtLineStart) {
            pending = text;
            isAtLineStart = false;
            texts.push_back(text + source);
        } else {
            isAtLineStart = isBlank;
            texts.push_back("!Same:" + kept + (isBlank ? "" : text) + source);
        }
        carry = 1;
        hasReturned = output[i] == '\r';
    }
    return texts;
}

} // namespace zvi::lib::test
