// The indexes of a keyed collection: the counted B+ tree, the key table and the cursor registry.
//
// Tree invariants, between operations:
// - leaves all lie height_ levels below the root and are chained in order; no node is empty;
// - an inner node's before[i] is the number of entries below its children 0 .. i-1, and kNever for
//   the places without a child;
// - entry->leaf and node->parent point to the node that lists the entry or node;
// - the root has more than one child or is a leaf, save after an insertion that ran out of memory.
#include "collections/core/keyed_collection.h"

#include <algorithm>
#include <iterator>

namespace vela::detail {

constexpr unsigned kCapacity = kTreeCapacity;
static_assert((kCapacity & (kCapacity - 1)) == 0);
// Appending leaves full nodes behind, but for some room that later insertions can use.
constexpr unsigned kKeptOnAppend = kCapacity - kCapacity / 8;
// A node this small joins a neighbour if the two then leave room for insertions.
constexpr unsigned kSparse = kCapacity / 4;
constexpr unsigned kJoined = kCapacity - kCapacity / 4;

constexpr std::size_t kFewestSlots = 16;

unsigned TreeLeaf::indexOf(const EntryHead* entry) const {
    return static_cast<unsigned>(std::find(entries, entries + count, entry) - entries);
}

struct TreeInner : TreeNode {
    static constexpr std::size_t kNever = static_cast<std::size_t>(-1);

    std::size_t before[kCapacity];
    TreeNode* children[kCapacity];

    TreeInner() { std::fill(std::begin(before), std::end(before), kNever); }

    unsigned indexOf(const TreeNode* child) const {
        return static_cast<unsigned>(std::find(children, children + count, child) - children);
    }

