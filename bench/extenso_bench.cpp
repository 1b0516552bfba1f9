// What an amount in words takes, over amounts of all lengths. Fails above one microsecond.
#include <random>
#include <vector>

#include "bench/measure.h"
#include "bench/tables.h"
#include "text/numbers/core/extenso.h"

namespace {

constexpr double kBoundNanoseconds = 1'000;

// As many amounts of each number of digits, from hundredths to thousands of millions.
std::vector<vela::Currency> makeAmounts(std::size_t count) {
    std::mt19937_64 random(20'240'611);
    std::vector<vela::Currency> amounts;
    vela::Currency end = 100;
    for (std::size_t i = 0; i < count; ++i) {
        amounts.push_back(std::uniform_int_distribution<vela::Currency>(0, end)(random) * 100);
        end = end < 1'000'000'000'000 ? end * 10 : 100;
    }
    return amounts;
}

double measure(const wchar_t* currency) {
    const std::vector<vela::Currency> amounts = makeAmounts(100'000);
    return bench::nanoseconds(
        [&](long i) {
            const auto amount = amounts[static_cast<std::size_t>(i)];
            bench::keep(vela::inWords(amount, currency).size());
        },
        static_cast<long>(amounts.size()));
}

}  // namespace

bool bench::extenso() {
    return report("amounts in words (ours) to 1,000 ns (theirs)",
                  {{"Extenso of a plain number", measure(L""), kBoundNanoseconds, 1},
                   {"Extenso of money", measure(L"Euros"), kBoundNanoseconds, 1}});
}
