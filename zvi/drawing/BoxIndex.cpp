#include "zvi/drawing/BoxIndexDetail.h"

#include <algorithm>

namespace zvi::lib::drawing {

namespace {

/// Extent to which the boxes are scaled. The tree takes boxes 1e-6 apart for touching, a millionth of a millionth of
/// it.
constexpr double kExtent = 0x1p20;

/// Boxes that a node of the tree holds before it splits.
constexpr int kNodeCapacity = 16;

Box Around(std::vector<Box> const &boxes) {
    Box all = boxes.empty() ? Box{} : boxes.front();
    for (Box const &box : boxes)
        all = {std::min(all.minX, box.minX), std::min(all.minY, box.minY), std::max(all.maxX, box.maxX),
               std::max(all.maxY, box.maxY)};
    return all;
}

} // namespace

BoxIndex::BoxIndex(std::vector<Box> const &boxes) : objects(boxes.size()), tree(kExtent, kExtent, kNodeCapacity) {
    Box const all = Around(boxes);
    double const extent = std::max(all.maxX - all.minX, all.maxY - all.minY);
    origin = {all.minX, all.minY};
    scale = extent > 0.0 ? kExtent / extent : 1.0;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        MQuadMBR2D mbr = Scaled(boxes[i]);
        objects[i].SetKey(static_cast<unsigned int>(i));
        objects[i].SetMBR(mbr);
        tree.Insert(&objects[i]);
    }
}

MQuadMBR2D BoxIndex::Scaled(Box const &box) const {
    return {(box.minX - origin.x) * scale, (box.minY - origin.y) * scale, (box.maxX - origin.x) * scale,
            (box.maxY - origin.y) * scale};
}

void BoxIndex::Find(Box const &query, std::vector<int> &out) {
    out.clear();
    hits.RemoveAll();
    tree.GetIntersectObjList(Scaled(query), hits, 0);
    for (MQuadObj *const hit : hits)
        out.push_back(static_cast<int>(hit->GetKey()));
}

} // namespace zvi::lib::drawing
