// An ordered collection of values with 1-based positions and optional text keys.
//
// Keys are compared without regard to case (see text/core/upper_case.h). Values keep their address
// until they are removed. Every operation but clear() and destruction takes logarithmic time in the
// number of entries. The key index also doubles or halves now and then, which is linear but so rare
// that its share of one addition or removal is constant; and each removal visits the live cursors.
//
// Layout: each entry is one block holding its value, its EntryHead and its folded key. A counted
// B+ tree of entry pointers gives the order, an open-addressing table of (hash, entry) the keys.
// Both know entries only by their EntryHead, so that their code exists once for all value types.
//
// Destroying a value may run any code, including code that changes or destroys the collection.
// Hence an entry has left the collection, and the collection is whole, before its value dies.
//
// A collection and its cursors belong to one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "text/core/upper_case.h"

namespace vela {
namespace detail {

struct TreeLeaf;
struct TreeInner;

// What the indexes know of an entry. The folded key follows in memory.
struct EntryHead {
    static constexpr std::size_t kNoKey = static_cast<std::size_t>(-1);

    TreeLeaf* leaf = nullptr;        // the leaf that lists the entry
    std::size_t keyLength = kNoKey;  // in units

    bool hasKey() const { return keyLength != kNoKey; }
    wchar_t* keyText() { return reinterpret_cast<wchar_t*>(this + 1); }
    const wchar_t* keyText() const { return reinterpret_cast<const wchar_t*>(this + 1); }
    // What FoldedKey::hash() is for the key. Requires one.
    std::uint32_t keyHash() const;
};

// Wide enough for few levels, small enough that shifting a node costs less than reaching it.
inline constexpr unsigned kTreeCapacity = 128;

struct TreeNode {
    TreeInner* parent = nullptr;
    unsigned count = 0;
};

struct TreeLeaf : TreeNode {
    TreeLeaf* previous = nullptr;
    TreeLeaf* next = nullptr;
    EntryHead* entries[kTreeCapacity];

    unsigned indexOf(const EntryHead* entry) const;
};

// A key as the caller wrote it, hashed as if folded. Views the caller's text; never allocates.
class FoldedKey {
  public:
    explicit FoldedKey(std::wstring_view text);

    std::uint32_t hash() const { return hash_; }
    std::size_t size() const { return text_.size(); }
    bool matches(const EntryHead& entry) const;
    // Writes the folded key behind `entry`, where there must be room for size() units.
    void writeTo(EntryHead& entry) const;

  private:
    std::wstring_view text_;
    const UpperCaseTable& table_;
    std::uint32_t hash_;
};

// Entries in order, found by 0-based position; a counted B+ tree. Does not own the entries.
class EntryTree {
  public:
    EntryTree() = default;
    EntryTree(EntryTree&& other) noexcept;
    EntryTree& operator=(EntryTree&& other) noexcept;
    ~EntryTree();

    std::size_t size() const { return size_; }
    // Requires position < size().
    EntryHead* at(std::size_t position) const;
    std::size_t positionOf(const EntryHead* entry) const;
    // The neighbours of an entry, null at the ends.
    EntryHead* next(const EntryHead* entry) const;
    EntryHead* previous(const EntryHead* entry) const;

    // Requires position <= size(); throws std::bad_alloc and then holds what it held.
    void insert(std::size_t position, EntryHead* entry);
    void erase(const EntryHead* entry) noexcept;
    // Calls `visit` on each entry in order; `visit` may destroy the entry.
    void forEach(void (*visit)(EntryHead*)) const;

  private:
    void growRoot();
    void splitChild(TreeInner* parent, unsigned index, unsigned level, bool appending);
    void prune(TreeNode* node) noexcept;
    void shrinkRoot() noexcept;

    TreeNode* root_ = nullptr;  // null when empty
    unsigned height_ = 0;       // levels of inner nodes above the leaves
    std::size_t size_ = 0;
};

// Entries by folded key; linear probing, at most three quarters full. Does not own the entries.
class KeyIndex {
  public:
    EntryHead* find(const FoldedKey& key) const;
    // Makes sure that one insert() has room; throws std::bad_alloc and then holds what it held.
    void reserveOne();
    // Requires a preceding reserveOne() and a key that find() does not find.
    void insert(EntryHead* entry) noexcept;
    void erase(const EntryHead* entry) noexcept;

