#include "zvi/command/yyfparser.h"

#include <cstdio>

namespace zvi::lib {

yyfparser::~yyfparser() = default;

void yyfparser::yyerror(char const *text) {
    std::fprintf(stderr, "%s\n", text);
}

} // namespace zvi::lib
