#pragma once

#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <new>
#include <type_traits>
#include <utility>

#include "array/containers/Shared.h"

namespace array {

// A node of PersistentMap: up to 32 slots, each empty, or an entry, or the node of all entries
// whose keys agree down to this node's slot. Only used slots take memory: they stand behind the
// header, in the order of their keys.
template<class T>
class TrieNode {
public:
    using Key = std::uint32_t;
    static constexpr unsigned bitsPerNode = 5; // of the key, per node

    struct Entry {
        Key key;
        [[no_unique_address]] T value;
    };

    using Ref = CountedPointer<TrieNode>;

    // The node of two different items, whose keys part here.
    template<class Item>
    static Ref pair(Item&& a, Entry&& b) {
        const unsigned bits = static_cast<unsigned>(std::bit_width(keyOf(a) ^ b.key));
        Ref made = blank(b.key, (bits - 1) / bitsPerNode * bitsPerNode, 2);
        const std::uint32_t bitA = made->bitOf(keyOf(a));
        const std::uint32_t bitB = made->bitOf(b.key);
        const bool aFirst = bitA < bitB;
        made->fill(aFirst ? 0 : 1, bitA, std::forward<Item>(a));
        made->fill(aFirst ? 1 : 0, bitB, std::move(b));
        return made;
    }
    static Ref single(Entry&& entry) {
        Ref made = blank(entry.key, 0, 1);
        const std::uint32_t bit = made->bitOf(entry.key);
        made->fill(0, bit, std::move(entry));
        return made;
    }

    // Make a changed copy: the same, with a slot filled anew, without a slot. They take the rest
    // from a node that only `from` refers to, and copy it from a shared one.
    static Ref copy(const Ref& from) { return remade(from, 0, Nothing()); }
    template<class Item>
    static Ref with(const Ref& from, std::uint32_t bit, Item&& item) {
        return remade(from, bit, std::forward<Item>(item));
    }
    static Ref without(const Ref& from, std::uint32_t bit) { return remade(from, bit, Nothing()); }

    // Slots are known by their bit.
    std::uint32_t bitOf(Key key) const { return 1U << (key >> _shift & 31U); }
    bool covers(Key key) const {
        return std::uint64_t{key ^ _prefix} >> _shift >> bitsPerNode == 0;
    }
    bool isUsed(std::uint32_t bit) const { return (_used & bit) != 0; }
    bool isNode(std::uint32_t bit) const { return (_nodes & bit) != 0; }
    Entry& entry(std::uint32_t bit) { return slots()[indexOf(bit)].entry; }
    const Entry& entry(std::uint32_t bit) const { return slots()[indexOf(bit)].entry; }
    Ref& node(std::uint32_t bit) { return slots()[indexOf(bit)].node; }
    const Ref& node(std::uint32_t bit) const { return slots()[indexOf(bit)].node; }

    std::uint32_t used() const { return _used; } // the bits of all used slots
    std::size_t slotCount() const { return static_cast<std::size_t>(std::popcount(_used)); }
    template<class Visit>
    static void forEachBit(std::uint32_t bits, Visit&& visit) {
        for (; bits != 0; bits &= bits - 1) {
            visit(bits & (~bits + 1));
        }
    }

    // Entries in this node and all below it.
    std::uint32_t count = 0;

private:
    friend Ref;

    union Slot {
        Slot() {}
        ~Slot() {}
        Entry entry;
        Ref node;
    };
    struct Nothing {};

    TrieNode(Key prefix, unsigned shift)
        : _prefix(prefix), _shift(static_cast<std::uint8_t>(shift)) {}
    TrieNode(const TrieNode&) = delete;
    TrieNode& operator=(const TrieNode&) = delete;
    ~TrieNode() {
        forEachBit(_used, [this](std::uint32_t bit) {
            if (isNode(bit)) {
                node(bit).~Ref();
            } else {
                entry(bit).~Entry();
            }
        });
    }

    static Ref blank(Key prefix, unsigned shift, std::size_t capacity) {
        static_assert(alignof(Slot) <= alignof(std::max_align_t));
        void* memory = ::operator new(offset() + capacity * sizeof(Slot));
        return Ref(::new (memory) TrieNode(prefix, shift));
    }
    static void destroy(TrieNode* node) {
        node->~TrieNode();
        ::operator delete(node);
    }

    static constexpr std::size_t offset() {
        return (sizeof(TrieNode) + alignof(Slot) - 1) / alignof(Slot) * alignof(Slot);
    }
    Slot* slots() { return reinterpret_cast<Slot*>(reinterpret_cast<std::byte*>(this) + offset()); }
    const Slot* slots() const {
        return reinterpret_cast<const Slot*>(reinterpret_cast<const std::byte*>(this) + offset());
    }
    std::size_t indexOf(std::uint32_t bit) const {
        return static_cast<std::size_t>(std::popcount(_used & (bit - 1)));
    }

    static Key keyOf(const Entry& entry) { return entry.key; }
    static Key keyOf(const Ref& node) { return node->_prefix; }

    // Fill a slot of a blank node; where it stands follows from the bits of all that will be used.
    void fill(std::size_t at, std::uint32_t bit, Entry entry) {
        ::new (&slots()[at].entry) Entry(std::move(entry));
        _used |= bit;
        count += 1;
    }
    void fill(std::size_t at, std::uint32_t bit, Ref node) {
        count += node->count;
        ::new (&slots()[at].node) Ref(std::move(node));
        _used |= bit;
        _nodes |= bit;
    }

    // Only of a node with no other reference may the slots be moved out.
    template<class Item>
    static Ref remade(const Ref& from, std::uint32_t changed, Item&& item) {
        constexpr bool fills = !std::is_same_v<std::decay_t<Item>, Nothing>;
        const bool mayTake = from.unique();
        const std::uint32_t bits = fills ? from->_used | changed : from->_used & ~changed;
        Ref made =
            blank(from->_prefix, from->_shift, static_cast<std::size_t>(std::popcount(bits)));
        Slot* slot = from->slots();
        std::size_t at = 0;
        forEachBit(from->_used | bits, [&](std::uint32_t bit) {
            Slot* const old = from->isUsed(bit) ? slot++ : nullptr;
            if (bit == changed) {
                if constexpr (fills) {
                    made->fill(at++, bit, std::forward<Item>(item));
                }
            } else if (from->isNode(bit)) {
                made->fill(at++, bit, mayTake ? std::move(old->node) : Ref(old->node));
            } else {
                made->fill(at++, bit, mayTake ? std::move(old->entry) : Entry(old->entry));
            }
        });
        return made;
    }

    // NOLINTNEXTLINE(readability-identifier-naming): CountedPointer wants this name.
    std::atomic<std::uint32_t> holders{1};
    std::uint32_t _used = 0;  // slots that hold something
    std::uint32_t _nodes = 0; // those of them that hold a node
    const Key _prefix;        // of all keys below, above the bits that say the slot
    const std::uint8_t _shift;
};

} // namespace array
