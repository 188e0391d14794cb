#include "zvi/spatial/MQuadTree.h"

#include <cstdio>

int main() {
    using namespace zvi::lib;
    MQuadTree tree;
    for (unsigned int key = 1; key <= 1000; ++key)
        tree.Insert(key, MQuadMBR2D{double(key), 0, double(key) + 0.5, 1}); // left, lower, right, upper

    zvi::MList<MQuadObj *> found;
    tree.GetIntersectObjList({10.2, 0, 12.2, 1}, found, 1); // 1: touching does not count
    for (MQuadObj *const object : found)
        std::printf("%u\n", object->GetKey()); // 12
                                               // 11
                                               // 10
}
