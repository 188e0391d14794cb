#pragma once

#include "zvi/Export.h"
#include "zvi/spatial/MOcMBR3D.h"
#include "zvi/spatial/MOcType.h"

#include <cstdint>

namespace zvi::lib {

class MOcNode;

namespace spatial {
template <typename Space>
struct Access;
struct OcSpace;
} // namespace spatial

/// What an octree indexes: a key, a bounding box and a type. Applications derive from it to index objects of their own.
///
/// The box may change while the object is in a tree: the object stays in the node where it was put, and queries test
/// the new box. The tree keeps a coarse copy of the box beside its pointer as long as nobody can have changed it. After
/// `SetMBR` within a tree queries look at the object itself, and at an object of a derived class always.
class ZVI_API MOcObj {
public:
    /// Key 0, a zero box, type -1, status 1.
    MOcObj() = default;
    /// Copies key, box and type; the copy is in no tree.
    MOcObj(MOcObj const &other);
    /// Copies key, box and type; the object stays in its tree.
    MOcObj &operator=(MOcObj const &other);
    /// It may stand in a tree still, which must then only be cleared or destroyed.
    virtual ~MOcObj();

    /// Sets the key; a tree that holds the object under another one does not learn of it.
    virtual void SetItr(std::uint64_t key);
    /// The key, 0 before it is set.
    virtual std::uint64_t GetItr();
    /// Copies the box; the object stays in the node where it is.
    virtual void SetMBR(MOcMBR3D &mbr);
    /// The box.
    virtual MOcMBR3D GetMBR();
    /// Keeps the low 28 bits of `type`; the status stays.
    virtual void SetType(int type);
    /// The type, from -2^27 to 2^27 - 1.
    virtual int GetType();

protected:
    std::uint64_t m_key = 0; ///< the key
    MOcMBR3D m_mbr;          ///< the box
    MOcType m_type;          ///< the type and the status

private:
    friend struct spatial::Access<spatial::OcSpace>;
    friend struct spatial::OcSpace;

    /// The box or the membership changed unseen once, or may have: no tree trusts its code of this object.
    bool m_unwatched = false;
    /// Node at which the object was inserted, as long as it is in exactly one pool below it with its box unchanged;
    /// null otherwise.
    MOcNode *m_home = nullptr;
};

} // namespace zvi::lib
