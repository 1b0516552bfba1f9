// The keyed collection against a plain vector, and the rules for keys, cursors, dying values and
// short memory.
#include "collections/core/keyed_collection.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace {

std::atomic<std::size_t> liveBytes = 0;
thread_local long allocationsLeft = -1;  // before one fails; negative: none fails

}  // namespace

void* operator new(std::size_t size) {
    void* block = allocationsLeft == 0 ? nullptr : std::malloc(size);
    if (block == nullptr) throw std::bad_alloc();
    if (allocationsLeft > 0) --allocationsLeft;
    liveBytes += malloc_usable_size(block);
    return block;
}

void operator delete(void* block) noexcept {
    if (block != nullptr) liveBytes -= malloc_usable_size(block);
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept { operator delete(block); }

namespace {

using Numbers = vela::KeyedCollection<int>;

std::vector<int> contents(Numbers& numbers) {
    std::vector<int> result;
    Numbers::Cursor cursor(numbers);
    while (const int* value = cursor.next()) result.push_back(*value);
    return result;
}

Numbers numbersUpTo(int last) {
    Numbers numbers;
    for (int i = 1; i <= last; ++i) numbers.add(i, std::to_wstring(i));
    return numbers;
}

// A vector that does what the collection must do. A cursor is the number of entries at or before
// its place.
struct Model {
    struct Entry {
        int value;
        std::optional<std::wstring> key;  // in capitals
    };

    std::size_t indexOf(const std::wstring& key) const {
        const auto found = std::find_if(entries.begin(), entries.end(),
                                        [&](const Entry& entry) { return entry.key == key; });
        return static_cast<std::size_t>(found - entries.begin());
    }

    bool insert(std::size_t index, Entry entry) {
        if (entry.key && indexOf(*entry.key) != entries.size()) return false;
        for (std::size_t& cursor : cursors) cursor += index < cursor ? 1 : 0;
        entries.insert(entries.begin() + static_cast<std::ptrdiff_t>(index), std::move(entry));
        return true;
    }

    bool removeAt(std::size_t index) {
        if (index >= entries.size()) return false;
        for (std::size_t& cursor : cursors) cursor -= index < cursor ? 1 : 0;
        entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(index));
        return true;
    }

    const int* next(std::size_t cursor) {
        std::size_t& place = cursors[cursor];
        return place == entries.size() ? nullptr : &entries[place++].value;
    }

    std::vector<Entry> entries;
    std::vector<std::size_t> cursors;
};

class RandomOperations : public testing::Test {
  protected:
    static constexpr std::size_t kCursors = 4;

    RandomOperations() : cursors(kCursors, Numbers::Cursor(numbers)) {
        model.cursors.resize(kCursors);
    }

    std::size_t below(std::size_t end) {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(random);
    }

    void insertOne() {
        const std::size_t size = model.entries.size();
        const std::size_t index = below(3) == 0 ? size : below(size + 1);
        const int value = ++lastValue;
        if (below(4) == 0) {
            model.insert(index, {value, std::nullopt});
            EXPECT_TRUE(numbers.insert(index + 1, value));
            return;
        }
        const std::wstring number = std::to_wstring(below(4000));
        EXPECT_EQ(numbers.insert(index + 1, value, L"k\u00E9y" + number),
                  model.insert(index, {value, L"K\u00C9Y" + number}));
    }

    void removeOne() {
        if (below(2) == 0) {
            const std::size_t index = below(model.entries.size() + 1);
            EXPECT_EQ(numbers.removeAt(index + 1), model.removeAt(index));
            return;
        }
        const std::wstring number = std::to_wstring(below(4000));
        EXPECT_EQ(numbers.remove(L"K\u00E9Y" + number),
                  model.removeAt(model.indexOf(L"K\u00C9Y" + number)));
    }

    void moveOneCursor() {
        const std::size_t chosen = below(kCursors);
        if (below(300) == 0) {
            cursors[chosen].reset();
            model.cursors[chosen] = 0;
        } else if (below(100) == 0) {
            const std::size_t source = below(kCursors);
            cursors[chosen] = cursors[source];
            model.cursors[chosen] = model.cursors[source];
        }
        const int* expected = model.next(chosen);
        const int* delivered = cursors[chosen].next();
        ASSERT_EQ(delivered == nullptr, expected == nullptr);
        if (expected) {
            EXPECT_EQ(*delivered, *expected);
        }
    }

    void compareAll() {
        ASSERT_EQ(numbers.size(), model.entries.size());
        for (std::size_t i = 0; i < model.entries.size(); ++i) {
            const Model::Entry& entry = model.entries[i];
            ASSERT_EQ(*numbers.at(i + 1), entry.value);
            if (!entry.key) continue;
            ASSERT_EQ(numbers.positionOf(*entry.key), i + 1);
            ASSERT_EQ(*numbers.find(*entry.key), entry.value);
        }
        EXPECT_EQ(numbers.at(0), nullptr);
        EXPECT_EQ(numbers.at(numbers.size() + 1), nullptr);
    }

    std::mt19937 random{7};
    int lastValue = 0;
    Numbers numbers;
    std::vector<Numbers::Cursor> cursors;
    Model model;
};

TEST_F(RandomOperations, AgreeWithAVector) {
    for (int phase = 0; phase < 6; ++phase) {
        const bool growing = phase % 2 == 0;
        for (int i = 0; i < 5000 && !HasFatalFailure(); ++i) {
            (below(10) < (growing ? 8u : 1u)) ? insertOne() : removeOne();
            moveOneCursor();
            if (i % 500 == 0) compareAll();
        }
        compareAll();
    }
}

// Enough entries for three levels of nodes, in the orders that fill them differently.
TEST(KeyedCollection, KeepsItsOrderWhileManyComeAndGo) {
    std::mt19937 random(3);
    const std::function<std::size_t(std::size_t)> places[] = {
        [](std::size_t) { return 0; },
        [](std::size_t size) { return size; },
        [&](std::size_t size) { return random() % (size + 1); },
    };
    for (const auto& place : places) {
        Numbers numbers;
        std::vector<int> expected;
        for (int i = 0; i < 40'000; ++i) {
            const std::size_t index = place(expected.size());
            numbers.insert(index + 1, i, std::to_wstring(i));
            expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(index), i);
        }
        ASSERT_EQ(contents(numbers), expected);
        while (!expected.empty()) {
            const std::size_t index = random() % expected.size();
            ASSERT_EQ(numbers.positionOf(std::to_wstring(expected[index])), index + 1);
            ASSERT_TRUE(numbers.removeAt(index + 1));
            expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(index));
            if (expected.size() % 5000 != 0) continue;
            ASSERT_EQ(contents(numbers), expected);
        }
    }
}

