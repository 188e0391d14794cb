#include "zvi/command/SymbolTable.h"

#include "zvi/base/Index.h"
#include "zvi/command/BuiltInSymbolsDetail.h"
#include "zvi/command/CommandTokens.h"
#include "zvi/command/VMCommand.h"

#include <algorithm>
#include <cassert>
#include <cstring>

namespace zvi::lib {

namespace {

static_assert(SymbolTable::kMostVariables == SymbolTable::kMostSymbols - command::kBuiltInSymbolCount);

TagResWordNode ReservedWord(char const *text, int token) {
    TagResWordNode node;
    node.text = text;
    node.token = token;
    return node;
}

/// In the order of their tokens.
TagResWordNode const kBuiltInReservedWords[] = {
    ReservedWord("__GET_POSITION__", kTokenGetPosition),
    ReservedWord("__COMMAND_LINE__", kTokenCommandLine),
    ReservedWord("__GRID_INPUT__", kTokenGridInput),
    ReservedWord("__NODE_LIST_INPUT__", kTokenNodeListInput),
    ReservedWord("__EQGRID_INPUT__", kTokenEqGridInput),
    ReservedWord("__RECORD_INPUT__", kTokenRecordInput),
    ReservedWord("__NUMBER_INPUT__", kTokenNumberInput),
    ReservedWord("__I_NUMBER_INPUT__", kTokenINumberInput),
    ReservedWord("__GET_2NUMBER__", kTokenGet2Number),
    ReservedWord("__AGR_ERROR__", kTokenArgError),
    ReservedWord("__BLANK_ARG__", kTokenBlankArg),
    ReservedWord("__GET_POSITIONXYZ_LIST__", kTokenGetPositionXyzList),
    ReservedWord("__GET_INTS_BYTO_LIST__", kTokenGetIntsByToList),
    ReservedWord("__ARG_BY__", kTokenArgBy),
    ReservedWord("__ARG_TO__", kTokenArgTo),
};

constexpr int kBuiltInReservedWordCount = static_cast<int>(std::size(kBuiltInReservedWords));
static_assert(kBuiltInReservedWordCount == kTokenArgTo - kTokenGetPosition + 1);

char LowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EqualNoCase(std::string_view text, char const *name) {
    for (char const c : text) {
        if (LowerCase(c) != LowerCase(*name++))
            return false;
    }
    return *name == '\0';
}

/// The first node of the name, among the built-in ones and then the others, that is a function or is none.
template <class Symbols>
TagSymbolNode const *FindSymbol(Symbols const &others, std::string_view name, bool isFunction) {
    if (name.empty())
        return nullptr;
    char const first = LowerCase(name.front());
    auto const fits = [&](TagSymbolNode const &node) {
        return LowerCase(node.name[0]) == first && (node.function != nullptr) == isFunction &&
               EqualNoCase(name, node.name);
    };
    for (TagSymbolNode const &node : command::kBuiltInSymbols) {
        if (fits(node))
            return &node;
    }
    for (auto const &node : others) {
        if (fits(*node))
            return node.get();
    }
    return nullptr;
}

} // namespace

TagSymbolNode::TagSymbolNode(char const *symbolName, double (*symbolFunction)(double), double symbolValue)
    : function(symbolFunction), value(symbolValue) {
    std::memcpy(name, symbolName, std::min<std::size_t>(std::strlen(symbolName), kMostNameChars));
}

SymbolTable::SymbolTable() = default;
SymbolTable::~SymbolTable() = default;

TagSymbolNode *SymbolTable::AddSymbol(char const *name) {
    if (!name || std::strlen(name) > TagSymbolNode::kMostNameChars)
        return nullptr;
    if (GetSymbolCount() >= kMostSymbols)
        return nullptr;
    m_symbols.push_back(std::make_unique<TagSymbolNode>(name, nullptr, 0.0));
    return m_symbols.back().get();
}

TagSymbolNode const *SymbolTable::FindFunction(std::string_view name) const {
    return FindSymbol(m_symbols, name, true);
}

TagSymbolNode const *SymbolTable::FindVariable(std::string_view name) const {
    return FindSymbol(m_symbols, name, false);
}

int SymbolTable::GetSymbolCount() const {
    return command::kBuiltInSymbolCount + static_cast<int>(m_symbols.size());
}

TagSymbolNode const &SymbolTable::GetSymbol(int index) const {
    assert(index >= 0 && index < GetSymbolCount());
    return index < command::kBuiltInSymbolCount ? command::kBuiltInSymbols[index]
                                                : *m_symbols[base::Index(index - command::kBuiltInSymbolCount)];
}

TagResWordNode const *SymbolTable::FindReservedWord(std::string_view text) const {
    if (text.starts_with("__")) {
        for (TagResWordNode const &node : kBuiltInReservedWords) {
            if (node.text.size() == text.size() && node.text[2] == text[2] && node.text == text)
                return &node;
        }
    }
    for (auto const &node : m_reservedWords) {
        if (node->text == text)
            return node.get();
    }
    return nullptr;
}

char const *SymbolTable::ReservedWordName(int token) const {
    if (token >= kTokenGetPosition && token <= kTokenArgTo)
        return kBuiltInReservedWords[token - kTokenGetPosition].text.c_str();
    for (auto const &node : m_reservedWords) {
        if (node->token == token)
            return node->text.c_str();
    }
    return nullptr;
}

int SymbolTable::GetReservedWordCount() const {
    return kBuiltInReservedWordCount + static_cast<int>(m_reservedWords.size());
}

TagResWordNode const &SymbolTable::GetReservedWord(int index) const {
    assert(index >= 0 && index < GetReservedWordCount());
    return index < kBuiltInReservedWordCount ? kBuiltInReservedWords[index]
                                             : *m_reservedWords[base::Index(index - kBuiltInReservedWordCount)];
}

TagResWordNode *SymbolTable::AddReservedWord(char const *text, int token) {
    if (!text || GetReservedWordCount() >= kMostReservedWords)
        return nullptr;
    m_reservedWords.push_back(std::make_unique<TagResWordNode>(ReservedWord(text, token)));
    return m_reservedWords.back().get();
}

TagStringNode *SymbolTable::AddString(std::string_view text) {
    if (m_strings.size() >= kMostStrings)
        return nullptr;
    m_strings.push_back(std::make_unique<TagStringNode>());
    m_strings.back()->text = text;
    return m_strings.back().get();
}

TagNumberNode *SymbolTable::NodeBeyondThoseInPlace() {
    if (m_numberCount >= kMostNumbers)
        return nullptr;
    if (!m_moreNumbers)
        m_moreNumbers = std::make_unique_for_overwrite<TagNumberNode[]>(kMostNumbers - kNumbersInPlace);
    return &m_moreNumbers[static_cast<std::size_t>(m_numberCount - kNumbersInPlace)];
}

// A program that takes the address of these finds them in the library also where they are imported.
constexpr int SymbolTable::kMostSymbols;
constexpr int SymbolTable::kMostVariables;
constexpr int SymbolTable::kMostReservedWords;
constexpr int SymbolTable::kMostNumbers;
constexpr int SymbolTable::kMostStrings;

} // namespace zvi::lib
