#include "preferences/core/item_merge.h"

#include <unordered_map>
#include <unordered_set>

#include "text/core/upper_case.h"

namespace vela {

namespace {

// Where items stand, by their identities; of several with one identity, the last.
using Places = std::unordered_map<Fingerprint, std::size_t>;

Places placesOf(std::span<const ItemPrint> items) {
    Places places;
    for (std::size_t i = 0; i < items.size(); ++i) places[items[i].identity] = i;
    return places;
}

const std::size_t* find(const Places& places, Fingerprint identity) {
    const auto found = places.find(identity);
    return found == places.end() ? nullptr : &found->second;
}

class Merging {
  public:
    Merging(std::span<const KnownItem> known, std::span<const ItemPrint> theirs)
        : known_(known), theirs_(theirs), theirPlaces_(placesOf(theirs)) {
        for (std::size_t i = 0; i < known.size(); ++i) {
            kept_[known[i].kept.identity] = i;
            stored_[known[i].stored.identity] = i;
        }
    }

    void addOurs(const ItemPrint& item, std::size_t index) {
        const std::size_t* before = find(kept_, item.identity);
        const bool isNew = written_.insert(item.identity).second;
        if (!before) return takeOurs(item, index);
        const KnownItem& known = known_[*before];
        written_.insert(known.stored.identity);
        if (known.kept.content != item.content) return takeOurs(item, index);
        const std::size_t* now = find(theirPlaces_, known.stored.identity);
        if (now && theirs_[*now].content == known.stored.content) return takeOurs(item, index);
        // Somebody else changed or removed it. It is still known as it was, so that this holds the
        // next time.
        if (!isNew) return;
        if (now) merge_.items.push_back({false, *now});
        merge_.known.push_back(known);
    }

    void addTheirs(bool oursAreAll) {
        for (std::size_t i = 0; i < theirs_.size(); ++i) {
            const Fingerprint identity = theirs_[i].identity;
            if (written_.contains(identity)) continue;
            const std::size_t* before = find(stored_, identity);
            if (before && oursAreAll) continue;
            // Who knows it may remove it another time.
            if (before) merge_.known.push_back(known_[*before]);
            merge_.items.push_back({false, i});
        }
    }

    Merge result() { return std::move(merge_); }

  private:
    void takeOurs(const ItemPrint& item, std::size_t index) {
        merge_.items.push_back({true, index});
        merge_.known.push_back({item, item});
    }

    std::span<const KnownItem> known_;
    std::span<const ItemPrint> theirs_;
    const Places theirPlaces_;
    Places kept_, stored_;  // in known_
    std::unordered_set<Fingerprint> written_;
    Merge merge_;
};

}  // namespace

void FingerprintMaker::addUnit(std::uint32_t unit) { value_ = (value_ ^ unit) * 0x100000001B3u; }

void FingerprintMaker::add(std::wstring_view text) {
    for (const wchar_t unit : text) addUnit(static_cast<std::uint32_t>(unit));
    addUnit(0x110000);  // no character
}

Fingerprint identityPrint(std::wstring_view id, std::wstring_view group) {
    FingerprintMaker print;
    print.add(upperCase(id));
    print.add(upperCase(group));
    return print.result();
}

Merge merged(std::span<const KnownItem> known, std::span<const ItemPrint> ours,
             std::span<const ItemPrint> theirs, bool oursAreAll) {
    Merging merging(known, theirs);
    for (std::size_t i = 0; i < ours.size(); ++i) merging.addOurs(ours[i], i);
    merging.addTheirs(oursAreAll);
    return merging.result();
}

}  // namespace vela