    // The last child that starts at or before the position. The steps do not depend on the count,
    // so that the processor can start on the next look-up while this one waits for memory; for the
    // same reason each is written out, not looped over.
    unsigned childHolding(std::size_t position) const {
        return lastUpTo<kCapacity / 2>(position, 0);
    }
    template <unsigned step>
    unsigned lastUpTo(std::size_t position, unsigned low) const {
        low += step * (before[low + step] <= position);
        if constexpr (step == 1) return low;
        else return lastUpTo<step / 2>(position, low);
    }
};

namespace {

template <class Item>
void insertItem(Item* items, unsigned count, unsigned index, Item item) {
    std::copy_backward(items + index, items + count, items + count + 1);
    items[index] = item;
}

template <class Item>
void eraseItem(Item* items, unsigned count, unsigned index) {
    std::copy(items + index + 1, items + count, items + index);
}

void insertChild(TreeInner* parent, unsigned index, TreeNode* child, std::size_t before) {
    insertItem(parent->children, parent->count, index, child);
    insertItem(parent->before, parent->count, index, before);
    child->parent = parent;
    ++parent->count;
}

void eraseChild(TreeInner* parent, unsigned index) {
    eraseItem(parent->children, parent->count, index);
    eraseItem(parent->before, parent->count, index);
    parent->before[--parent->count] = TreeInner::kNever;
}

// Tells the ancestors that `node` holds one entry more (+1) or less (-1).
void countChanged(const TreeNode* node, std::ptrdiff_t change) {
    for (TreeInner* parent = node->parent; parent != nullptr; parent = parent->parent) {
        for (unsigned i = parent->indexOf(node) + 1; i < parent->count; ++i) {
            parent->before[i] += static_cast<std::size_t>(change);
        }
        node = parent;
    }
}

// Moves what `from` lists at `first` and after to the end of `to`.
void moveEntries(TreeLeaf* from, unsigned first, TreeLeaf* to) {
    for (unsigned i = first; i < from->count; ++i) {
        from->entries[i]->leaf = to;
        to->entries[to->count++] = from->entries[i];
    }
    from->count = first;
}

// The same for children; `shift` (modulo the range) turns a count in `from` into one in `to`.
void moveChildren(TreeInner* from, unsigned first, TreeInner* to, std::size_t shift) {
    for (unsigned i = first; i < from->count; ++i) {
        from->children[i]->parent = to;
        to->children[to->count] = from->children[i];
        to->before[to->count++] = from->before[i] + shift;
        from->before[i] = TreeInner::kNever;
    }
    from->count = first;
}

void chainAfter(TreeLeaf* leaf, TreeLeaf* added) {
    added->previous = leaf;
    added->next = leaf->next;
    if (leaf->next != nullptr) leaf->next->previous = added;
    leaf->next = added;
}

void unchain(TreeLeaf* leaf) {
    if (leaf->previous != nullptr) leaf->previous->next = leaf->next;
    if (leaf->next != nullptr) leaf->next->previous = leaf->previous;
}

// Frees one node; level 0 is that of the leaves.
void freeNode(TreeNode* node, unsigned level) {
    if (level != 0) {
        delete static_cast<TreeInner*>(node);
        return;
    }
    unchain(static_cast<TreeLeaf*>(node));
    delete static_cast<TreeLeaf*>(node);
}

void freeBelow(TreeNode* node, unsigned level) {
    if (level != 0) {
        const TreeInner* inner = static_cast<TreeInner*>(node);
        for (unsigned i = 0; i < inner->count; ++i) freeBelow(inner->children[i], level - 1);
    }
    freeNode(node, level);
}

// Moves the child after `index` into the one at `index` if the two are few enough.
bool joinChildren(TreeInner* parent, unsigned index, unsigned level) {
    TreeNode* left = parent->children[index];
    TreeNode* right = parent->children[index + 1];
    if (left->count + right->count > kJoined) return false;
    if (level == 0) {
        moveEntries(static_cast<TreeLeaf*>(right), 0, static_cast<TreeLeaf*>(left));
    } else {
        moveChildren(static_cast<TreeInner*>(right), 0, static_cast<TreeInner*>(left),
                     parent->before[index + 1] - parent->before[index]);
    }
    eraseChild(parent, index + 1);
    freeNode(right, level);
    return true;
}

bool joinNeighbour(TreeInner* parent, unsigned index, unsigned level) {
    return (index > 0 && joinChildren(parent, index - 1, level)) ||
           (index + 1 < parent->count && joinChildren(parent, index, level));
}

template <class Fold>
std::uint32_t hashOf(std::wstring_view text, Fold fold) {
    std::uint32_t hash = 0x811C9DC5;
    for (const wchar_t unit : text) {
        hash = (hash ^ static_cast<std::uint32_t>(fold(unit))) * 0x01000193;
    }
    // The key table uses the low bits: let the high ones reach them.
    hash = (hash ^ (hash >> 16)) * 0x85EBCA6B;
    return hash ^ (hash >> 13);
}

}  // namespace

// Keys ------------------------------------------------------------------------------------------

std::uint32_t EntryHead::keyHash() const {
    return hashOf({keyText(), keyLength}, [](wchar_t unit) { return unit; });
}

FoldedKey::FoldedKey(std::wstring_view text)
    : text_(text),
      table_(upperCaseTable()),
      hash_(hashOf(text, [this](wchar_t unit) { return upperCase(table_, unit); })) {}

bool FoldedKey::matches(const EntryHead& entry) const {
    return text_.size() == entry.keyLength &&
           std::equal(
               text_.begin(), text_.end(), entry.keyText(),
               [this](wchar_t unit, wchar_t folded) { return upperCase(table_, unit) == folded; });
}

void FoldedKey::writeTo(EntryHead& entry) const {
    std::transform(text_.begin(), text_.end(), entry.keyText(),
                   [this](wchar_t unit) { return upperCase(table_, unit); });
    entry.keyLength = text_.size();
}

EntryHead* KeyIndex::find(const FoldedKey& key) const {
    if (slots_.empty()) return nullptr;
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t i = key.hash() & mask; slots_[i].entry != nullptr; i = (i + 1) & mask) {
        if (slots_[i].hash == key.hash() && key.matches(*slots_[i].entry)) return slots_[i].entry;
    }
    return nullptr;
}

void KeyIndex::reserveOne() {
    if ((count_ + 1) * 4 > slots_.size() * 3) resize(std::max(kFewestSlots, slots_.size() * 2));
}

void KeyIndex::insert(EntryHead* entry) noexcept {
    place({entry->keyHash(), entry});
    ++count_;
}

void KeyIndex::erase(const EntryHead* entry) noexcept {
    const std::size_t mask = slots_.size() - 1;
    std::size_t hole = entry->keyHash() & mask;
    while (slots_[hole].entry != entry) hole = (hole + 1) & mask;
    // Later slots of the run move up, unless that would put them before where probing starts.
    for (std::size_t i = (hole + 1) & mask; slots_[i].entry != nullptr; i = (i + 1) & mask) {
        if (((i - slots_[i].hash) & mask) >= ((i - hole) & mask)) {
            slots_[hole] = slots_[i];
            hole = i;
        }
    }
    slots_[hole] = {};
    --count_;
    if (slots_.size() == kFewestSlots || count_ * 8 >= slots_.size()) return;
    try {
        resize(slots_.size() / 2);
    } catch (const std::bad_alloc&) {
        // The larger table serves as well.
    }
}

