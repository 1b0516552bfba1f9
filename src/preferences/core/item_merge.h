// Bringing one program's items together with what a document holds of them by now.
//
// Texts are compared by their fingerprints of 64 bits, so that a million items take little room.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace vela {

using Fingerprint = std::uint64_t;

// The fingerprint of a row of texts: other texts, or other bounds between them, give another one.
class FingerprintMaker {
  public:
    void add(std::wstring_view text);
    Fingerprint result() const { return value_; }

  private:
    void addUnit(std::uint32_t unit);

    Fingerprint value_ = 0xCBF29CE484222325u;  // FNV-1a
};

// Of an item's identity, without regard to case.
Fingerprint identityPrint(std::wstring_view id, std::wstring_view group);

struct ItemPrint {
    Fingerprint identity;
    Fingerprint content;
};

// An item as it was when it was last read or written.
struct KnownItem {
    ItemPrint kept;    // by the program
    ItemPrint stored;  // in the document
};

struct MergedItem {
    bool ours;  // or theirs
    std::size_t index;
};

struct Merge {
    std::vector<MergedItem> items;
    std::vector<KnownItem> known;  // for the next merge
};

// What a document is to hold: what the program added, changed and removed since `known`, and what
// others did to other items; where both changed one, the program's. Ours come first, in their
// order. Unless `oursAreAll`, none counts as removed by the program.
Merge merged(std::span<const KnownItem> known, std::span<const ItemPrint> ours,
             std::span<const ItemPrint> theirs, bool oursAreAll = true);

}  // namespace vela
