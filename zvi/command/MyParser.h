#pragma once

#include "zvi/command/Parser.h"

#include <memory>

namespace zvi::lib {

/// A handle of a `Parser` of its own; every entry forwards to it and is documented there.
class ZVI_API MyParser {
public:
    /// Makes the parser that it owns.
    MyParser();
    /// Deletes it.
    virtual ~MyParser();
    MyParser(MyParser const &) = delete;
    MyParser &operator=(MyParser const &) = delete;

    /// The entry of this name of `Parser`.
    void SetPreModePosNOp(int mode) { m_parser->SetPreModePosNOp(mode); }
    int _Parsing(CString const &text) { return m_parser->_Parsing(text); }
    int ParsingPositionArg(CString const &text) { return m_parser->ParsingPositionArg(text); }
    int ParsingNumberArg(CString const &text) { return m_parser->ParsingNumberArg(text); }
    int Parsing2NumberArg(CString const &text) { return m_parser->Parsing2NumberArg(text); }
    int ParsingINumberArg(CString const &text) { return m_parser->ParsingINumberArg(text); }
    int ParsingGridDefineAbs(CString const &text) { return m_parser->ParsingGridDefineAbs(text); }
    int ParsingGridDefineRel(CString const &text) { return m_parser->ParsingGridDefineRel(text); }
    int ParsingEQGridDefine(CString const &text) { return m_parser->ParsingEQGridDefine(text); }
    int ParsingCommandLine(CString const &text) { return m_parser->ParsingCommandLine(text); }
    int ParsingByTable(CString const &text, CArray<int> &table) { return m_parser->ParsingByTable(text, table); }
    int ParsingNodeList(CString const &text, CArray<unsigned int> &list) {
        return m_parser->ParsingNodeList(text, list);
    }
    int ParsingNodeList(CString const &text, CArray<int> &list) { return m_parser->ParsingNodeList(text, list); }
    int ParsingListByTo(CString const &text, CArray<int> &list) { return m_parser->ParsingListByTo(text, list); }
    int ParsingPositionXYZList(CString const &text, CArray<double> &coordinates) {
        return m_parser->ParsingPositionXYZList(text, coordinates);
    }
    int ParsingPositionNOp(CString const &text, double &x, double &y, double &z, unsigned int &op) {
        return m_parser->ParsingPositionNOp(text, x, y, z, op);
    }

    /// What the entry of this name of `Parser` gives.
    int GetPositionData(double &x, double &y, double &z) { return m_parser->GetPositionData(x, y, z); }
    int Get2NumberData(double &a, double &b) { return m_parser->Get2NumberData(a, b); }
    int GetNumberData(double &value) { return m_parser->GetNumberData(value); }
    int GetINumberData(int &value) { return m_parser->GetINumberData(value); }
    int AddDoubleVar(char *name, double value) { return m_parser->AddDoubleVar(name, value); }

    /// What the entry of this name of `Parser` gives or sets.
    VMCommand *GetResult() { return m_parser->GetResult(); }
    int GetGridArgNum() const { return m_parser->GetGridArgNum(); }
    unsigned int GetOpCode() const { return m_parser->GetOpCode(); }
    void SetOpCode(unsigned int op) { m_parser->SetOpCode(op); }
    VMArguement *GetFirstArguement() { return m_parser->GetFirstArguement(); }
    VMArguement *GetNextArguement() { return m_parser->GetNextArguement(); }
    ParseFault const &GetFault() const { return m_parser->GetFault(); }
    SymbolTable &GetSymbolTable() { return m_parser->GetSymbolTable(); }
    char const *GetCommandString() { return m_parser->GetCommandString(); }
    CArray<double> &GetGridArgList() { return m_parser->GetGridArgList(); }
    void GetGridArgList(CArray<double> &list) const { m_parser->GetGridArgList(list); }
    void SetRelIteration() { m_parser->SetRelIteration(); }
    void SetAbsIteration() { m_parser->SetAbsIteration(); }

protected:
    /// Holds `parser` instead of a plain one, for a class that wants to hear its messages.
    explicit MyParser(std::unique_ptr<Parser> parser) : m_parser(std::move(parser)) {}

    std::unique_ptr<Parser> m_parser; ///< never null
};

} // namespace zvi::lib