void KeyIndex::place(Slot slot) noexcept {
    const std::size_t mask = slots_.size() - 1;
    std::size_t i = slot.hash & mask;
    while (slots_[i].entry != nullptr) i = (i + 1) & mask;
    slots_[i] = slot;
}

void KeyIndex::resize(std::size_t slots) {
    std::vector<Slot> old(slots);
    old.swap(slots_);
    for (const Slot& slot : old) {
        if (slot.entry != nullptr) place(slot);
    }
}

// Order -----------------------------------------------------------------------------------------

EntryTree::EntryTree(EntryTree&& other) noexcept
    : root_(std::exchange(other.root_, nullptr)),
      height_(std::exchange(other.height_, 0)),
      size_(std::exchange(other.size_, 0)) {}

EntryTree& EntryTree::operator=(EntryTree&& other) noexcept {
    std::swap(root_, other.root_);
    std::swap(height_, other.height_);
    std::swap(size_, other.size_);
    return *this;
}

EntryTree::~EntryTree() {
    if (root_ != nullptr) freeBelow(root_, height_);
}

EntryHead* EntryTree::at(std::size_t position) const {
    const TreeNode* node = root_;
    for (unsigned level = height_; level != 0; --level) {
        const TreeInner* inner = static_cast<const TreeInner*>(node);
        const unsigned index = inner->childHolding(position);
        position -= inner->before[index];
        node = inner->children[index];
    }
    return static_cast<const TreeLeaf*>(node)->entries[position];
}

std::size_t EntryTree::positionOf(const EntryHead* entry) const {
    std::size_t position = entry->leaf->indexOf(entry);
    const TreeNode* node = entry->leaf;
    for (const TreeInner* parent = node->parent; parent != nullptr; parent = parent->parent) {
        position += parent->before[parent->indexOf(node)];
        node = parent;
    }
    return position;
}

EntryHead* EntryTree::next(const EntryHead* entry) const {
    const TreeLeaf* leaf = entry->leaf;
    const unsigned index = leaf->indexOf(entry) + 1;
    if (index < leaf->count) return leaf->entries[index];
    return leaf->next == nullptr ? nullptr : leaf->next->entries[0];
}

EntryHead* EntryTree::previous(const EntryHead* entry) const {
    const TreeLeaf* leaf = entry->leaf;
    const unsigned index = leaf->indexOf(entry);
    if (index > 0) return leaf->entries[index - 1];
    leaf = leaf->previous;
    return leaf == nullptr ? nullptr : leaf->entries[leaf->count - 1];
}

// Full nodes are split on the way down, so that each has room for what a split below adds. A split
// changes no order: running out of memory at any level loses nothing.
void EntryTree::insert(std::size_t position, EntryHead* entry) {
    const bool appending = position == size_;
    if (root_ == nullptr) root_ = new TreeLeaf;
    if (root_->count == kCapacity) growRoot();
    TreeNode* node = root_;
    for (unsigned level = height_; level != 0; --level) {
        TreeInner* inner = static_cast<TreeInner*>(node);
        unsigned index = inner->childHolding(position);
        if (inner->children[index]->count == kCapacity) {
            splitChild(inner, index, level - 1, appending);
            index = inner->childHolding(position);
        }
        position -= inner->before[index];
        node = inner->children[index];
    }
    TreeLeaf* leaf = static_cast<TreeLeaf*>(node);
    insertItem(leaf->entries, leaf->count, static_cast<unsigned>(position), entry);
    entry->leaf = leaf;
    ++leaf->count;
    ++size_;
    countChanged(leaf, +1);
}

void EntryTree::growRoot() {
    TreeInner* root = new TreeInner;
    insertChild(root, 0, root_, 0);
    root_ = root;
    ++height_;
}

