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

namespace zvi::lib {

namespace command {
class CommandGrammar;
}

/// Reads one line of the command language per call: expressions, positions, number and node lists, grid definitions.
///
/// Every `Parsing...` entry but `_Parsing` normalises the text (see NormalizeCommandText.h) and puts the start word of
/// its mode in front. It returns 1 on success and 0 on failure, and leaves the arguments in `GetResult`. After a
/// failure the result holds what had been added before it. Numbers are computed while the line is read; there is no
/// syntax tree and no recursion. The grammar stands in CommandGrammarDetail.h.
///
///     Parser parser;
///     double x = 0, y = 0, z = 0;
///     if (parser.ParsingPositionArg(L"10 2*5"))
///         parser.GetPositionData(x, y, z); // 10, 10, 0
///
/// Limits: a line of 2,047 bytes with its start word, and 10,000,000 arguments; beyond them a parse fails.
class ZVI_API Parser : public yyfparser {
public:
    /// Most arguments that the lists of one parse may hold.
    static constexpr std::int64_t kMostArguments = 10'000'000;

    Parser();
    ~Parser() override;

    /// Receives the text of each failure, the parser's own words; does nothing unless overridden.
    virtual void ReportError(CString const &text);

    /// How `ParsingPosition...` read a bare list: 0 absolute, 1 relative, 2 polar (length, angle in degrees).
    virtual void SetPreModePosNOp(int mode);

    /// Parses a text as it stands: no normalisation, and the start word is part of it.
    virtual int _Parsing(CString const &text);

    virtual int ParsingPositionArg(CString const &text);
    virtual int ParsingNumberArg(CString const &text);
    virtual int Parsing2NumberArg(CString const &text);
    virtual int ParsingINumberArg(CString const &text);
    /// Grid definitions: a repeat item `3@2` gives 2, 4, 6 in the absolute form and 2, 2, 2 in the relative one.
    virtual int ParsingGridDefineAbs(CString const &text);
    virtual int ParsingGridDefineRel(CString const &text);
    virtual int ParsingEQGridDefine(CString const &text);
    virtual int ParsingCommandLine(CString const &text);
    /// `table` is kept in the parser; nothing reads it yet.
    virtual int ParsingByTable(CString const &text, CArray<int> &table);
    /// The lists replace the contents of `list`; on failure it stays as it was.
    virtual int ParsingNodeList(CString const &text, CArray<unsigned int> &list);
    virtual int ParsingNodeList(CString const &text, CArray<int> &list);
    virtual int ParsingListByTo(CString const &text, CArray<int> &list);
    /// Triples in brackets, `[1,2,3],[4,5]`, as x, y, z in a row; empties `coordinates` once the line was read.
    virtual int ParsingPositionXYZList(CString const &text, CArray<double> &coordinates);
    /// A position with its operation code: 1 relative, 2 relative polar, 3 absolute, 4 and 5 as 1 and 2 after "@@".
    virtual int ParsingPositionNOp(CString const &text, double &x, double &y, double &z, unsigned int &op);

    /// Up to three, two, or one number out of the result; they return 0 and write nothing when it does not fit.
    virtual int GetPositionData(double &x, double &y, double &z);
    virtual int Get2NumberData(double &a, double &b);
    virtual int GetNumberData(double &value);
    virtual int GetINumberData(int &value);

    /// Adds a variable. Returns 0, and keeps the old value, when one of this name exists; also at the limit of the
    /// table or for a name that is too long.
    virtual int AddDoubleVar(char *name, double value);

    VMCommand *GetResult() { return &m_result; }
    int GetGridArgNum() const { return m_result.GetCount(); }
    unsigned int GetOpCode() const { return m_result.GetOpCode(); }
    void SetOpCode(unsigned int op) { m_result.SetOpCode(op); }
    /// Walk over the arguments of the result; null at the end.
    VMArguement *GetFirstArguement() { return m_result.GetFirst(); }
    VMArguement *GetNextArguement() { return m_result.GetNext(); }
    /// The result as text, alive until the next call or parse.
    char const *GetCommandString() { return m_result.GetCommandString(); }

    /// The arguments of the result as doubles; an argument that is no number reads 0.
    CArray<double> &GetGridArgList();
    void GetGridArgList(CArray<double> &list) const;

    /// How repeat items expand from now on: each value the same, or a running sum of equal steps.
    void SetRelIteration() { m_relativeIteration = 1; }
    void SetAbsIteration() { m_relativeIteration = 0; }

    /// Why and where the last parse failed; of kind kNone when it succeeded and before the first one. It tells as a
    /// value what `ReportError` and the standard error stream get to hear as texts.
    ParseFault const &GetFault() const { return m_fault; }

    /// The names that the parser knows, and the literals of its last line.
    SymbolTable &GetSymbolTable() { return m_symbols; }

private:
    friend class command::CommandGrammar;

    void Report(char const *text);
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
    lexer1 m_lexer;
};

} // namespace zvi::lib
