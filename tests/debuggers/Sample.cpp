// Values of the types that debuggers show, for tests/debuggers/expected.txt: stop at `Show`.

#include "zvi/core/CArray.h"
#include "zvi/core/CMap.h"
#include "zvi/core/CSimpleMemMgr.h"
#include "zvi/core/CString.h"
#include "zvi/core/CStringArray.h"
#include "zvi/core/MArray.h"
#include "zvi/core/MFixedSizeMemMgr.h"
#include "zvi/core/MHashMap.h"
#include "zvi/core/MList.h"
#include "zvi/core/MTArray.h"
#include "zvi/core/MVector.h"
#include "zvi/curves/T_LINE_G.h"
#include "zvi/spatial/MOcTree.h"
#include "zvi/spatial/MQuadTree.h"

#include <exception>

using namespace zvi;
using namespace zvi::lib;

[[gnu::noinline]] void Show() {
    asm volatile("");
}

int main() try {
    CString const text(L"4 µm");
    CString const empty;
    MArray<int> const array = {3, 1, 2};
    CArray<double> const clientArray = {1.5, 2.5};
    CStringArray texts;
    texts.Add(text);
    int numbers[] = {7, 8};
    MTArray<int> const view(numbers, 2);
    MList<int> const list = {5, 6};
    MHashMap<int, double> const map = {{1, 0.5}, {2, 1.5}};
    MHashMap<int, int> const noMap;
    CMap<int, int> const clientMap = {{1, 10}, {9, 90}};
    MFixedSizeMemMgr const pool(24, 4096);
    CSimpleMemMgr const simplePool(8, 0);
    [[maybe_unused]] T_LINE_G const line = T_LINE_G().Set({0, 0, 0}, {1, 2, 3});
    [[maybe_unused]] T_LINE_G const circle = T_LINE_G().Set({1, 1, 0}, 2.5, {0, 0, 1});
    [[maybe_unused]] T_LINE_G const arc = T_LINE_G().Set({1, 0, 0}, {0, 1, 0}, 1, {0, 0, 0}, {0, 0, 1}, 1, 1e-4);
    MQuadTree tree;
    tree.Insert(7U, {0, 0, 1, 1});
    MOcTree const spaceTree;
    [[maybe_unused]] MVector<double, 2> const pair(1, 2);
    [[maybe_unused]] MVector<double, 3> const triple(1, 2, 3);
    Show();
} catch (std::exception const &) {
    return 1;
}