// Splits the full child at `index`, of the given level, in two.
void EntryTree::splitChild(TreeInner* parent, unsigned index, unsigned level, bool appending) {
    const unsigned kept = appending ? kKeptOnAppend : kCapacity / 2;
    TreeNode* child = parent->children[index];
    if (level == 0) {
        TreeLeaf* left = static_cast<TreeLeaf*>(child);
        TreeLeaf* right = new TreeLeaf;
        moveEntries(left, kept, right);
        chainAfter(left, right);
        insertChild(parent, index + 1, right, parent->before[index] + kept);
    } else {
        TreeInner* left = static_cast<TreeInner*>(child);
        TreeInner* right = new TreeInner;
        const std::size_t keptEntries = left->before[kept];
        moveChildren(left, kept, right, std::size_t{0} - keptEntries);
        insertChild(parent, index + 1, right, parent->before[index] + keptEntries);
    }
}

void EntryTree::erase(const EntryHead* entry) noexcept {
    TreeLeaf* leaf = entry->leaf;
    eraseItem(leaf->entries, leaf->count, leaf->indexOf(entry));
    --leaf->count;
    --size_;
    countChanged(leaf, -1);
    prune(leaf);
    shrinkRoot();
}

// Frees or joins sparse nodes from the leaf upwards.
void EntryTree::prune(TreeNode* node) noexcept {
    for (unsigned level = 0; node->parent != nullptr && node->count <= kSparse; ++level) {
        TreeInner* parent = node->parent;
        const unsigned index = parent->indexOf(node);
        if (node->count == 0) {
            eraseChild(parent, index);
            freeNode(node, level);
        } else if (!joinNeighbour(parent, index, level)) {
            return;
        }
        node = parent;
    }
}

void EntryTree::shrinkRoot() noexcept {
    while (height_ != 0 && root_->count == 1) {
        TreeInner* old = static_cast<TreeInner*>(root_);
        root_ = old->children[0];
        root_->parent = nullptr;
        delete old;
        --height_;
    }
    if (size_ == 0) {
        freeNode(root_, height_);
        root_ = nullptr;
        height_ = 0;
    }
}

void EntryTree::forEach(void (*visit)(EntryHead*)) const {
    if (size_ == 0) return;
    for (const TreeLeaf* leaf = at(0)->leaf; leaf != nullptr; leaf = leaf->next) {
        for (unsigned i = 0; i < leaf->count; ++i) visit(leaf->entries[i]);
    }
}

// Collection and cursors ------------------------------------------------------------------------

CollectionCore::~CollectionCore() {
    while (cursors_ != nullptr) {
        cursors_->reset();
        cursors_->detach();
    }
}

EntryHead* CollectionCore::at(std::size_t position) const {
    return position - 1 < tree().size() ? tree().at(position - 1) : nullptr;
}

void CollectionCore::link(std::size_t position, EntryHead* entry) {
    if (entry->hasKey()) contents_.keys.reserveOne();
    contents_.tree.insert(position, entry);
    if (entry->hasKey()) contents_.keys.insert(entry);
}

void CollectionCore::unlink(const EntryHead* entry) noexcept {
    for (CursorCore* cursor = cursors_; cursor != nullptr; cursor = cursor->next_) {
        if (cursor->last_ == entry) cursor->last_ = tree().previous(entry);
    }
    contents_.tree.erase(entry);
    if (entry->hasKey()) contents_.keys.erase(entry);
}

CollectionCore::Contents CollectionCore::take() noexcept {
    for (CursorCore* cursor = cursors_; cursor != nullptr; cursor = cursor->next_) cursor->reset();
    return std::exchange(contents_, Contents());
}

CursorCore& CursorCore::operator=(const CursorCore& other) {
    if (this == &other) return *this;
    detach();
    last_ = other.last_;
    attach(other.owner_);
    return *this;
}

EntryHead* CursorCore::nextElsewhere() {
    if (owner_ == nullptr) return nullptr;
    EntryHead* entry = last_ == nullptr ? owner_->at(1) : owner_->tree().next(last_);
    if (entry == nullptr) return nullptr;
    last_ = entry;
    leaf_ = entry->leaf;
    place_ = leaf_->indexOf(entry);
    return entry;
}

void CursorCore::attach(CollectionCore* owner) {
    owner_ = owner;
    if (owner == nullptr) return;
    next_ = owner->cursors_;
    if (next_ != nullptr) next_->previous_ = this;
    owner->cursors_ = this;
}

void CursorCore::detach() {
    if (owner_ == nullptr) return;
    (previous_ == nullptr ? owner_->cursors_ : previous_->next_) = next_;
    if (next_ != nullptr) next_->previous_ = previous_;
    owner_ = nullptr;
    previous_ = next_ = nullptr;
}

}  // namespace vela::detail
