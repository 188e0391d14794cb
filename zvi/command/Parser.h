#pragma once

#include "zvi/Export.h"
#include "zvi/command/ParseFault.h"
#include "zvi/command/SymbolTable.h"
#include "zvi/command/VMCommand.h"
#include "zvi/command/lexer1.h"
#include "zvi/command/yyfparser.h"
#include "zvi/core/CArray.h"
#include "zvi/core/CString.h"
#include "zvi/core/CStringArray.h"

#include <cstdint>
#include <string_view>

namespace zvi::lib {

namespace command {
class CommandGrammar;
}

/// Reads one line of the command language per call: expressions, positions, number and node lists, grid definitions.
///
/// Every `Parsing...` entry but `_Parsing` normalises the text (see NormalizeCommandText.h) and puts the start word of
/// its mode in front. It returns 1 on success and 0 on failure, and leaves the arguments in `GetResult`. After a
/// failure the result holds what had been added before it. Numbers are computed while the line is read; there is no
/// syntax tree and no recursion.
///
///     Parser parser;
///     double x = 0, y = 0, z = 0;
///     if (parser.ParsingPositionArg(L"10 2*5"))
///         parser.GetPositionData(x, y, z); // 10, 10, 0
///
/// Limits: a line of 2,047 bytes with its start word, and 10,000,000 arguments; beyond them a parse fails. A power is
/// the product of its factors in order, up to 10,000,000 of them. That takes some 10 ms for a base between 1e-9 and
/// 1e-4 away from 1 or -1; a line that is full of such powers of different bases takes seconds.
class ZVI_API Parser : public yyfparser {
public:
    /// Most arguments that the lists of one parse may hold.
    static constexpr std::int64_t kMostArguments = 10'000'000;

    /// Knows the built-in names; reads every number as a double and expands repeats relatively.
    Parser();
    /// Destroys its names and its result.
    ~Parser() override;

    /// Receives the text of each failure, the parser's own words; does nothing unless overridden.
    virtual void ReportError(CString const &text);

    /// How `ParsingPosition...` read a bare list: 0 absolute, 1 relative, 2 polar (length, angle in degrees).
    virtual void SetPreModePosNOp(int mode);

    /// Parses a text as it stands: no normalisation, and the start word is part of it.
    virtual int _Parsing(CString const &text);

    /// A position: up to three coordinates, or "@" in front of relative or polar ones. Missing ones are 0.
    virtual int ParsingPositionArg(CString const &text);
    /// One expression, as a double; an empty text is 0.
    virtual int ParsingNumberArg(CString const &text);
    /// Up to two numbers, as doubles; a missing one is 0.
    virtual int Parsing2NumberArg(CString const &text);
    /// One expression, as an integer: a double is truncated toward zero, an empty text is 0.
    virtual int ParsingINumberArg(CString const &text);
    /// Any numbers; a repeat item `3@2` gives 2, 4, 6 in this absolute form and 2, 2, 2 in the relative one.
    virtual int ParsingGridDefineAbs(CString const &text);
    /// The same with repeat items in the relative form.
    virtual int ParsingGridDefineRel(CString const &text);
    /// One or two numbers; one stands for both, an empty text for two zeros.
    virtual int ParsingEQGridDefine(CString const &text);
    /// Words and numbers of any kind, for a command of the application.
    virtual int ParsingCommandLine(CString const &text);
    /// `table` is kept in the parser; nothing reads it yet.
    virtual int ParsingByTable(CString const &text, CArray<int> &table);
    /// Integers and ranges, which replace the contents of `list`; on failure it stays as it was.
    virtual int ParsingNodeList(CString const &text, CArray<unsigned int> &list);
    /// The same with signs.
    virtual int ParsingNodeList(CString const &text, CArray<int> &list);
    /// The same without a choice of how repeat items expand.
    virtual int ParsingListByTo(CString const &text, CArray<int> &list);
    /// Triples in brackets, `[1,2,3],[4,5]`, as x, y, z in a row; empties `coordinates` once the line was read.
    virtual int ParsingPositionXYZList(CString const &text, CArray<double> &coordinates);
    /// A position with its operation code: 1 relative, 2 relative polar, 3 absolute, 4 and 5 as 1 and 2 after "@@".
    virtual int ParsingPositionNOp(CString const &text, double &x, double &y, double &z, unsigned int &op);

    /// Up to three numbers out of the result, missing ones 0. This and the next ones return 0 and write nothing when
    /// the result holds more, or what is no number.
    virtual int GetPositionData(double &x, double &y, double &z);
    /// Up to two numbers of the result.
    virtual int Get2NumberData(double &a, double &b);
    /// The one number of the result.
    virtual int GetNumberData(double &value);
    /// The low 32 bits of the one number of the result.
    virtual int GetINumberData(int &value);

    /// Adds a variable. Returns 0, and keeps the old value, when one of this name exists; also at the limit of the
    /// table or for a name that is too long.
    virtual int AddDoubleVar(char *name, double value);

    /// What the last parse left behind.
    VMCommand *GetResult() { return &m_result; }
    /// How many arguments that is.
    int GetGridArgNum() const { return m_result.GetCount(); }
    /// Its operation code, see `ParsingPositionNOp`.
    unsigned int GetOpCode() const { return m_result.GetOpCode(); }
    /// Gives it another one.
    void SetOpCode(unsigned int op) { m_result.SetOpCode(op); }
    /// The first argument of the result, where a walk begins; null when there is none.
    VMArguement *GetFirstArguement() { return m_result.GetFirst(); }
    /// The argument after the one given last.
    VMArguement *GetNextArguement() { return m_result.GetNext(); }
    /// The result as text, alive until the next call or parse.
    char const *GetCommandString() { return m_result.GetCommandString(); }

    /// The arguments of the result as doubles; an argument that is no number reads 0.
    CArray<double> &GetGridArgList();
    /// The same into a list of the caller.
    void GetGridArgList(CArray<double> &list) const;

    /// Repeat items expand to equal values from now on.
    void SetRelIteration() { m_relativeIteration = 1; }
    /// Repeat items expand to a running sum of equal steps from now on.
    void SetAbsIteration() { m_relativeIteration = 0; }

    /// Why and where the last parse failed; of kind kNone when it succeeded and before the first one. It tells as a
    /// value what `ReportError` and the standard error stream get to hear as texts.
    ParseFault const &GetFault() const { return m_fault; }

    /// The first place of the last line at which a number went beyond its range: of kind kIntegerOverflow or
    /// kNotFinite, or kNone. That is no fault; the parse goes on with what is left of the number.
    ParseFault const &GetOverflow() const { return m_overflow; }

    /// The names that the parser knows, and the literals of its last line.
    SymbolTable &GetSymbolTable() { return m_symbols; }

private:
    friend class command::CommandGrammar;

    void Report(std::string_view text);
    int ParseAs(int startWord, CString const &text);
    int ParseAsIntegers(int startWord, CString const &text);
    template <class Number>
    int ParseIntegerList(int startWord, CString const &text, CArray<Number> &list);

    SymbolTable m_symbols;
    VMCommand m_result;
    VMCommand m_working; ///< the argument list under construction
    std::int32_t m_allDoubles = 1;
    std::int32_t m_relativeIteration = 1;
    std::int32_t m_positionInputMode = 0;
    CArray<double> m_gridArguments;
    CArray<int> m_tableIntegers;
    CStringArray m_tableStrings;
    ParseFault m_fault;
    ParseFault m_overflow;
    lexer1 m_lexer;
};

} // namespace zvi::lib
