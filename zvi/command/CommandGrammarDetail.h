#pragma once

#include "zvi/base/RoomInPlace.h"
#include "zvi/command/Parser.h"

#include <cassert>
#include <cstddef>

namespace zvi::lib::command {

/// A stack of which no text can need more than one entry per byte.
template <class T>
class TextStack {
public:
    /// A new entry at the top, of which nothing is set.
    T &Push() {
        assert(m_size < lexer1::kBufferBytes);
        if (m_size == m_entries.Capacity())
            m_entries.Grow(lexer1::kBufferBytes, m_size);
        return m_entries[m_size++];
    }
    /// The entry that was at the top, which is there until the next one is pushed; the stack is not empty.
    T const &Pop() {
        assert(m_size > 0);
        return m_entries[--m_size];
    }
    /// The entry at the top of a stack that is not empty.
    T &Top() {
        assert(m_size > 0);
        return m_entries[m_size - 1];
    }
    int Size() const { return static_cast<int>(m_size); }

private:
    std::size_t m_size = 0;
    base::RoomInPlace<T, 16> m_entries;
};

/// The grammar of the command language, one operation per symbol, from left to right with one token of lookahead.
///
///     start       COMMAND_LINE commandline | GRID_INPUT [args] | EQGRID_INPUT [args] | NODE_LIST_INPUT [args]
///               | GET_INTS_BYTO_LIST [args] | RECORD_INPUT NAME args | GET_2NUMBER [args]
///               | NUMBER_INPUT [expr] | I_NUMBER_INPUT [expr] | position | xyzlist | args
///     commandline [args] | "=" expr | expr "<" expr "<" expr | expr "<" expr "," expr
///     position    GET_POSITION [args] | GET_POSITION "@" ["@"] (args | expr "<" expr)
///     xyzlist     GET_POSITIONXYZ_LIST [bracket] { ("," | BLANK_ARG) bracket }
///     bracket     "[" args "]"
///     args        item { "," item }
///     item        repeat | byto | NAME | expr | BLANK_ARG, the last at the head of args alone
///     repeat      expr "@" expr
///     byto        NUMBER "#" ARG_TO "#" NUMBER [ "#" ARG_BY "#" expr ]
///     expr        expr op expr | "-" expr | "(" expr ")" | NUMBER | FUNCTION "(" expr ")"
///
/// Operators bind "^" tightest, then the sign, "*" and "/", "+" and "-"; all of them, "^" too, group to the left.
/// The word AGR_ERROR fails wherever an item, a bracket or an angle may stand. Each operation returns false once the
/// parse has failed and the failure was reported.
class CommandGrammar {
public:
    explicit CommandGrammar(Parser &parser);

    /// Reads the line that the scanner holds: 1 on success, 0 on failure.
    int Parse();

private:
    struct Operator {
        std::int32_t token;
        std::int32_t precedence;
        std::int32_t begin;            ///< its place in the line, with the function in front of it
        TagSymbolNode const *function; ///< in front of an open parenthesis, or null
    };
    enum class Begun { kFailed, kItem, kExpression };

    bool Start();
    bool CommandLine();
    bool GridInput();
    bool NumberPair(bool repeatsFirst);
    bool MoveNumbers();
    bool IntegerList();
    bool RecordInput();
    bool NumberInput();
    bool IntegerInput();
    bool Position();
    bool RelativePosition();
    bool PositionOfList();
    bool XyzList();
    bool Bracket();
    bool CloseBracket();

    bool Args();
    bool ArgsFrom(ParseNumber const &firstExpression);
    bool MoreItems();
    bool Item(bool head);
    Begun BeginItem(bool head, ParseNumber &expression);
    bool FinishItem(ParseNumber const &expression);
    bool ByTo(ParseNumber const &from, bool head);
    bool ByToBounds(ParseNumber const &from, ParseValue &range);
    bool Marker(int word);
    bool AddByTo(ParseValue const &range, bool head);
    bool AddRepeat(ParseNumber const &count, ParseNumber const &value);

    bool Expression(ParseNumber &value);
    bool ExpressionRest(bool wantsOperand, ParseNumber &value);
    bool Operand();
    void PushOperator(int token, int precedence, int begin, TagSymbolNode const *function);
    bool ReduceDownTo(int precedence);
    bool Reduce();
    bool CloseParenthesis();
    bool Binary(Operator const &op, ParseNumber &a, ParseNumber const &b);
    bool Power(Operator const &op, ParseNumber &base, ParseNumber const &exponent);

    bool Number(ParseNumber &value);
    bool RequireNumbers();
    void AddPolar(double length, double degrees, unsigned int op);
    bool HasRoomFor(std::int64_t count) const;
    bool RequireRoomFor(std::int64_t count);
    bool AtEnd() const { return m_token == kTokenEnd; }
    void Advance() { m_token = m_lexer.NextToken(); }
    bool Unexpected();
    bool Fail(ParseFaultKind kind);
    bool FailAt(ParseFaultKind kind, int begin, int end);
    void NoteOverflow(ParseFaultKind kind, int begin, int end);
    double Finite(double value, int begin);
    std::int32_t InRange(std::int64_t value, int begin);

    Parser &m_parser;
    lexer1 &m_lexer;
    VMCommand &m_result;
    VMCommand &m_working;
    int m_token = kTokenEnd;
    bool m_failed = false;
    int m_openParentheses = 0;
    TextStack<ParseNumber> m_values;
    TextStack<Operator> m_operators;
};

} // namespace zvi::lib::command
