// Timing of small operations and the table that compares two sides. Standard library only, so that
// the same benchmarks run on every platform.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bench {

// Rounds measured after the warm-up; the best one counts, being the least disturbed.
constexpr int kRounds = 7;

// Keeps the compiler from dropping the computation of `value`.
template <class T>
void keep(T value) {
    [[maybe_unused]] static volatile T sink;
    sink = value;
}

// Nanoseconds per call of `body(i)`, i = 0 .. calls-1. `prepare()` runs untimed before each round
// and restores what a round changes.
template <class F, class Prepare>
double nanoseconds(F&& body, long calls, Prepare&& prepare) {
    using Clock = std::chrono::steady_clock;
    double best = std::numeric_limits<double>::max();
    for (int round = 0; round <= kRounds; ++round) {
        prepare();
        const Clock::time_point start = Clock::now();
        for (long i = 0; i < calls; ++i) body(i);
        const std::chrono::duration<double, std::nano> elapsed = Clock::now() - start;
        const bool warmUp = round == 0;
        if (!warmUp) best = std::min(best, elapsed.count() / static_cast<double>(calls));
    }
    return best;
}

template <class F>
double nanoseconds(F&& body, long calls) {
    return nanoseconds(body, calls, [] {});
}

// What one call of each of two long operations takes, in nanoseconds. The rounds alternate, so
// that whatever else the machine does meets both alike; `prepare()` runs untimed before each of
// ours.
template <class Ours, class Theirs, class Prepare>
std::pair<double, double> alternately(Ours&& ours, Theirs&& theirs, Prepare&& prepare) {
    using Clock = std::chrono::steady_clock;
    const auto timed = [](auto& body) {
        const Clock::time_point start = Clock::now();
        body();
        return std::chrono::duration<double, std::nano>(Clock::now() - start).count();
    };
    std::pair best(std::numeric_limits<double>::max(), std::numeric_limits<double>::max());
    for (int round = 0; round <= kRounds; ++round) {
        prepare();
        const double first = timed(ours);
        const double second = timed(theirs);
        if (round == 0) continue;  // warm-up
        best = {std::min(best.first, first), std::min(best.second, second)};
    }
    return best;
}

// One comparison. `ours` and `theirs` are in nanoseconds; ours / theirs must not exceed `limit`.
struct Row {
    std::string what;
    double ours;
    double theirs;
    double limit;

    double ratio() const { return ours / theirs; }
    bool withinLimit() const { return ratio() <= limit; }
};

// Prints an aligned table to standard output; whether every row is within its limit.
inline bool report(std::string_view title, const std::vector<Row>& rows) {
    std::size_t width = title.size();
    for (const Row& row : rows) width = std::max(width, row.what.size());
    const int column = static_cast<int>(width);
    std::printf("%-*.*s  %12s  %12s  %8s  %8s\n", column, static_cast<int>(title.size()),
                title.data(), "ours ns", "theirs ns", "ratio", "limit");
    for (const Row& row : rows) {
        std::printf("%-*s  %12.1f  %12.1f  %8.2f  %8.2f  %s\n", column, row.what.c_str(), row.ours,
                    row.theirs, row.ratio(), row.limit, row.withinLimit() ? "ok" : "OVER");
    }
    std::printf("\n");
    return std::all_of(rows.begin(), rows.end(), [](const Row& row) { return row.withinLimit(); });
}

}  // namespace bench
