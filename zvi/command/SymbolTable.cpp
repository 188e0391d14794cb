#include "zvi/command/SymbolTable.h"

#include "zvi/base/Pi.h"
#include "zvi/command/CommandTokens.h"
#include "zvi/command/VMCommand.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace zvi::lib {

namespace {

// These refuse some arguments and are told by their address; see FunctionDomainError.
double TanDegrees(double x) {
    return std::tan(x * DEG_TO_RAD);
}

double AsinDegrees(double x) {
    return std::asin(x) * RAD_TO_DEG;
}

double AcosDegrees(double x) {
    return std::acos(x) * RAD_TO_DEG;
}

TagSymbolNode const kBuiltInSymbols[] = {
    {"log", [](double x) { return std::log10(x); }, 0},
    {"ln", [](double x) { return std::log(x); }, 0},
    {"sqrt", [](double x) { return std::sqrt(x); }, 0},
    {"sin", [](double x) { return std::sin(x * DEG_TO_RAD); }, 0},
    {"cos", [](double x) { return std::cos(x * DEG_TO_RAD); }, 0},
    {"tan", TanDegrees, 0},
    {"asin", AsinDegrees, 0},
    {"acos", AcosDegrees, 0},
    {"atan", [](double x) { return std::atan(x) * RAD_TO_DEG; }, 0},
    {"exp", [](double x) { return std::exp(x); }, 0},
    {"deg", [](double x) { return x * RAD_TO_DEG; }, 0},
    {"rad", [](double x) { return x * DEG_TO_RAD; }, 0},
    {"sinh", [](double x) { return std::sinh(x); }, 0},
    {"cosh", [](double x) { return std::cosh(x); }, 0},
    {"abs", [](double x) { return std::fabs(x); }, 0},
    {"pi", nullptr, base::kPi},
    // phi is not the golden ratio here: existing input relies on its being pi.
    {"phi", nullptr, base::kPi},
};

constexpr int kBuiltInSymbolCount = static_cast<int>(std::size(kBuiltInSymbols));

TagResWordNode ReservedWord(char const *text, int token) {
    TagResWordNode node;
    node.text = text;
    node.token = token;
    return node;
}

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
    for (TagSymbolNode const &node : kBuiltInSymbols) {
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

char const *FunctionDomainError(TagSymbolNode const &symbol, double x) {
    if ((symbol.function == AsinDegrees || symbol.function == AcosDegrees) && (x < -1.0 || x > 1.0))
        return "asin(x) , acos(x) ==> ( -1 <= x <= 1 )";
    if (symbol.function == TanDegrees && x == 90.0)
        return "Function error tan(90)";
    return nullptr;
}

SymbolTable::SymbolTable() = default;
SymbolTable::~SymbolTable() = default;

TagSymbolNode *SymbolTable::AddSymbol(char const *name) {
    if (!name || std::strlen(name) > TagSymbolNode::kMostNameChars)
        return nullptr;
    if (kBuiltInSymbolCount + static_cast<int>(m_symbols.size()) >= kMostSymbols)
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

TagResWordNode const *SymbolTable::FindReservedWord(std::string_view text) const {
    if (text.starts_with("__")) {
        for (TagResWordNode const &node : kBuiltInReservedWords) {
            if (node.text == text)
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
    for (TagResWordNode const &node : kBuiltInReservedWords) {
        if (node.token == token)
            return node.text.c_str();
    }
    for (auto const &node : m_reservedWords) {
        if (node->token == token)
            return node->text.c_str();
    }
    return nullptr;
}

TagResWordNode *SymbolTable::AddReservedWord(char const *text, int token) {
    if (!text || kBuiltInReservedWordCount + static_cast<int>(m_reservedWords.size()) >= kMostReservedWords)
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

} // namespace zvi::lib
