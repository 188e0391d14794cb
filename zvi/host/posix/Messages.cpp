#include "zvi/host/Messages.h"

#include <map>
#include <mutex>
#include <string>

namespace zvi::host {

namespace {

struct MessageTable {
    std::mutex guard;
    std::map<std::wstring, std::uint32_t> numbers;
};

/// Made at the first call, which may come while libraries are being loaded, and never destroyed.
MessageTable &Messages() {
    static MessageTable *const table = new MessageTable;
    return *table;
}

std::wstring Folded(wchar_t const *name) {
    std::wstring folded(name);
    for (wchar_t &character : folded)
        if (character >= L'A' && character <= L'Z')
            character = static_cast<wchar_t>(character - L'A' + L'a');
    return folded;
}

} // namespace

std::uint32_t RegisterMessage(wchar_t const *name) {
    if (!name || *name == L'\0')
        return 0;
    std::wstring const folded = Folded(name);
    MessageTable &table = Messages();
    std::lock_guard const lock(table.guard);
    auto const found = table.numbers.find(folded);
    if (found != table.numbers.end())
        return found->second;
    std::uint32_t const number = kFirstMessage + static_cast<std::uint32_t>(table.numbers.size());
    if (number > kLastMessage)
        return 0;
    table.numbers.emplace(folded, number);
    return number;
}

} // namespace zvi::host
