#pragma once

namespace zvi::lib {

/// Token numbers of the command language. A single-character token is its own character code.
/// The start words select what is read; the front end looks them up in the symbol table by these numbers.
enum CommandToken : int {
    kTokenEnd = 0,                  ///< the end of the line
    kTokenGetPosition = 257,        ///< starts a position
    kTokenCommandLine = 258,        ///< starts a command with any arguments
    kTokenGridInput = 259,          ///< starts a grid: a list of numbers
    kTokenNodeListInput = 260,      ///< starts a list of node numbers
    kTokenEqGridInput = 261,        ///< starts a grid of equal steps: one or two numbers
    kTokenRecordInput = 262,        ///< starts a named record
    kTokenNumberInput = 263,        ///< starts one number
    kTokenINumberInput = 264,       ///< starts one integer
    kTokenGet2Number = 265,         ///< starts up to two numbers
    kTokenArgError = 266,           ///< the word that fails wherever it stands
    kTokenBlankArg = 267,           ///< the word for a missing argument
    kTokenGetPositionXyzList = 268, ///< starts a list of positions in brackets
    kTokenGetIntsByToList = 269,    ///< starts a list of integers
    kTokenArgBy = 270,              ///< BY, the step of a range
    kTokenArgTo = 271,              ///< TO, the end of a range
    kTokenNumber = 272,             ///< a literal or a variable
    kTokenName = 273,               ///< a word that is nothing else
    kTokenFunction = 274            ///< a built-in function
};

} // namespace zvi::lib
