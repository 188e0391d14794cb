#pragma once

namespace zvi::lib {

/// Token numbers of the command language. A single-character token is its own character code.
/// The start words select what is read; the front end looks them up in the symbol table by these numbers.
enum CommandToken : int {
    kTokenEnd = 0,
    kTokenGetPosition = 257,
    kTokenCommandLine = 258,
    kTokenGridInput = 259,
    kTokenNodeListInput = 260,
    kTokenEqGridInput = 261,
    kTokenRecordInput = 262,
    kTokenNumberInput = 263,
    kTokenINumberInput = 264,
    kTokenGet2Number = 265,
    kTokenArgError = 266,
    kTokenBlankArg = 267,
    kTokenGetPositionXyzList = 268,
    kTokenGetIntsByToList = 269,
    kTokenArgBy = 270,
    kTokenArgTo = 271,
    kTokenNumber = 272,
    kTokenName = 273,
    kTokenFunction = 274
};

} // namespace zvi::lib
