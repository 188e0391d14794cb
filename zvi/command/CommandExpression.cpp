// The expressions of the command language, computed while they are read. Two stacks stand in for recursion, so that
// nesting is bounded by the length of the text alone.

#include "zvi/command/BuiltInSymbolsDetail.h"
#include "zvi/command/CommandGrammarDetail.h"
#include "zvi/command/OrderedPowerDetail.h"

#include <array>
#include <cassert>
#include <cmath>

namespace zvi::lib::command {

namespace {

/// The sign in front of an operand, as an operator on the stack.
constexpr int kNegate = -1;

/// How tight the sign binds, and an open parenthesis, which no token but its closing one takes off the stack.
constexpr int kNegatePrecedence = 3;
constexpr int kParenthesisPrecedence = -1;

/// How tight each binary operator binds; 0 for a character that is none.
constexpr std::array<std::int8_t, 128> kPrecedences = [] {
    std::array<std::int8_t, 128> precedences{};
    precedences['+'] = precedences['-'] = 1;
    precedences['*'] = precedences['/'] = 2;
    precedences['^'] = 4;
    return precedences;
}();

int Precedence(int token) {
    return token >= 0 && token < 128 ? kPrecedences[static_cast<std::size_t>(token)] : 0;
}

std::int64_t ExactInteger(int token, std::int64_t a, std::int64_t b) {
    return token == '+' ? a + b : token == '-' ? a - b : a * b;
}

} // namespace

bool CommandGrammar::Expression(ParseNumber &value) {
    return ExpressionRest(true, value);
}

/// Reads to the first token that no expression can go on with; the first operand may be on its stack. Operators are
/// computed as soon as the next one binds no tighter.
bool CommandGrammar::ExpressionRest(bool wantsOperand, ParseNumber &value) {
    while (!wantsOperand || Operand()) {
        int const precedence = Precedence(m_token);
        if (!ReduceDownTo(precedence))
            return false;
        wantsOperand = precedence > 0;
        if (wantsOperand) {
            PushOperator(m_token, precedence, m_lexer.TokenStart(), nullptr);
            Advance();
        } else if (m_openParentheses == 0) {
            value.Set(m_values.Pop());
            return true;
        } else if (m_token != ')') {
            return Unexpected();
        } else if (!CloseParenthesis()) {
            return false;
        }
    }
    return false;
}

/// A number, with the signs, parentheses and functions in front of it.
bool CommandGrammar::Operand() {
    while (m_token != kTokenNumber) {
        int const begin = m_lexer.TokenStart();
        TagSymbolNode const *function = nullptr;
        if (m_token == kTokenFunction) {
            function = m_lexer.Function();
            Advance();
        }
        if (m_token == '(') {
            PushOperator('(', kParenthesisPrecedence, begin, function);
            ++m_openParentheses;
        } else if (m_token == '-' && !function) {
            PushOperator(kNegate, kNegatePrecedence, begin, nullptr);
        } else {
            return Unexpected();
        }
        Advance();
    }
    return Number(m_values.Push());
}

/// Field by field, as a copy of them all would have to wait until they are stored.
void CommandGrammar::PushOperator(int token, int precedence, int begin, TagSymbolNode const *function) {
    Operator &op = m_operators.Push();
    op.token = token;
    op.precedence = precedence;
    op.begin = begin;
    op.function = function;
}

/// Computes the operators on the stack that bind as tight as `precedence` or tighter, down to an open parenthesis.
bool CommandGrammar::ReduceDownTo(int precedence) {
    while (m_operators.Size() > 0 && m_operators.Top().precedence >= precedence) {
        if (!Reduce())
            return false;
    }
    return true;
}

bool CommandGrammar::Reduce() {
    Operator const &op = m_operators.Pop();
    if (op.token != kNegate) {
        ParseNumber const &b = m_values.Pop();
        return Binary(op, m_values.Top(), b);
    }
    ParseNumber &value = m_values.Top();
    if (value.kind == kParseInteger)
        value.SetInteger(InRange(-std::int64_t{value.integer}, op.begin));
    else
        value.SetDouble(-value.real);
    return true;
}

/// Computes into `a`.
bool CommandGrammar::Binary(Operator const &op, ParseNumber &a, ParseNumber const &b) {
    int const token = op.token;
    if (token == '^')
        return Power(op, a, b);
    if (token == '/') {
        if (b.AsDouble() == 0.0)
            return FailAt(ParseFaultKind::kZeroDivisor, op.begin + 1, m_lexer.TokenStart());
        a.SetDouble(Finite(a.AsDouble() / b.AsDouble(), op.begin), kParseComputed);
        return true;
    }
    if (a.kind == kParseInteger && b.kind == kParseInteger) {
        a.SetInteger(InRange(ExactInteger(token, a.integer, b.integer), op.begin), kParseComputed);
        return true;
    }
    double const x = a.AsDouble();
    double const y = b.AsDouble();
    a.SetDouble(Finite(token == '+' ? x + y : token == '-' ? x - y : x * y, op.begin), kParseComputed);
    return true;
}

/// The exponent must be an integer and not zero. A negative one makes no multiplication, so the result is 1.
bool CommandGrammar::Power(Operator const &op, ParseNumber &base, ParseNumber const &exponent) {
    if (exponent.kind != kParseInteger || exponent.integer == 0)
        return FailAt(ParseFaultKind::kExponent, op.begin + 1, m_lexer.TokenStart());
    base.SetDouble(Finite(OrderedPower(base.AsDouble(), exponent.integer), op.begin), kParseComputed);
    return true;
}

/// At ")": takes the open parenthesis, and the function in front of it, off the stack.
bool CommandGrammar::CloseParenthesis() {
    Operator const &open = m_operators.Pop();
    assert(open.token == '(' && m_openParentheses > 0);
    TagSymbolNode const *const function = open.function;
    --m_openParentheses;
    ParseNumber &value = m_values.Top();
    Advance();
    if (!function) {
        value.shape = kParseComputed;
        return true;
    }
    double const x = value.AsDouble();
    if (ParseFaultKind const fault = FunctionFault(*function, x); fault != ParseFaultKind::kNone)
        return FailAt(fault, open.begin, m_lexer.TokenStart());
    value.SetDouble(Finite(function->function(x), open.begin), kParseComputed);
    return true;
}

} // namespace zvi::lib::command