TEST(KeyedCollection, GivesMemoryBack) {
    const std::size_t before = liveBytes;
    {
        Numbers numbers = numbersUpTo(100'000);
        std::mt19937 random(5);
        while (numbers.size() > 1000) numbers.removeAt(random() % numbers.size() + 1);
        EXPECT_LT(liveBytes - before, 300'000) << "too much for 1,000 entries";
        while (numbers.removeAt(1)) continue;
        EXPECT_LT(liveBytes - before, 1000) << "too much for none";
    }
    EXPECT_EQ(liveBytes, before);
}

TEST(KeyedCollection, IsUnchangedWhenMemoryIsShort) {
    Numbers numbers;
    std::vector<int> expected;
    int failures = 0;
    for (int i = 0; i < 17'000; ++i) {
        const std::size_t index = expected.size() / 2;
        const std::wstring key = L"key " + std::to_wstring(i);
        for (long allowed = 0; numbers.size() == expected.size(); ++allowed) {
            ASSERT_EQ(numbers.find(key), nullptr);
            allocationsLeft = allowed;
            try {
                numbers.insert(index + 1, i, key);
            } catch (const std::bad_alloc&) {
                ++failures;
            }
            allocationsLeft = -1;
        }
        ASSERT_EQ(numbers.positionOf(key), index + 1);
        expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(index), i);
    }
    EXPECT_GT(failures, 17'000) << "not only the entries' own blocks";
    EXPECT_EQ(contents(numbers), expected);
}

TEST(KeyedCollection, ComparesKeysWithoutCase) {
    struct {
        const wchar_t* stored;
        const wchar_t* asked;
        bool same;
    } const cases[] = {
        {L"Name", L"nAME", true},     {L"\u00E9t\u00E9", L"\u00C9T\u00C9", true},
        {L"\u00FF", L"\u0178", true}, {L"", L"", true},
        {L"", L" ", false},           {L"e", L"\u00E9", false},
        {L"\u00DF", L"SS", false},    {L"ab", L"abc", false},
    };
    for (const auto& c : cases) {
        Numbers numbers;
        numbers.add(0);  // without a key, which is not the empty one
        EXPECT_EQ(numbers.find(L""), nullptr);
        ASSERT_TRUE(numbers.add(1, c.stored));
        EXPECT_EQ(numbers.find(c.asked) != nullptr, c.same) << testing::PrintToString(c.asked);
        EXPECT_EQ(numbers.add(2, c.asked), !c.same) << testing::PrintToString(c.asked);
        EXPECT_EQ(numbers.size(), c.same ? 2u : 3u);
    }
}

// What a cursor that has delivered 1 and 2 of 1 to 4 delivers after a change.
TEST(Cursor, SurvivesChanges) {
    struct {
        const char* change;
        std::function<void(Numbers&)> apply;
        std::vector<int> rest;
    } const cases[] = {
        {"the current goes", [](Numbers& n) { n.remove(L"2"); }, {3, 4}},
        {"all so far go", [](Numbers& n) { n.removeAt(1), n.removeAt(1); }, {3, 4}},
        {"the following goes", [](Numbers& n) { n.remove(L"3"); }, {4}},
        {"replaced", [](Numbers& n) { n.remove(L"2"), n.insert(2, 9, L"2"); }, {9, 3, 4}},
        {"added before", [](Numbers& n) { n.insert(1, 9), n.insert(3, 8); }, {3, 4}},
        {"added behind", [](Numbers& n) { n.insert(3, 9), n.add(8); }, {9, 3, 4, 8}},
        {"cleared", [](Numbers& n) { n.clear(); }, {}},
        {"refilled", [](Numbers& n) { n.clear(), n.add(5); }, {5}},
        {"moved from", [](Numbers& n) { Numbers taker(std::move(n)); }, {}},
        {"moved to", [](Numbers& n) { n = numbersUpTo(2); }, {1, 2}},
    };
    for (const auto& c : cases) {
        Numbers numbers = numbersUpTo(4);
        Numbers::Cursor cursor(numbers);
        cursor.next();
        cursor.next();
        Numbers::Cursor clone(cursor);
        c.apply(numbers);
        for (Numbers::Cursor* walker : {&cursor, &clone}) {
            std::vector<int> rest;
            while (const int* value = walker->next()) rest.push_back(*value);
            EXPECT_EQ(rest, c.rest) << c.change;
        }
        numbers.add(7);
        ASSERT_NE(cursor.next(), nullptr) << "an entry appended at the end: " << c.change;
        EXPECT_EQ(cursor.next(), nullptr) << c.change;
        cursor.reset();
        EXPECT_EQ(cursor.next(), numbers.at(1)) << c.change;
    }
}

// A value that runs code when it dies.
struct Mortal {
    explicit Mortal(std::function<void()> code) : lastWords(std::move(code)) {}
    ~Mortal() { lastWords(); }
    std::function<void()> lastWords;
};
using Mortals = vela::KeyedCollection<std::unique_ptr<Mortal>>;

TEST(DyingValue, MayChangeTheCollection) {
    struct {
        const char* end;
        std::function<void(Mortals&)> apply;
        std::size_t left;
    } const cases[] = {
        {"remove", [](Mortals& m) { m.remove(L"a"); }, 2},
        {"remove at", [](Mortals& m) { m.removeAt(1); }, 2},
        {"clear", [](Mortals& m) { m.clear(); }, 1},
        {"move to", [](Mortals& m) { m = Mortals(); }, 1},
        {"move from", [](Mortals& m) { Mortals taker(std::move(m)); }, 1},
        {"destroy", [](Mortals& m) { std::destroy_at(&m), new (&m) Mortals; }, 0},
    };
    for (const auto& c : cases) {
        Mortals mortals;
        int deaths = 0;
        const auto die = [&] {
            ++deaths;
            EXPECT_EQ(mortals.find(L"a"), nullptr) << c.end;
            mortals.remove(L"b");
            EXPECT_TRUE(mortals.add(nullptr, L"A")) << c.end;
        };
        mortals.add(std::make_unique<Mortal>(die), L"a");
        mortals.add(nullptr, L"b");
        mortals.add(nullptr, L"c");
        c.apply(mortals);
        EXPECT_EQ(deaths, 1) << c.end;
        EXPECT_EQ(mortals.size(), c.left) << c.end;
    }
}

TEST(DyingValue, MayDestroyTheCollection) {
    for (const bool all : {false, true}) {
        auto mortals = std::make_unique<Mortals>();
        Mortals& alias = *mortals;
        Mortals::Cursor cursor(alias);
        mortals->add(std::make_unique<Mortal>([&] { mortals.reset(); }));
        mortals->add(nullptr);
        all ? alias.clear() : static_cast<void>(alias.removeAt(1));
        EXPECT_EQ(mortals, nullptr);
        Mortals::Cursor clone(cursor);
        EXPECT_EQ(cursor.next(), nullptr);
        cursor.reset();
        EXPECT_EQ(cursor.next(), nullptr);
        EXPECT_EQ(clone.next(), nullptr);
    }
}

}  // namespace
