#pragma once

#include "zvi/drawing/BoxIndexDetail.h"
#include "zvi/drawing/StretchDetail.h"

#include <functional>
#include <vector>

namespace zvi::lib::drawing {

/// The boxes of stretches, each grown by `by`.
std::vector<Box> BoxesOf(std::vector<Stretch const *> const &stretches, double by, base::Workers const &workers);

/// Into how many parts stretches are cut, given those of mean extent, by the extents of their boxes.
std::vector<std::size_t> PartCounts(std::vector<Box> const &boxes, double partsOfMean);

/// Finds stretches near a place. Where their boxes crowd, because stretches are long and slanted or round, it looks at
/// the boxes of parts of them, which keep nearer to the stretch itself.
class StretchIndex {
public:
    /// Boxes are grown by `grown`. Where they crowd, `groups` is asked for the groups of the stretches, by number:
    /// FindNear passes over those of the same group. Before that `tell` is told how many boxes each one meets, on
    /// average of some; of few boxes that counts as none.
    StretchIndex(std::vector<Stretch const *> const &stretches, double grown, base::Workers const &workers,
                 std::function<void(double crowd)> const &tell = {},
                 std::function<std::vector<int>()> const &groups = {});

    /// An index that looks at the boxes of whole stretches even where they crowd, as DoBoxesCrowd() tells.
    static StretchIndex OfWholes(std::vector<Stretch const *> const &stretches, double grown,
                                 base::Workers const &workers);
    bool DoBoxesCrowd() const;
    /// Into how many parts a stretch of mean extent is cut where they crowd.
    double PartsOfMean() const;

    /// What a search needs beside the index; one for each thread.
    struct Search {
        std::vector<int> boxes; ///< found last
        std::vector<bool> isFound;
    };

    bool IsCrowded() const { return !m_owners.empty(); }
    /// Where a stretch stands along a space-filling curve, which depends on the boxes alone.
    int RankOf(int stretch) const { return m_ranks[Index(stretch)]; }
    int AtRank(int rank) const { return m_order[Index(rank)]; }
    /// Brings stretches into that order, each once.
    void Arrange(std::vector<int> &stretches) const;

    /// Fills `out` with the stretches that come near `query`, each once; some that do not are among them, and where
    /// boxes crowd those of a group are not. Their order depends on the stretches alone.
    void Find(Box const &query, std::vector<int> &out, Search &search, int passedOver = BoxIndex::kNoGroup) const;
    /// The same for what comes near a stretch of the index, itself included, and none of its group otherwise.
    void FindNear(int stretch, std::vector<int> &out, Search &search) const;

    /// The index of the boxes, of which each is a stretch where they do not crowd.
    BoxIndex const &Boxes() const { return m_index; }

    /// Calls `look(stretch)` as BoxIndex::LookAlong does; a stretch may come several times.
    template <typename Look>
    void LookAlong(DrawingPoint p, DrawingPoint direction, Look look) const {
        m_index.LookAlong(p, direction, [&](int box) { return look(OwnerOf(box)); });
    }

private:
    StretchIndex(std::vector<Box> boxes, base::Workers const &workers);
    void HoldParts(std::vector<Stretch const *> const &stretches, double grown, base::Workers const &workers);
    void PackParts(std::vector<int> groups, base::Workers const &workers);
    int OwnerOf(int box) const { return IsCrowded() ? m_owners[Index(box)] : box; }
    void AddOwners(Box const &query, int passedOver, std::vector<int> &out, Search &search) const;

    std::vector<Box> m_boxes; ///< of the stretches, or of their parts
    BoxIndex m_index;
    double m_crowd;           ///< how many others the box of a stretch meets, on average of some
    std::vector<int> m_order; ///< of the stretches
    std::vector<int> m_ranks;
    std::vector<int> m_groups;
    std::vector<int> m_owners;         ///< of each part, the stretch; empty when stretches are not parted
    std::vector<std::size_t> m_begins; ///< where the parts of each stretch begin, and the end
};

} // namespace zvi::lib::drawing
