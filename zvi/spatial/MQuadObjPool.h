#pragma once

#include "zvi/core/Export.h"
#include "zvi/core/MArray.h"
#include "zvi/spatial/MQuadObj.h"

#include <limits>

namespace zvi::lib {

/// The objects of one quadtree node, in the order in which they came. Owns the array, not the objects. A copy holds the
/// same objects.
class ZVI_API MQuadObjPool {
public:
    MQuadObjPool() = default;
    MQuadObjPool(MQuadObjPool const &other);
    MQuadObjPool &operator=(MQuadObjPool const &other);
    virtual ~MQuadObjPool();

    int GetCount() const { return static_cast<int>(m_objects.Size()); }
    bool IsEmpty() const { return m_objects.Empty(); }
    /// The object at `index`, null when there is none.
    MQuadObj *GetAt(int index) const;

    /// Appends the object. A first object whose status is not 1 leaves the pool before that.
    void Add(MQuadObj *object);
    /// Removes the object at `index` and moves those behind it one place down; nothing when there is none.
    void RemoveAt(int index);
    /// Place of the object, searched from last to first; -1 when it is absent.
    int FindFromLast(MQuadObj const *object) const;

private:
    friend class MQuadNode;
    friend class MQuadObj;

    // Beside each pointer stands a note: the object's rectangle as it was when the object came. A note is trusted as
    // long as nobody can have changed the rectangle, and queries then need not touch the object. A note that is not
    // trusted has a minX that is not a number and no bounds otherwise, so that no query passes it over.
    static constexpr MQuadMBR2D kNotTrusted = {
        std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::infinity(),
        std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};

    /// Status of an object in use. Trusted notes stand for such objects only.
    static constexpr std::uint32_t kLiveStatus = 1;

    static bool IsTrusted(MQuadMBR2D const &note) { return note.minX == note.minX; }

    void Append(MQuadObj *object, MQuadMBR2D const &note);
    void DropFirstUnlessLive();
    MQuadMBR2D RectangleAt(std::size_t index) const;
    void Swap(MQuadObjPool &other);

    MArray<MQuadObj *> m_objects;
    MArray<MQuadMBR2D> m_notes;
};

} // namespace zvi::lib
