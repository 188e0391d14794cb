#include "zvi/command/CStrParser.h"
#include "zvi/command/MParser.h"
#include "zvi/units/MUnitCtrl.h"

#include <cstdio>

int main() {
    using namespace zvi::lib;
    double value = 0;
    if (CStrParser::GetFloatNumber(L"sqrt(4)+3", value))
        std::printf("%g\n", value); // 5
    CArray<int> nodes;
    CStrParser::GetNodeList(L"1to7by2 20", nodes);
    for (int i = 0; i < nodes.GetSize(); ++i)
        std::printf(i == 0 ? "%d" : " %d", nodes[i]); // 1 3 5 7 20
    std::printf("\n");

    MUnitCtrl units(nullptr);
    units.Initialize(1); // metres
    MParser parser;
    if (parser.ParsingUNumberArg(L"2m+30cm", &units) && parser.GetNumberData(value))
        std::printf("%g m\n", value); // 2.3 m
}
