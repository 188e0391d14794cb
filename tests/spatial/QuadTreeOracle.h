#pragma once

#include "zvi/spatial/MQuadMBR2D.h"

#include <array>
#include <cmath>
#include <memory>
#include <utility>
#include <vector>

/// A quadtree done step by step, with no care for speed: what `MQuadTree` must equal in nodes, pools and answers.
namespace quadtree_oracle {

using zvi::lib::MQuadMBR2D;

struct Object {
    unsigned int key = 0;
    int type = -1;
    MQuadMBR2D mbr;
};

inline bool Inside(MQuadMBR2D const &m, MQuadMBR2D const &r) {
    return m.minX >= r.minX && m.minY >= r.minY && m.maxX < r.maxX && m.maxY < r.maxY;
}

inline bool HasPoint(MQuadMBR2D const &r, double x, double y) {
    return x >= r.minX && y >= r.minY && x < r.maxX && y < r.maxY;
}

inline bool Meet(MQuadMBR2D const &a, MQuadMBR2D const &query, int strict) {
    double const t = strict == 0 ? 1e-6 : -1e-9;
    return !(query.minX - t > a.maxX || query.minY - t > a.maxY || a.minX > t + query.maxX || a.minY > t + query.maxY);
}

inline std::array<MQuadMBR2D, 4> Quadrants(MQuadMBR2D const &r) {
    double const x = (r.minX + r.maxX) * 0.5;
    double const y = (r.minY + r.maxY) * 0.5;
    return {{{r.minX, r.minY, x, y}, {x, r.minY, r.maxX, y}, {r.minX, y, x, r.maxY}, {x, y, r.maxX, r.maxY}}};
}

template <typename Regions>
int QuadrantOf(MQuadMBR2D const &m, Regions const &regions) {
    for (int i = 0; i < 4; ++i) {
        if (Inside(m, regions[static_cast<std::size_t>(i)]))
            return i;
    }
    return 4;
}

struct Node {
    MQuadMBR2D region;
    Node *parent = nullptr;
    std::array<std::unique_ptr<Node>, 4> children;
    std::vector<Object *> pool;

    bool IsLeaf() const { return children[0] == nullptr; }

    std::array<MQuadMBR2D, 4> ChildRegions() const {
        return {children[0]->region, children[1]->region, children[2]->region, children[3]->region};
    }

    void MakeChildren(std::array<MQuadMBR2D, 4> const &regions) {
        for (std::size_t i = 0; i < 4; ++i) {
            children[i] = std::make_unique<Node>();
            children[i]->parent = this;
            children[i]->region = regions[i];
        }
    }

    void DropChildren() {
        for (auto &child : children)
            child.reset();
    }
};

class Tree {
public:
    Tree(double width, double height, int capacity)
        : m_width(width), m_height(height), m_capacity(static_cast<std::size_t>(capacity)) {}

    Node const *Root() const { return m_root.get(); }

    void Insert(Object *object) {
        MQuadMBR2D const m = object->mbr;
        if (m_root == nullptr)
            m_root = std::make_unique<Node>();
        MQuadMBR2D &r = m_root->region;
        if (r.minX == r.maxX && r.minY == r.maxY) {
            r = {m.minX - m_width * 0.5, m.minY - m_height * 0.5, m.maxX + m_width * 0.5, m.maxY + m_height * 0.5};
            m_root->pool.push_back(object);
            return;
        }
        bool const doubles = !m_root->IsLeaf() || m_root->pool.size() >= m_capacity;
        while (!Inside(m, r)) {
            if (doubles)
                Double(m);
            else
                Soften(m);
        }
        Descend(*m_root, object);
    }

    bool Delete(Object *object) { return m_root != nullptr && Delete(*m_root, object, 0); }

    void Query(MQuadMBR2D const &query, int strict, std::vector<int> const *types, std::vector<Object *> &hits) const {
        if (m_root != nullptr)
            Query(*m_root, query, strict, types, hits);
    }

private:
    void Soften(MQuadMBR2D const &m) {
        MQuadMBR2D &r = m_root->region;
        double const g = (r.maxX - r.minX) * 0.25;
        if (!HasPoint(r, m.minX, m.minY)) {
            if (r.minX > m.minX)
                r.minX = m.minX - g;
            if (r.minY > m.minY)
                r.minY = m.minY - g;
            double const w = r.maxX - r.minX;
            double const h = r.maxY - r.minY;
            if (w > h)
                r.minY -= w - h;
            else
                r.minX -= h - w;
        }
        if (!HasPoint(r, m.maxX, m.maxY)) {
            if (m.maxX >= r.maxX)
                r.maxX = g + m.maxX;
            if (m.maxY >= r.maxY)
                r.maxY = g + m.maxY;
            double const w = r.maxX - r.minX;
            double const h = r.maxY - r.minY;
            if (w > h)
                r.maxY += w - h;
            else
                r.maxX += h - w;
        }
    }

    void Double(MQuadMBR2D const &m) {
        if (!HasPoint(m_root->region, m.minX, m.minY))
            DoubleToward(m.minX, m.minY);
        if (!HasPoint(m_root->region, m.maxX, m.maxY))
            DoubleToward(m.maxX, m.maxY);
    }