  private:
    struct Slot {
        std::uint32_t hash;
        EntryHead* entry;  // null when free
    };

    void place(Slot slot) noexcept;
    void resize(std::size_t slots);

    std::vector<Slot> slots_;  // none, or a power of two
    std::size_t count_ = 0;
};

class CursorCore;

// Both indexes and the cursors that walk them. Does not own the entries.
class CollectionCore {
  public:
    struct Contents {
        EntryTree tree;
        KeyIndex keys;
    };

    CollectionCore() = default;
    explicit CollectionCore(Contents&& contents) noexcept : contents_(std::move(contents)) {}
    CollectionCore(const CollectionCore&) = delete;
    CollectionCore& operator=(const CollectionCore&) = delete;
    ~CollectionCore();

    const EntryTree& tree() const { return contents_.tree; }
    EntryHead* find(const FoldedKey& key) const { return contents_.keys.find(key); }
    // The entry at a 1-based position, null when out of range.
    EntryHead* at(std::size_t position) const;

    // Lists an entry whose key is not taken before 0-based `position`; throws std::bad_alloc and
    // then holds what it held.
    void link(std::size_t position, EntryHead* entry);
    // Forgets an entry; cursors on it step back to the one before.
    void unlink(const EntryHead* entry) noexcept;
    // Hands everything over and is left empty, with its cursors before the first entry.
    Contents take() noexcept;
    // Requires an empty collection.
    void put(Contents&& contents) noexcept { contents_ = std::move(contents); }

  private:
    friend class CursorCore;

    Contents contents_;
    CursorCore* cursors_ = nullptr;  // the first of the live cursors
};

// A cursor's place, registered with the collection as long as both live.
class CursorCore {
  public:
    explicit CursorCore(CollectionCore& owner) { attach(&owner); }
    CursorCore(const CursorCore& other) : last_(other.last_) { attach(other.owner_); }
    CursorCore& operator=(const CursorCore& other);
    ~CursorCore() { detach(); }

    // Within a leaf the step is to the neighbouring place, without a search. Where that is does not
    // depend on the entry itself, so that the processor need not wait for it.
    EntryHead* next() {
        const bool inLeaf = last_ != nullptr && last_->leaf == leaf_ && place_ + 1 < leaf_->count &&
                            leaf_->entries[place_] == last_;
        return inLeaf ? last_ = leaf_->entries[++place_] : nextElsewhere();
    }
    void reset() { last_ = nullptr; }

  private:
    friend class CollectionCore;

    EntryHead* nextElsewhere();

    void attach(CollectionCore* owner);
    void detach();

    CollectionCore* owner_ = nullptr;  // null once the collection is gone
    EntryHead* last_ = nullptr;        // the last entry delivered; null before the first, and with
                                       // the collection gone
    TreeLeaf* leaf_ = nullptr;         // which listed it when it was delivered, and where
    unsigned place_ = 0;
    CursorCore* previous_ = nullptr;
    CursorCore* next_ = nullptr;
};

}  // namespace detail

// See the top of the file. `Value` may be move-only; moving it must not throw.
template <class Value>
class KeyedCollection {
    static_assert(std::is_nothrow_move_constructible_v<Value>);
    static_assert(std::is_nothrow_destructible_v<Value>);

  public:
    using Key = std::optional<std::wstring_view>;

    // Walks a collection in order, and survives any change to it. It remembers the last entry
    // delivered; when that one is removed it steps back to the entry before. Entries added behind
    // its place are therefore met, and none is met twice. Copies are independent.
    //
    // When the collection is cleared or moved from, the cursor stays with it, before the first
    // entry; when it is destroyed, the cursor is at the end for good.
    class Cursor {
      public:
        // Starts before the first entry.
        explicit Cursor(KeyedCollection& collection) : core_(collection.core_) {}

        // The next value, null at the end; entries appended later are delivered by later calls.
        Value* next() { return valueOf(core_.next()); }
        // Goes back before the first entry.
        void reset() { core_.reset(); }

      private:
        detail::CursorCore core_;
    };

