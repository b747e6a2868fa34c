#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

#include "array/containers/TrieNode.h"

namespace array {

// An ordered map from 32-bit keys to values whose copies share structure: a copy costs one word,
// and a change of a map that has copies makes new only the few nodes on the way to the entry. A map
// that nobody shares is changed in place.
//
// A snapshot of the array is made of such maps. Each commit makes the next snapshot out of a copy
// of the last, while readers go on with theirs: with std::map or a hash map that would copy a
// million entries for a change of one, or make readers and the writer wait for each other.
//
// It is a radix trie of 32-way nodes that leaves out nodes of a single slot, so an entry is reached
// in at most 7 steps, in 4 among a million consecutive keys.
//
// Threads: different copies may be used by different threads at once, one copy by one thread or by
// several that only read. T needs to be copied from several threads likewise.
template<class T>
class PersistentMap {
public:
    using Key = std::uint32_t;

    std::size_t size() const { return _root ? _root->count : 0; }
    bool empty() const { return !_root; }

    // The value of a key, null if there is none; good until the map changes.
    const T* find(Key key) const {
        const Node* node = _root.get();
        while (node) {
            const std::uint32_t bit = node->bitOf(key);
            if (!node->isUsed(bit)) {
                return nullptr;
            }
            if (!node->isNode(bit)) {
                return node->entry(bit).key == key ? &node->entry(bit).value : nullptr;
            }
            node = node->node(bit).get();
        }
        return nullptr;
    }
    bool contains(Key key) const { return find(key) != nullptr; }

    // The least key; the map must not be empty.
    Key firstKey() const {
        const Node* node = _root.get();
        for (;;) {
            const std::uint32_t first = node->used() & (~node->used() + 1);
            if (!node->isNode(first)) {
                return node->entry(first).key;
            }
            node = node->node(first).get();
        }
    }

    // Inserts or replaces.
    void set(Key key, T value) {
        if (_root) {
            set(_root, Entry{key, std::move(value)});
        } else {
            _root = Node::single(Entry{key, std::move(value)});
        }
    }

    // The value of a key that is there, to be changed in place; good until the map changes or is
    // copied.
    T& change(Key key) {
        Ref* node = &_root;
        for (;;) {
            own(*node);
            const std::uint32_t bit = (*node)->bitOf(key);
            if (!(*node)->isNode(bit)) {
                return (*node)->entry(bit).value;
            }
            node = &(*node)->node(bit);
        }
    }

    // Removes an entry; false if there was none.
    bool erase(Key key) {
        if (!contains(key)) {
            return false;
        }
        erase(_root, key);
        return true;
    }

    // visit(key, value) for all entries in ascending order of their keys.
    template<class Visit>
    void forEach(Visit&& visit) const {
        if (_root) {
            forEach(*_root.get(), visit);
        }
    }

private:
    using Node = TrieNode<T>;
    using Ref = typename Node::Ref;
    using Entry = typename Node::Entry;

    static void own(Ref& node) {
        if (!node.unique()) {
            node = Node::copy(node);
        }
    }

    static void set(Ref& node, Entry&& entry) {
        const std::uint32_t bit = node->bitOf(entry.key);
        if (!node->covers(entry.key)) {
            const bool single = node->slotCount() == 1;
            node = single ? Node::pair(Entry(node->entry(node->used())), std::move(entry))
                          : Node::pair(Ref(node), std::move(entry));
        } else if (!node->isUsed(bit)) {
            node = Node::with(node, bit, std::move(entry));
        } else if (node->isNode(bit)) {
            own(node);
            Ref& below = node->node(bit);
            const std::uint32_t before = below->count;
            set(below, std::move(entry));
            node->count += below->count - before;
        } else if (node->entry(bit).key != entry.key) {
            node = Node::with(node, bit, Node::pair(Entry(node->entry(bit)), std::move(entry)));
        } else {
            own(node);
            node->entry(bit).value = std::move(entry.value);
        }
    }

    // The key must be there. Leaves no node of a single slot, but for a root with a single entry.
    static void erase(Ref& node, Key key) {
        const std::uint32_t bit = node->bitOf(key);
        if (node->isNode(bit)) {
            own(node);
            Ref& below = node->node(bit);
            erase(below, key);
            node->count -= 1;
            if (below->slotCount() == 1) {
                node = Node::with(node, bit, Entry(below->entry(below->used())));
            }
        } else if (node->slotCount() == 1) {
            node = Ref();
        } else {
            node = Node::without(node, bit);
            if (node->slotCount() == 1 && node->isNode(node->used())) {
                node = Ref(node->node(node->used()));
            }
        }
    }

    template<class Visit>
    static void forEach(const Node& node, Visit& visit) {
        Node::forEachBit(node.used(), [&](std::uint32_t bit) {
            if (node.isNode(bit)) {
                forEach(*node.node(bit).get(), visit);
            } else {
                visit(node.entry(bit).key, node.entry(bit).value);
            }
        });
    }

    Ref _root;
};

// In a map of maps: an entry of the map of an outer key. No inner map is ever empty.
template<class T>
void setIn(PersistentMap<PersistentMap<T>>& maps, std::uint32_t outer, std::uint32_t inner,
           T value) {
    if (!maps.contains(outer)) {
        maps.set(outer, {});
    }
    maps.change(outer).set(inner, std::move(value));
}
template<class T>
void eraseIn(PersistentMap<PersistentMap<T>>& maps, std::uint32_t outer, std::uint32_t inner) {
    if (!maps.contains(outer)) {
        return;
    }
    PersistentMap<T>& map = maps.change(outer);
    map.erase(inner);
    if (map.empty()) {
        maps.erase(outer);
    }
}

// A set of 32-bit numbers, likewise.
struct NoValue {};
using PersistentSet = PersistentMap<NoValue>;

} // namespace array
