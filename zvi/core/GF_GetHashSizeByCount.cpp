#include "zvi/core/GF_GetHashSizeByCount.h"

namespace zvi {

namespace {

struct HashSizeBand {
    long below;
    long binCount;
};

constexpr HashSizeBand kHashSizeBands[] = {
    {10, 13},           {50, 59},           {100, 113},           {300, 331},
    {600, 661},         {1000, 1103},       {3000, 3301},         {5000, 5501},
    {7000, 7703},       {10000, 11003},     {30000, 33013},       {50000, 55001},
    {70000, 77003},     {100000, 110017},   {300000, 330017},     {500000, 550007},
    {700000, 770027},   {1000000, 1100009}, {2000000, 2200013},   {3000000, 3300001},
    {4000000, 4400021}, {5000000, 5500003}, {6000000, 6600001},   {7000000, 7700071},
    {8000000, 8800009}, {9000000, 9900047}, {10000000, 11000027},
};

/// Bin count for ten million elements and more.
constexpr long kLargestBinCount = 20000003;

} // namespace

long GF_GetHashSizeByCount(long count) {
    for (HashSizeBand const &band : kHashSizeBands)
        if (count < band.below)
            return band.binCount;
    return kLargestBinCount;
}

} // namespace zvi
