#include "preferences/core/item_merge.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace vela {
namespace {

// Items as "a1 b2": identities of one letter, contents of one digit.
std::vector<ItemPrint> items(std::string_view text) {
    std::vector<ItemPrint> result;
    for (std::size_t i = 0; i + 1 < text.size(); i += 3) {
        result.push_back({Fingerprint(text[i]), Fingerprint(text[i + 1])});
    }
    return result;
}
std::string shown(const std::vector<ItemPrint>& items) {
    std::string result;
    for (const ItemPrint& item : items) {
        result += {static_cast<char>(item.identity), static_cast<char>(item.content), ' '};
    }
    return result;
}

TEST(PreferencesItemMerge, KeepsWhatEverybodyDid) {
    const struct {
        const char *what, *known, *ours, *theirs, *result;
        bool all = true;
    } table[] = {
        {"nothing known, nothing stored", "", "b1 a1", "", "b1 a1 "},
        {"unchanged, in our order", "a1 b1", "b1 a1", "a1 b1", "b1 a1 "},
        {"ours changed, added and removed", "a1 b1 c1", "a2 b1 d1", "a1 b1 c1", "a2 b1 d1 "},
        {"theirs changed, added and removed", "a1 b1 c1", "a1 b1 c1", "a2 b1 d1", "b1 a2 d1 "},
        {"both changed, each another", "a1 b1", "a2 b1", "a1 b2", "a2 b2 "},
        {"both changed the same", "a1", "a2", "a3", "a2 "},
        {"both added the same", "", "a1", "a2", "a1 "},
        {"both removed the same", "a1 b1", "b1", "b1", "b1 "},
        {"ours changed, theirs removed", "a1", "a2", "", "a2 "},
        {"ours removed, theirs changed", "a1", "", "a2", ""},
        {"what we cannot name stays", "a1 b1", "b1", "a1 b1", "b1 a1 ", false},
        {"two of ours, theirs changed", "a1", "a1 a1", "a2", "a2 "},
        {"what was never read stays", "", "a1", "a0 b0", "a1 b0 "},
        {"all removed", "a1 b1", "", "a1 b1", ""},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.what);
        std::vector<KnownItem> known;
        for (const ItemPrint& item : items(row.known)) known.push_back({item, item});
        const auto ours = items(row.ours);
        auto stored = items(row.theirs);
        // Once more, with nothing changed meanwhile, changes nothing but the order.
        for (int round = 0; round < 2; ++round) {
            Merge merge = merged(known, ours, stored, row.all);
            std::vector<ItemPrint> now;
            for (const MergedItem& item : merge.items) {
                now.push_back(item.ours ? ours[item.index] : stored[item.index]);
            }
            stored = now;
            known = merge.known;
            std::string wanted = row.result, found = shown(now);
            if (round == 1 || std::string(row.what).starts_with("theirs")) {
                std::sort(wanted.begin(), wanted.end());
                std::sort(found.begin(), found.end());
            }
            EXPECT_EQ(found, wanted);
        }
    }
}

TEST(PreferencesItemMerge, FingerprintsTellTextsApart) {
    const auto print = [](std::initializer_list<std::wstring_view> texts) {
        FingerprintMaker maker;
        for (const auto text : texts) maker.add(text);
        return maker.result();
    };
    EXPECT_NE(print({L"ab", L"c"}), print({L"a", L"bc"}));
    EXPECT_NE(print({L"a", L""}), print({L"a"}));
    EXPECT_EQ(identityPrint(L"ação", L"g"), identityPrint(L"AÇÃO", L"G"));
    EXPECT_NE(identityPrint(L"a", L"b"), identityPrint(L"b", L"a"));
}

}  // namespace
}  // namespace vela
