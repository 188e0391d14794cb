#pragma once

#include "zvi/core/MHashMap.h"
#include "zvi/spatial/tree/DeletionDetail.h"
#include "zvi/spatial/tree/InsertionDetail.h"

#include <memory>
#include <new>

namespace zvi::lib::spatial {

/// The objects that a tree owns, under their keys.
template <typename Space>
struct Keys {
    using Object = typename Space::Object;
    using Node = typename Space::Node;
    using Tree = typename Space::Tree;
    using Map = MHashMap<typename Space::Key, Object *>;
    using Of = Access<Space>;

    static std::unique_ptr<Map> NewMap() {
        auto map = std::make_unique<Map>();
        map->InitHashTable(Tree::kKeyBinCount, false);
        return map;
    }

    /// 1; 0 without a change when the key exists or the box cannot be taken.
    static int Insert(Tree &tree, typename Space::Key key, int type, typename Space::PublicBox const &box) {
        Map &keys = Of::KeysOf(tree);
        if (keys.Lookup(key))
            return 0;
        void *const memory = Of::MemoryOf(tree)->TakeObject();
        if (!memory)
            throw std::bad_alloc();
        Object *const object = ::new (memory) Object;
        Of::KeyOf(*object) = key;
        Of::SetBox(*object, box);
        object->SetType(type);
        try {
            if (tree.Insert(object) == 0) {
                Destroy(tree, object);
                return 0;
            }
            Enter(tree, key, object);
        } catch (...) {
            Destroy(tree, object);
            throw;
        }
        return 1;
    }

    /// Removes the key and its object: 1; 0 when the key is absent or the object was not where it should be.
    static int Delete(Tree &tree, typename Space::Key key) {
        Object **const found = Of::KeysOf(tree).Lookup(key);
        if (!found)
            return 0;
        Object *const object = *found;
        int const result = tree.Delete(object);
        if (result == 0)
            Deletion<Space>::Purge(*Of::RootOf(tree), *object);
        Destroy(tree, object);
        try {
            Of::KeysOf(tree).RemoveKey(key);
        } catch (MStatusError const &) {
            // The key is gone; the map only keeps more bins than it would.
        }
        return result;
    }

    /// Deletes everything but the settings.
    static void Clear(Tree &tree) {
        // The nodes go first: their objects then no longer report to them.
        delete Of::RootOf(tree);
        Of::RootOf(tree) = nullptr;
        for (auto &entry : Of::KeysOf(tree))
            Destroy(tree, entry.value);
        Of::KeysOf(tree).InitHashTable(Tree::kKeyBinCount, false);
    }

private:
    static void Destroy(Tree &tree, Object *object) noexcept {
        std::destroy_at(object);
        Of::MemoryOf(tree)->GiveBackObject(object);
    }

    /// An object that does not come under its key leaves the tree again.
    static void Enter(Tree &tree, typename Space::Key key, Object *object) {
        try {
            Of::KeysOf(tree).SetAt(key, object);
        } catch (MStatusError const &) {
            // Where only more bins could not be had, the key is stored.
            if (Of::KeysOf(tree).Lookup(key))
                return;
            tree.Delete(object);
            throw;
        }
    }
};

} // namespace zvi::lib::spatial