    void DoubleToward(double x, double y) {
        MQuadMBR2D &r = m_root->region;
        double const w = r.maxX - r.minX;
        double const h = r.maxY - r.minY;
        std::size_t corner;
        if (x < r.minX && y >= r.maxY) {
            corner = 1;
            r = {r.minX - w, r.minY, r.maxX, r.maxY + h};
        } else if (x < r.minX) {
            corner = 3;
            r = {r.minX - w, r.minY - h, r.maxX, r.maxY};
        } else if (y >= r.maxY) {
            corner = 0;
            r = {r.minX, r.minY, r.maxX + w, r.maxY + h};
        } else {
            corner = 2;
            r = {r.minX, r.minY - h, r.maxX + w, r.maxY};
        }
        auto oldChildren = std::move(m_root->children);
        m_root->MakeChildren(Quadrants(r));
        Node &heir = *m_root->children[corner];
        heir.children = std::move(oldChildren);
        for (auto &child : heir.children) {
            if (child != nullptr)
                child->parent = &heir;
        }
        heir.pool.swap(m_root->pool);
    }

    void Descend(Node &start, Object *object) {
        Node *node = &start;
        while (!node->IsLeaf()) {
            int const q = QuadrantOf(object->mbr, node->ChildRegions());
            if (q == 4) {
                node->pool.push_back(object);
                return;
            }
            node = node->children[static_cast<std::size_t>(q)].get();
        }
        auto const regions = Quadrants(node->region);
        if (node->pool.size() < m_capacity || !CanSplit(*node, object->mbr, regions)) {
            node->pool.push_back(object);
            return;
        }
        std::size_t const before = node->pool.size();
        node->MakeChildren(regions);
        for (std::size_t i = node->pool.size(); i-- > 0;) {
            int const q = QuadrantOf(node->pool[i]->mbr, regions);
            if (q != 4) {
                node->children[static_cast<std::size_t>(q)]->pool.push_back(node->pool[i]);
                node->pool.erase(node->pool.begin() + static_cast<std::ptrdiff_t>(i));
            }
        }
        int const q = QuadrantOf(object->mbr, regions);
        if (q != 4) {
            Descend(*node->children[static_cast<std::size_t>(q)], object);
            return;
        }
        if (node->pool.size() == before)
            node->DropChildren();
        node->pool.push_back(object);
    }

    static bool CanSplit(Node const &node, MQuadMBR2D const &m, std::array<MQuadMBR2D, 4> const &regions) {
        int const r = QuadrantOf(m, regions);
        int q = r;
        if (node.pool.size() > 1) {
            q = QuadrantOf(node.pool[0]->mbr, regions);
            for (Object const *object : node.pool) {
                if (QuadrantOf(object->mbr, regions) != q)
                    return true;
            }
        }
        if (r != q)
            return true;
        if (r == 4)
            return false;
        double const w = node.region.maxX - node.region.minX;
        double const h = node.region.maxY - node.region.minY;
        double const d = std::sqrt(w * w + h * h) / 20.0;
        for (Object const *object : node.pool) {
            double const dx = (object->mbr.minX + object->mbr.maxX) * 0.5 - (m.minX + m.maxX) * 0.5;
            double const dy = (object->mbr.minY + object->mbr.maxY) * 0.5 - (m.minY + m.maxY) * 0.5;
            if (std::sqrt(dx * dx + dy * dy) >= d)
                return true;
        }
        return false;
    }

    bool Delete(Node &node, Object *object, int anywhere) {
        if (anywhere == 0 && !Inside(object->mbr, node.region))
            return false;
        if (!node.IsLeaf()) {
            int const likely = QuadrantOf(object->mbr, node.ChildRegions());
            if (likely != 4 && Delete(*node.children[static_cast<std::size_t>(likely)], object, 0))
                return true;
            for (int i = 0; i < 4; ++i) {
                if (i != likely && Delete(*node.children[static_cast<std::size_t>(i)], object, 1))
                    return true;
            }
        }
        for (std::size_t i = node.pool.size(); i-- > 0;) {
            if (node.pool[i] == object) {
                node.pool.erase(node.pool.begin() + static_cast<std::ptrdiff_t>(i));
                if (node.pool.empty() && node.IsLeaf() && node.parent != nullptr)
                    Merge(*node.parent);
                return true;
            }
        }
        return false;
    }

    static void Merge(Node &node) {
        for (auto const &child : node.children) {
            if (child == nullptr || !child->IsLeaf() || !child->pool.empty())
                return;
        }
        node.DropChildren();
        if (node.parent != nullptr)
            Merge(*node.parent);
    }

    static void Query(Node const &node, MQuadMBR2D const &query, int strict, std::vector<int> const *types,
                      std::vector<Object *> &hits) {
        if (!Meet(node.region, query, strict))
            return;
        for (Object *object : node.pool) {
            if (types != nullptr && (*types)[static_cast<std::size_t>(object->type)] == 0)
                continue;
            if (Meet(object->mbr, query, strict))
                hits.push_back(object);
        }
        for (auto const &child : node.children) {
            if (child != nullptr)
                Query(*child, query, strict, types, hits);
        }
    }

    double m_width;
    double m_height;
    std::size_t m_capacity;
    std::unique_ptr<Node> m_root;
};

} // namespace quadtree_oracle
