#pragma once

#include "zvi/core/MArray.h"
#include "zvi/core/MHashMap.h"
#include "zvi/curves/DomainRecords.h"

#include <cstddef>

namespace zvi::lib {
class MDomainMaker;
}

namespace zvi::lib::curves {

/// Edges, or vertices, as the keys of a map.
using EdgeSet = MHashMap<int, int>;

inline bool Holds(EdgeSet const &set, int key) {
    return set.Lookup(key);
}

/// Drops the first `count` entries, or all of a shorter array.
void DropFront(MArray<int> &values, std::size_t count);

/// Divides loops by the plain operations on lists, walk by walk, whatever the graph. `LoopDivider` does the same faster
/// on what it covers.
class PlainDivision {
public:
    explicit PlainDivision(MDomainMaker &maker) : m_maker(maker) {}

    /// Divides until no domain can be divided any more, and appends the domains to those of the maker; appends none
    /// when there are more to look at than the limit allows.
    void Divide(DM_SURF loop);

    /// Divides one domain at the first usable chord into `outA` and `outB`: 1 if divided, 0 if not.
    int DivideOnce(DM_SURF &surf, DM_SURF &outA, DM_SURF &outB);

private:
    /// A corner of a loop as it is run: the vertex, the one before it, and the edges that lead to it and on.
    struct Corner {
        int vtex;
        int previousVtex;
        int incoming;
        int outgoing;
    };

    std::size_t CountOpenEdges(int vtex) const;
    void BarEdgesAlongBoundary(Corner const &corner);
    int FindChordAt(Corner const &corner);
    void HangLoop(DM_SURF const &surf, DM_SURF &path, DM_SURF const &loop, DM_SURF &outA, DM_SURF &outB);
    int SplitAlongChord(DM_SURF &surf, DM_SURF &path, DM_SURF &outA, DM_SURF &outB);

    MDomainMaker &m_maker;
    EdgeSet m_barred; ///< edges that the chord of the present division may not use
};

} // namespace zvi::lib::curves
