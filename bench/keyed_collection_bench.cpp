// How the cost of one operation of a keyed collection grows from 1,000 to 1,000,000 entries, and
// how a look-up by key compares with a std::unordered_map whose caller folds the keys.
//
// Keys and positions are visited in random order. Fails when a limit is exceeded.
#include <algorithm>
#include <numeric>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include "bench/measure.h"
#include "bench/tables.h"
#include "collections/core/keyed_collection.h"
#include "text/core/upper_case.h"

namespace {

using Collection = vela::KeyedCollection<std::size_t>;
using Map = std::unordered_map<std::wstring, std::size_t>;

constexpr std::size_t kSmall = 1'000;
constexpr std::size_t kLarge = 1'000'000;
constexpr double kGrowthLimit = 20;
constexpr double kMapLimit = 3;

std::wstring storedKey(std::size_t number) { return L"Key" + std::to_wstring(number); }

std::wstring askedKey(std::size_t number) { return L"kEY" + std::to_wstring(number); }

Collection makeCollection(std::size_t size) {
    Collection collection;
    for (std::size_t i = 0; i < size; ++i) collection.add(i, storedKey(i));
    return collection;
}

Map makeMap(std::size_t size) {
    Map map;
    for (std::size_t i = 0; i < size; ++i) map.emplace(vela::upperCase(storedKey(i)), i);
    return map;
}

// What the measured calls ask for, in the order they ask: `calls` different entries of `size`.
struct Requests {
    Requests(std::size_t size, std::size_t calls) : numbers(size) {
        std::mt19937 random(20'240'611);
        std::iota(numbers.begin(), numbers.end(), std::size_t{0});
        std::shuffle(numbers.begin(), numbers.end(), random);
        numbers.resize(calls);
        for (const std::size_t number : numbers) {
            keys.push_back(askedKey(number));
            newKeys.push_back(askedKey(number + size));
        }
    }

    std::vector<std::size_t> numbers;
    std::vector<std::wstring> keys;
    std::vector<std::wstring> newKeys;  // that no entry has
};

struct Costs {
    double build, append, insert, findKey, findPosition, removeKey, removePosition;
};

// Changing calls are a fraction of the size, so that the size stays what the row says.
Costs measureCollection(std::size_t size) {
    const long calls = static_cast<long>(size == kSmall ? size / 5 : size / 20);
    const long lookUps = static_cast<long>(std::min<std::size_t>(size, 200'000));
    const Requests requests(size, static_cast<std::size_t>(lookUps));
    Collection collection;
    const auto rebuild = [&] { collection = makeCollection(size); };
    const auto key = [&](long i) -> const std::wstring& { return requests.keys[i]; };
    const auto newKey = [&](long i) -> const std::wstring& { return requests.newKeys[i]; };
    // Within what is left after the removals.
    const auto position = [&](long i) { return requests.numbers[i] * 4 / 5 + 1; };

    Costs costs{};
    costs.build = bench::nanoseconds([&](long) { rebuild(); }, 1) / static_cast<double>(size);
    costs.append =
        bench::nanoseconds([&](long i) { collection.add(0, newKey(i)); }, calls, rebuild);
    costs.insert = bench::nanoseconds([&](long i) { collection.insert(position(i), 0, newKey(i)); },
                                      calls, rebuild);
    costs.removeKey =
        bench::nanoseconds([&](long i) { collection.remove(key(i)); }, calls, rebuild);
    costs.removePosition =
        bench::nanoseconds([&](long i) { collection.removeAt(position(i)); }, calls, rebuild);
    rebuild();
    costs.findKey =
        bench::nanoseconds([&](long i) { bench::keep(*collection.find(key(i))); }, lookUps);
    costs.findPosition = bench::nanoseconds(
        [&](long i) { bench::keep(*collection.at(requests.numbers[i] + 1)); }, lookUps);
    return costs;
}

double measureMap(std::size_t size) {
    const long lookUps = static_cast<long>(std::min<std::size_t>(size, 200'000));
    const Requests requests(size, static_cast<std::size_t>(lookUps));
    const Map map = makeMap(size);
    return bench::nanoseconds(
        [&](long i) { bench::keep(map.find(vela::upperCase(requests.keys[i]))->second); }, lookUps);
}

}  // namespace

bool bench::keyedCollection() {
    const Costs small = measureCollection(kSmall);
    const Costs large = measureCollection(kLarge);
    const auto growth = [&](const char* what, double Costs::*cost) {
        return Row{what, large.*cost, small.*cost, kGrowthLimit};
    };
    const std::vector<Row> growthRows = {
        growth("add, averaged from empty", &Costs::build),
        growth("add at the end", &Costs::append),
        growth("add in the middle", &Costs::insert),
        growth("look up by key", &Costs::findKey),
        growth("look up by position", &Costs::findPosition),
        growth("remove by key", &Costs::removeKey),
        growth("remove by position", &Costs::removePosition),
    };
    const bool grows = report("1,000,000 entries (ours) to 1,000 (theirs)", growthRows);

    const std::vector<Row> mapRows = {
        {"look up by key, 1,000", small.findKey, measureMap(kSmall), kMapLimit},
        {"look up by key, 1,000,000", large.findKey, measureMap(kLarge), kMapLimit},
    };
    return report("collection (ours) to std::unordered_map (theirs)", mapRows) && grows;
}
