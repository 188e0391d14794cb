#include "apps/zvi/text/TextLines.h"

#include "zvi/core/Utf8.h"

#include <cstdint>

namespace zvi::app {

namespace {

/// Pictures of the control characters 0 to 31, and of 127.
constexpr std::uint32_t kFirstPicture = 0x2400;
constexpr std::uint32_t kPictureOfDelete = 0x2421;

/// Control characters beyond ASCII have no picture.
constexpr std::uint32_t kReplacement = 0xFFFD;

bool IsCarriageReturnLineFeed(std::string_view text, std::size_t at) {
    return text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n';
}

std::string Ends(LineFacts const &facts) {
    std::string ends;
    auto const add = [&ends](std::size_t count, char const *name) {
        if (count > 0)
            ends += (ends.empty() ? "" : " and ") + std::string(name);
    };
    add(facts.lineFeeds, "LF");
    add(facts.carriageReturnLineFeeds, "CR LF");
    add(facts.carriageReturns, "CR");
    return ends;
}

} // namespace

LineFacts FactsOf(std::string_view utf8) {
    LineFacts facts;
    bool hasEnded = true;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        bool const isPair = IsCarriageReturnLineFeed(utf8, i);
        facts.carriageReturnLineFeeds += isPair;
        facts.lineFeeds += utf8[i] == '\n';
        facts.carriageReturns += utf8[i] == '\r' && !isPair;
        hasEnded = utf8[i] == '\n' || utf8[i] == '\r';
        i += isPair;
    }
    facts.lastIsEnded = hasEnded;
    facts.lines = facts.lineFeeds + facts.carriageReturnLineFeeds + facts.carriageReturns + (hasEnded ? 0 : 1);
    return facts;
}

std::string FactsText(LineFacts const &facts) {
    std::string text = std::to_string(facts.lines) + (facts.lines == 1 ? " line" : " lines");
    std::string const ends = Ends(facts);
    if (!ends.empty())
        text += ", " + ends;
    return text + (facts.lastIsEnded ? "" : ", the last without an end");
}

std::string Shown(std::string_view utf8) {
    std::string shown;
    shown.reserve(utf8.size() + 1);
    for (std::size_t i = 0; i < utf8.size();) {
        auto const byte = static_cast<unsigned char>(utf8[i]);
        bool const isSecondControl =
            byte == 0xC2 && i + 1 < utf8.size() && static_cast<unsigned char>(utf8[i + 1]) < 0xA0;
        if (byte == '\r') {
            shown += '\n';
            i += IsCarriageReturnLineFeed(utf8, i) ? 1 : 0;
        } else if (byte < ' ' && byte != '\n' && byte != '\t') {
            lib::AppendUtf8(shown, kFirstPicture + byte);
        } else if (byte == 0x7F || isSecondControl) {
            lib::AppendUtf8(shown, isSecondControl ? kReplacement : kPictureOfDelete);
            i += isSecondControl ? 1 : 0;
        } else {
            shown += utf8[i];
        }
        ++i;
    }
    if (!shown.empty() && shown.back() != '\n')
        shown += '\n';
    return shown;
}

} // namespace zvi::app