    KeyedCollection() = default;
    // `other` is left empty.
    KeyedCollection(KeyedCollection&& other) noexcept : core_(other.core_.take()) {}
    // The values held so far are destroyed last.
    KeyedCollection& operator=(KeyedCollection&& other) noexcept {
        if (this == &other) return *this;
        const Contents doomed = core_.take();
        core_.put(other.core_.take());
        doomed.tree.forEach(destroy);
        return *this;
    }
    ~KeyedCollection() {
        while (size() != 0) clear();  // a dying value may have added another
    }

    std::size_t size() const { return core_.tree().size(); }

    // Appends `value`, under `key` if given; the empty key is a key like any other. Returns false,
    // and changes nothing, when the key is taken. Throws std::bad_alloc and changes nothing.
    bool add(Value value, Key key = std::nullopt) {
        return insert(size() + 1, std::move(value), key);
    }

    // As add(), but before the entry at `position`; size() + 1 appends. Requires
    // 1 <= position <= size() + 1.
    bool insert(std::size_t position, Value value, Key key = std::nullopt) {
        std::optional<detail::FoldedKey> folded;
        if (key) {
            folded.emplace(*key);
            if (core_.find(*folded) != nullptr) return false;
        }
        OwnedEntry entry = makeEntry(std::move(value), folded);
        core_.link(position - 1, entry.get());
        entry.release();
        return true;
    }

    // The value with that key, null when there is none. Valid until the entry is removed.
    Value* find(std::wstring_view key) { return valueOf(entryOf(key)); }
    const Value* find(std::wstring_view key) const { return valueOf(entryOf(key)); }

    // The value at the 1-based `position`, null when out of range. Valid until it is removed.
    Value* at(std::size_t position) { return valueOf(core_.at(position)); }
    const Value* at(std::size_t position) const { return valueOf(core_.at(position)); }

    // The 1-based position of the entry with that key, nothing when there is none.
    std::optional<std::size_t> positionOf(std::wstring_view key) const {
        const detail::EntryHead* entry = entryOf(key);
        if (entry == nullptr) return std::nullopt;
        return core_.tree().positionOf(entry) + 1;
    }

    // Removes the entry with that key; false when there is none.
    bool remove(std::wstring_view key) { return removeEntry(entryOf(key)); }
    // Removes the entry at the 1-based `position`; false when out of range.
    bool removeAt(std::size_t position) { return removeEntry(core_.at(position)); }
    // Removes all entries, destroying the values in order. What a dying value adds remains.
    void clear() noexcept { core_.take().tree.forEach(destroy); }

  private:
    using Contents = detail::CollectionCore::Contents;

    struct Holder {
        Value value;
    };
    // The head comes last, since the folded key follows it in the same block.
    struct Entry : Holder, detail::EntryHead {
        explicit Entry(Value&& value) noexcept : Holder{std::move(value)} {}
    };
    static_assert(alignof(Entry) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);

    static void destroy(detail::EntryHead* head) noexcept {
        Entry* entry = static_cast<Entry*>(head);
        std::destroy_at(entry);
        ::operator delete(entry);
    }
    struct DestroyEntry {
        void operator()(Entry* entry) const noexcept { destroy(entry); }
    };
    using OwnedEntry = std::unique_ptr<Entry, DestroyEntry>;

    static OwnedEntry makeEntry(Value&& value, const std::optional<detail::FoldedKey>& key) {
        const std::size_t keyBytes = key ? key->size() * sizeof(wchar_t) : 0;
        void* block = ::operator new(sizeof(Entry) + keyBytes);
        OwnedEntry entry(new (block) Entry(std::move(value)));
        if (key) key->writeTo(*entry);
        return entry;
    }

    static Value* valueOf(detail::EntryHead* head) {
        return head == nullptr ? nullptr : std::addressof(static_cast<Entry*>(head)->value);
    }

    detail::EntryHead* entryOf(std::wstring_view key) const {
        return core_.find(detail::FoldedKey(key));
    }

    bool removeEntry(detail::EntryHead* entry) {
        if (entry == nullptr) return false;
        core_.unlink(entry);
        destroy(entry);  // last: this may be gone afterwards
        return true;
    }

    detail::CollectionCore core_;
};

}  // namespace vela
