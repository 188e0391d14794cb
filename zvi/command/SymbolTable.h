#pragma once

#include "zvi/Export.h"
#include "zvi/command/Degrees.h"
#include "zvi/command/ParseValue.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zvi::lib {

class VMCommand;

/// A function or a variable. A node with a function is a function, a node without is a variable.
struct ZVI_API TagSymbolNode {
    /// Longest name, in characters.
    static constexpr int kMostNameChars = 103;

    /// A variable without a name, of value 0.
    TagSymbolNode() = default;
    /// A node of this name, of which at most `kMostNameChars` characters are taken.
    TagSymbolNode(char const *symbolName, double (*symbolFunction)(double), double symbolValue);
    /// Virtual, as the record is polymorphic.
    virtual ~TagSymbolNode() = default;

    char name[kMostNameChars + 1] = {};   ///< ends with a zero
    double (*function)(double) = nullptr; ///< null for a variable
    double value = 0.0;                   ///< of a variable
    std::uint64_t reserved = 0;           ///< stays zero
};

/// A word that stands for a token.
struct ZVI_API TagResWordNode {
    /// Frees the text.
    virtual ~TagResWordNode() = default;

    std::string text;           ///< the word
    std::int32_t token = -1;    ///< its token number
    std::uint64_t reserved = 0; ///< stays zero
};

/// A word that is neither reserved, nor a function, nor a variable.
struct ZVI_API TagStringNode {
    /// Frees the text.
    virtual ~TagStringNode() = default;

    std::string text; ///< the word
};

/// A number literal, laid out as the value it carries.
using TagNumberNode = ParseValue;

/// The names and literals of one parser. Limits are fixed counts, and at a limit an operation returns null and nothing
/// else happens. Built-in functions, variables and reserved words are shared by all tables and cost nothing to set up.
class ZVI_API SymbolTable {
public:
    static constexpr int kMostSymbols = 200;       ///< functions and variables, the built-in ones included
    static constexpr int kMostVariables = 183;     ///< what the built-in symbols leave of them
    static constexpr int kMostReservedWords = 300; ///< the built-in ones included
    static constexpr int kMostNumbers = 1000;      ///< literals and variables of one line
    static constexpr int kMostStrings = 1000;      ///< unknown words of one line

    /// Knows the built-in names.
    SymbolTable();
    /// Destroys all nodes.
    ~SymbolTable();
    SymbolTable(SymbolTable const &) = delete;
    SymbolTable &operator=(SymbolTable const &) = delete;

    /// A new variable with the value 0, or null at the limit or for a null or over-long name. A variable may bear the
    /// name of a function, which then hides it.
    TagSymbolNode *AddSymbol(char const *name);
    /// The first function of this name, whatever its case; null if there is none.
    TagSymbolNode const *FindFunction(std::string_view name) const;
    /// The first variable of this name in the same way.
    TagSymbolNode const *FindVariable(std::string_view name) const;
    /// The functions and variables, counted from 0: the built-in ones, of which the functions come first, then the
    /// others in the order in which they were added. `index` must be below the count.
    int GetSymbolCount() const;
    /// The symbol of this number.
    TagSymbolNode const &GetSymbol(int index) const;

    /// The reserved word with exactly this text; null if there is none.
    TagResWordNode const *FindReservedWord(std::string_view text) const;
    /// The text of the reserved word with this token number; null if there is none.
    char const *ReservedWordName(int token) const;
    /// The reserved words, counted from 0 in the same way, the built-in ones in the order of their tokens. `index` must
    /// be below the count.
    int GetReservedWordCount() const;
    /// The reserved word of this number.
    TagResWordNode const &GetReservedWord(int index) const;
    /// A further reserved word, or null at the limit.
    TagResWordNode *AddReservedWord(char const *text, int token);

    /// A new string node with a copy of the text, or null at the limit.
    TagStringNode *AddString(std::string_view text);
    /// A new number node with a double, or null at the limit.
    TagNumberNode *AddNumber(double value) {
        TagNumberNode *const node = NewNumber();
        if (node)
            node->SetDouble(value);
        return node;
    }
    /// The same for an integer of value 0, which the scanner fills.
    TagNumberNode *AddNumber() {
        TagNumberNode *const node = NewNumber();
        if (node)
            node->SetInteger(0);
        return node;
    }

    /// Destroy all nodes of their kind. A pointer to one of them ends with it.
    void ClearNumbers() {
        m_numberCount = 0;
        m_moreNumbers.reset();
    }
    void ClearStrings() { m_strings.clear(); }

private:
    /// Numbers of a short line live in the table itself.
    static constexpr int kNumbersInPlace = 8;

    /// The next node, its range and count zeroed; null at the limit.
    TagNumberNode *NewNumber() {
        TagNumberNode *const node =
            m_numberCount < kNumbersInPlace ? &m_firstNumbers[m_numberCount] : NodeBeyondThoseInPlace();
        if (node) {
            ++m_numberCount;
            node->from = node->to = node->by = node->count = 0;
        }
        return node;
    }
    TagNumberNode *NodeBeyondThoseInPlace();

    std::vector<std::unique_ptr<TagSymbolNode>> m_symbols;
    std::vector<std::unique_ptr<TagResWordNode>> m_reservedWords;
    int m_numberCount = 0;
    TagNumberNode m_firstNumbers[kNumbersInPlace];
    std::unique_ptr<TagNumberNode[]> m_moreNumbers;
    std::vector<std::unique_ptr<TagStringNode>> m_strings;
    std::vector<std::unique_ptr<VMCommand>> m_commands; ///< nothing adds to it
};

} // namespace zvi::lib
