#pragma once

#include "zvi/Export.h"
#include "zvi/spatial/MQuadMBR2D.h"

#include <cstdint>

namespace zvi::lib {

class MQuadNode;

namespace spatial {
template <typename Space>
struct Access;
struct QuadSpace;
} // namespace spatial

/// What a quadtree indexes: a key, a bounding rectangle, and a word with a 28-bit signed type in its low bits and a
/// 4-bit status in its high bits. Applications derive from it to index objects of their own.
///
/// The rectangle may change while the object is in a tree: the object stays in the node where it was put, and queries
/// test the new rectangle. The tree keeps a coarse copy of the rectangle beside its pointer as long as nobody can have
/// changed it, which is why `GetMBR` and `SetMBR` tell the tree. Queries look at an object itself from then on, and at
/// an object of a derived class always, since the class may compute its rectangle.
class ZVI_API MQuadObj {
public:
    /// A zero rectangle, type -1, status 1.
    MQuadObj() = default;
    /// Copies key, rectangle, type and status; the copy is in no tree.
    MQuadObj(MQuadObj const &other);
    /// Copies key, rectangle, type and status; the object stays in its tree.
    MQuadObj &operator=(MQuadObj const &other);
    /// It may stand in a tree still, which must then only be cleared or destroyed.
    virtual ~MQuadObj();

    /// Sets the key; a tree that holds the object under another one does not learn of it.
    virtual void SetKey(unsigned int key);
    /// The key, 0 before it is set.
    virtual unsigned int GetKey();
    /// Copies the rectangle; the object stays in the node where it is.
    virtual void SetMBR(MQuadMBR2D &mbr);
    /// The stored rectangle itself: the caller may write to it.
    virtual MQuadMBR2D &GetMBR();
    /// Keeps the low 28 bits of `type`; the status stays.
    virtual void SetType(int type);
    /// The type, from -2^27 to 2^27 - 1.
    virtual int GetType();

protected:
    unsigned int m_key = 0;                     ///< the key
    MQuadMBR2D m_mbr;                           ///< the rectangle
    std::uint32_t m_typeAndStatus = 0x1fffffff; ///< the type, and four bits of status above it

private:
    friend struct spatial::Access<spatial::QuadSpace>;
    friend struct spatial::QuadSpace;

    /// The rectangle or the membership changed unseen once, or may have: no tree trusts its code of this object.
    bool m_unwatched = false;
    /// Node at which the object was inserted, as long as it is in exactly one pool below it with its rectangle
    /// unchanged; null otherwise.
    MQuadNode *m_home = nullptr;
};

} // namespace zvi::lib
