#pragma once

#include "zvi/Export.h"

namespace zvi::lib {

/// What the command parser shares with any parser of the family: the way in which an unexpected token is reported.
class ZVI_API yyfparser {
public:
    /// Virtual: a parser is deleted as the one that it is.
    virtual ~yyfparser();

protected:
    /// Receives "syntax error" at the first unexpected token of a parse. Writes the text and a line feed to the
    /// standard error stream; a parser with a better place for it overrides this.
    virtual void yyerror(char const *text);
};

} // namespace zvi::lib
