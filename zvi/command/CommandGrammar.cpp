#include "zvi/command/CommandGrammarDetail.h"

#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <string_view>

namespace zvi::lib::command {

namespace {

/// Operation codes of a position.
enum PositionOp : unsigned int {
    kOpRelative = 1,
    kOpRelativePolar = 2,
    kOpAbsolute = 3,
    kOpSecondRelative = 4,
    kOpSecondRelativePolar = 5
};

/// How a bare list of coordinates is read.
enum PositionInputMode { kModeAbsolute = 0, kModeRelative = 1, kModePolar = 2 };

/// Most coordinates of a position.
constexpr int kMostCoordinates = 3;

/// Truncated toward zero; what no 32-bit integer can hold becomes the smallest one.
std::int32_t Truncated(ParseNumber const &value) {
    if (value.kind == kParseInteger)
        return value.integer;
    double const whole = std::trunc(value.real);
    return whole >= -2147483648.0 && whole <= 2147483647.0 ? static_cast<std::int32_t>(whole) : INT32_MIN;
}

/// The same in 64 bits, where what does not fit 32 stays beyond them.
std::int64_t Truncated64(double value) {
    constexpr double kBeyond = 4294967296.0;
    return static_cast<std::int64_t>(value > -kBeyond && value < kBeyond ? value : kBeyond);
}

/// Smallest x at which a * x modulo m lies from `low` to `high`, where a < m and low <= high < m; -1 if there is none.
/// The remainders are stepped through as Euclid's algorithm does. Products of m and what is below it must fit 64 bits.
std::int64_t FirstWithin(std::uint64_t a, std::uint64_t m, std::uint64_t low, std::uint64_t high) {
    assert(a < m && low <= high && high < m);
    if (low == 0)
        return 0;
    if (a == 0)
        return -1;
    std::uint64_t const x = (low + a - 1) / a;
    if (a * x <= high)
        return static_cast<std::int64_t>(x);
    // No multiple of a lies there, so -high and -low modulo a are in order, and y laps of m lead to x.
    std::int64_t const y = FirstWithin(m % a, a, (a - high % a) % a, (a - low % a) % a);
    return y < 0 ? -1 : static_cast<std::int64_t>((low + m * static_cast<std::uint64_t>(y) + a - 1) / a);
}

/// How many values a by-to walk of integers holds; -1 for a walk without end. It goes on while it is not beyond its
/// bound, across the wrap of 32 bits where it must.
std::int64_t LengthOfWalk(ParseValue const &range, bool up) {
    assert(range.kind == kParseByTo);
    constexpr std::int64_t kWrap = std::int64_t{1} << 32;
    // Beyond the bound, as distances from the first value.
    std::int64_t const low =
        up ? std::int64_t{range.to} + 1 - range.from : std::int64_t{INT32_MIN} - range.from + kWrap;
    std::int64_t const high =
        up ? std::int64_t{INT32_MAX} - range.from : std::int64_t{range.to} - 1 - range.from + kWrap;
    if (low > high)
        return -1;
    return FirstWithin(static_cast<std::uint32_t>(range.by), static_cast<std::uint64_t>(kWrap),
                       static_cast<std::uint64_t>(low), static_cast<std::uint64_t>(high));
}

} // namespace

CommandGrammar::CommandGrammar(Parser &parser)
    : m_parser(parser), m_lexer(parser.m_lexer), m_result(parser.m_result), m_working(parser.m_working) {}

int CommandGrammar::Parse() {
    Advance();
    if (!Start())
        return 0;
    if (!AtEnd()) {
        Unexpected();
        return 0;
    }
    return m_failed ? 0 : 1;
}

bool CommandGrammar::Unexpected() {
    return FailAt(ParseFaultKind::kUnexpectedToken, m_lexer.TokenStart(), m_lexer.TokenEnd());
}

/// Fails with what ends in front of the token at hand.
bool CommandGrammar::Fail(ParseFaultKind kind) {
    return FailAt(kind, m_lexer.TokenStart(), m_lexer.TokenStart());
}

bool CommandGrammar::FailAt(ParseFaultKind kind, int begin, int end) {
    m_parser.m_fault = {kind, begin, end, m_lexer.TokenStart()};
    std::string_view const text = ParseFaultText(kind);
    if (kind == ParseFaultKind::kUnexpectedToken)
        m_parser.yyerror(text.data());
    else if (text != kAnyFaultText)
        m_parser.Report(text);
    m_parser.Report(kAnyFaultText);
    return false;
}

/// The first one counts.
void CommandGrammar::NoteOverflow(ParseFaultKind kind, int begin, int end) {
    if (m_parser.m_overflow.kind == ParseFaultKind::kNone)
        m_parser.m_overflow = {kind, begin, end, m_lexer.TokenStart()};
}

/// The value of what began at `begin` and ends in front of the token at hand.
double CommandGrammar::Finite(double value, int begin) {
    if (!std::isfinite(value))
        NoteOverflow(ParseFaultKind::kNotFinite, begin, m_lexer.TokenStart());
    return value;
}

/// The low 32 bits of an integer, the same way.
std::int32_t CommandGrammar::InRange(std::int64_t value, int begin) {
    if (value < INT32_MIN || value > INT32_MAX)
        NoteOverflow(ParseFaultKind::kIntegerOverflow, begin, m_lexer.TokenStart());
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

bool CommandGrammar::Start() {
    int const word = m_token;
    switch (word) {
    case kTokenCommandLine:
        Advance();
        return CommandLine();
    case kTokenGridInput:
        Advance();
        return GridInput();
    case kTokenEqGridInput:
        Advance();
        return NumberPair(true);
    case kTokenNodeListInput:
    case kTokenGetIntsByToList:
        Advance();
        return IntegerList();
    case kTokenRecordInput:
        Advance();
        return RecordInput();
    case kTokenGet2Number:
        Advance();
        return NumberPair(false);
    case kTokenNumberInput:
        Advance();
        return NumberInput();
    case kTokenINumberInput:
        Advance();
        return IntegerInput();
    case kTokenGetPosition:
        Advance();
        return Position();
    case kTokenGetPositionXyzList:
        Advance();
        return XyzList();
    // Without a start word the arguments stay in the working list.
    default:
        return Args();
    }
}

bool CommandGrammar::CommandLine() {
    if (AtEnd())
        return true;
    ParseNumber value;
    if (m_token == '=') {
        Advance();
        return Expression(value);
    }
    Begun const begun = BeginItem(true, value);
    if (begun == Begun::kFailed)
        return false;
    if (begun == Begun::kExpression && m_token == '<') {
        Advance();
        if (!Expression(value))
            return false;
        if (m_token != '<' && m_token != ',')
            return Unexpected();
        Advance();
        return Expression(value);
    }
    if (begun == Begun::kExpression && !FinishItem(value))
        return false;
    if (!MoreItems())
        return false;
    m_result.TakeFrom(m_working);
    return true;
}

bool CommandGrammar::GridInput() {
    if (AtEnd()) {
        m_result.AddDouble(0.0);
        return true;
    }
    return Args() && MoveNumbers();
}

/// At most two numbers. A missing second one repeats the first or is 0.
bool CommandGrammar::NumberPair(bool repeatsFirst) {
    if (AtEnd()) {
        m_result.AddDouble(0.0);
        m_result.AddDouble(0.0);
        return true;
    }
    if (!Args())
        return false;
    if (m_working.GetCount() > 2)
        return Fail(ParseFaultKind::kExtraArgument);
    if (m_working.GetCount() == 1) {
        double second = 0.0;
        if (repeatsFirst)
            m_working.CopyDoubles(&second);
        m_working.AddDouble(second);
    }
    return MoveNumbers();
}

/// Moves the working list to the result; fails when it holds anything but numbers.
bool CommandGrammar::MoveNumbers() {
    if (!RequireNumbers())
        return false;
    m_result.TakeFrom(m_working);
    return true;
}

bool CommandGrammar::IntegerList() {
    if (AtEnd())
        return true;
    if (!Args())
        return false;
    if (!m_working.HoldsIntegers())
        return Fail(ParseFaultKind::kNoInteger);
    m_result.TakeFrom(m_working);
    return true;
}

bool CommandGrammar::RecordInput() {
    if (m_token != kTokenName)
        return Unexpected();
    Advance();
    return Args();
}

bool CommandGrammar::NumberInput() {
    ParseNumber value = ParseNumber::Double(0.0);
    if (!AtEnd() && !Expression(value))
        return false;
    m_result.AddDouble(value.AsDouble());
    return true;
}

bool CommandGrammar::IntegerInput() {
    ParseNumber value = ParseNumber::Integer(0);
    int const begin = m_lexer.TokenStart();
    if (!AtEnd() && !Expression(value))
        return false;
    if (value.kind != kParseInteger)
        InRange(Truncated64(value.real), begin);
    m_result.AddInteger(Truncated(value));
    return true;
}

bool CommandGrammar::Position() {
    if (AtEnd()) {
        for (int i = 0; i < kMostCoordinates; ++i)
            m_result.AddDouble(0.0);
        m_result.SetOpCode(kOpAbsolute);
        return true;
    }
    if (m_token == '@') {
        Advance();
        return RelativePosition();
    }
    return Args() && PositionOfList();
}

bool CommandGrammar::RelativePosition() {
    bool const second = m_token == '@';
    if (second)
        Advance();
    ParseNumber length;
    Begun const begun = BeginItem(true, length);
    if (begun == Begun::kFailed)
        return false;
    if (begun == Begun::kExpression && m_token == '<') {
        Advance();
        if (m_token == kTokenArgError && !second)
            return Fail(ParseFaultKind::kErrorWord);
        ParseNumber degrees;
        if (!Expression(degrees))
            return false;
        AddPolar(length.AsDouble(), degrees.AsDouble(), second ? kOpSecondRelativePolar : kOpRelativePolar);
        return true;
    }
    if (begun == Begun::kExpression && !FinishItem(length))
        return false;
    if (!MoreItems())
        return false;
    m_result.TakeFrom(m_working);
    if (m_result.GetCount() > kMostCoordinates)
        return Fail(ParseFaultKind::kExtraCoordinate);
    m_result.SetOpCode(second ? kOpSecondRelative : kOpRelative);
    return true;
}

bool CommandGrammar::PositionOfList() {
    int const mode = m_parser.m_positionInputMode;
    int const typed = m_working.GetCount();
    if (typed > kMostCoordinates)
        return Fail(ParseFaultKind::kExtraArgument);
    if (typed == 1)
        m_working.AddDouble(0.0);
    if ((typed == 1 || typed == 2) && mode < kModePolar)
        m_working.AddDouble(0.0);
    // The parse counts as failed, but what was typed still goes into the result.
    if (!m_working.HoldsNumbers()) {
        m_failed = true;
        m_parser.m_fault = {ParseFaultKind::kNoCoordinate, m_lexer.TokenStart(), m_lexer.TokenStart(),
                            m_lexer.TokenStart()};
    }
    if (mode == kModeAbsolute || mode == kModeRelative) {
        m_result.TakeFrom(m_working);
        m_result.SetOpCode(mode == kModeAbsolute ? kOpAbsolute : kOpRelative);
    } else if (mode == kModePolar) {
        double length = 0.0;
        double degrees = 0.0;
        if (m_working.GetCount() != 2 || !m_working.ReadNumbers(length, degrees))
            return Fail(ParseFaultKind::kExtraArgument);
        AddPolar(length, degrees, kOpRelativePolar);
    }
    return true;
}

void CommandGrammar::AddPolar(double length, double degrees, unsigned int op) {
    m_result.AddDouble(length * Cos(degrees * DEG_TO_RAD));
    m_result.AddDouble(length * Sin(degrees * DEG_TO_RAD));
    m_result.AddDouble(0.0);
    m_result.SetOpCode(op);
}

bool CommandGrammar::XyzList() {
    if (m_token == '[' && !Bracket())
        return false;
    while (m_token == ',' || m_token == kTokenBlankArg || m_token == kTokenArgError) {
        bool const comma = m_token == ',';
        if (m_token == kTokenArgError)
            return Fail(ParseFaultKind::kErrorWord);
        Advance();
        if (comma && m_token == kTokenArgError)
            return Fail(ParseFaultKind::kErrorWord);
        if (m_token != '[')
            return Unexpected();
        if (!Bracket())
            return false;
    }
    return true;
}

bool CommandGrammar::Bracket() {
    Advance();
    if (!Args())
        return false;
    if (m_token == kTokenArgError)
        return Fail(ParseFaultKind::kErrorWord);
    if (m_token != ']')
        return Unexpected();
    Advance();
    return CloseBracket();
}

bool CommandGrammar::CloseBracket() {
    double coordinates[kMostCoordinates] = {};
    if (!m_working.ReadNumbers(coordinates[0], coordinates[1], coordinates[2]))
        return Fail(m_working.GetCount() > kMostCoordinates ? ParseFaultKind::kExtraCoordinate
                                                            : ParseFaultKind::kNoNumber);
    m_result.AddPosition(coordinates[0], coordinates[1], coordinates[2]);
    m_working.Clear();
    return true;
}

bool CommandGrammar::Args() {
    return Item(true) && MoreItems();
}

bool CommandGrammar::MoreItems() {
    while (m_token == ',') {
        Advance();
        if (!Item(false))
            return false;
    }
    return true;
}

bool CommandGrammar::Item(bool head) {
    ParseNumber expression;
    Begun const begun = BeginItem(head, expression);
    return begun == Begun::kItem || (begun == Begun::kExpression && FinishItem(expression));
}

/// Reads an item, but for what follows an expression: the caller may know more uses for it.
CommandGrammar::Begun CommandGrammar::BeginItem(bool head, ParseNumber &expression) {
    if (m_token == kTokenArgError || (m_token == kTokenBlankArg && !head)) {
        Fail(ParseFaultKind::kErrorWord);
        return Begun::kFailed;
    }
    if (m_token == kTokenBlankArg) {
        m_working.AddInteger(0); // the first item of its list
        Advance();
        return Begun::kItem;
    }
    if (m_token == kTokenName) {
        if (!RequireRoomFor(1))
            return Begun::kFailed;
        m_working.AddString(m_lexer.Name()->text);
        Advance();
        return Begun::kItem;
    }
    if (m_token != kTokenNumber)
        return Expression(expression) ? Begun::kExpression : Begun::kFailed;
    if (!Number(m_values.Push()))
        return Begun::kFailed;
    if (m_token == '#')
        return ByTo(m_values.Pop(), head) ? Begun::kItem : Begun::kFailed;
    return ExpressionRest(false, expression) ? Begun::kExpression : Begun::kFailed;
}

bool CommandGrammar::FinishItem(ParseNumber const &expression) {
    if (m_token == '@') {
        Advance();
        ParseNumber value;
        if (!Expression(value))
            return false;
        if (m_token == '@')
            return Fail(ParseFaultKind::kRepeatTwice);
        return AddRepeat(expression, value);
    }
    if (!RequireRoomFor(1))
        return false;
    if (expression.kind == kParseInteger)
        m_working.AddInteger(expression.integer);
    else
        m_working.AddDouble(expression.real);
    if (expression.shape == kParseComputed)
        m_working.SetComputed(1);
    return true;
}

bool CommandGrammar::HasRoomFor(std::int64_t count) const {
    return m_result.GetCount() + m_working.GetCount() + count <= Parser::kMostArguments;
}

bool CommandGrammar::RequireRoomFor(std::int64_t count) {
    return HasRoomFor(count) || Fail(ParseFaultKind::kTooManyArguments);
}

/// In the absolute mode the values grow by equal steps, and the first is there even for a count below 1.
bool CommandGrammar::AddRepeat(ParseNumber const &count, ParseNumber const &value) {
    if (count.kind != kParseInteger)
        return Fail(ParseFaultKind::kRepeatCount);
    bool const grows = m_parser.m_relativeIteration == 0;
    std::int32_t const added = std::max(count.integer, grows ? 1 : 0);
    if (!RequireRoomFor(added))
        return false;
    double const first = value.AsDouble();
    m_working.AddDoubles(first, grows ? first : 0.0, added);
    return true;
}

bool CommandGrammar::ByTo(ParseNumber const &from, bool head) {
    ParseValue range{};
    if (!ByToBounds(from, range))
        return false;
    if (m_token == '#') {
        ParseNumber step;
        if (!Marker(kTokenArgBy) || !Expression(step))
            return false;
        range.by = Truncated(step);
    }
    return AddByTo(range, head);
}

bool CommandGrammar::ByToBounds(ParseNumber const &from, ParseValue &range) {
    ParseNumber to{};
    if (!Marker(kTokenArgTo))
        return false;
    if (m_token != kTokenNumber)
        return Unexpected();
    if (!Number(to))
        return false;
    range = {};
    range.kind = kParseByTo;
    range.shape = kParseByTo;
    range.by = 1;
    if (from.kind != kParseInteger || to.kind != kParseInteger) {
        // The bounds are judged once the whole item was read.
        range.kind = kParseDouble;
        return true;
    }
    range.from = from.integer;
    range.to = to.integer;
    return true;
}

/// "#", the word, "#".
bool CommandGrammar::Marker(int word) {
    Advance();
    if (m_token != word)
        return Unexpected();
    Advance();
    if (m_token != '#')
        return Unexpected();
    Advance();
    return true;
}

/// The first value is always there. At the head of a list a range of one value walks down and needs a step below 1;
/// further on it walks down whatever its step.
bool CommandGrammar::AddByTo(ParseValue const &range, bool head) {
    if (range.kind != kParseByTo)
        return Fail(ParseFaultKind::kRangeEnds);
    bool const up = range.from < range.to;
    bool const mustFall = head ? !up : range.from > range.to;
    if (mustFall && range.by > 0)
        return Fail(ParseFaultKind::kRangeStep);
    std::int64_t const count = LengthOfWalk(range, up);
    if (count < 0 || !HasRoomFor(count)) {
        bool const leadsAway = up ? range.by <= 0 : range.by >= 0;
        return Fail(leadsAway ? ParseFaultKind::kRangeStep : ParseFaultKind::kTooManyArguments);
    }
    m_working.AddIntegers(range.from, range.by, static_cast<std::int32_t>(count));
    return true;
}

bool CommandGrammar::RequireNumbers() {
    return m_working.HoldsNumbers() || Fail(ParseFaultKind::kNoNumber);
}

/// The number at hand; fails when the line holds more numbers than the symbol table.
bool CommandGrammar::Number(ParseNumber &value) {
    if (!m_lexer.Number())
        return Fail(ParseFaultKind::kTooManyNumbers);
    value.Set(*m_lexer.Number());
    if (m_lexer.IsNumberTooLarge())
        NoteOverflow(value.kind == kParseInteger ? ParseFaultKind::kIntegerOverflow : ParseFaultKind::kNotFinite,
                     m_lexer.TokenStart(), m_lexer.TokenEnd());
    Advance();
    return true;
}

} // namespace zvi::lib::command
