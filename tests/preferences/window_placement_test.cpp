#include "preferences/core/window_placement.h"

#include <gtest/gtest.h>

#include <climits>

namespace vela {
namespace {

TEST(PreferencesWindowPlacement, BringsIntoView) {
    const WindowRect area{100, 50, 1000, 800};
    struct {
        WindowRect window, expected;
    } const table[] = {
        {{200, 100, 300, 200}, {200, 100, 300, 200}},
        {{-500, -500, 300, 200}, {100, 50, 300, 200}},
        {{5000, 5000, 300, 200}, {800, 650, 300, 200}},
        {{0, 0, 5000, 5000}, {100, 50, 1000, 800}},
        {{200, 100, 0, -5}, {100, 50, 1000, 800}},
        {{INT_MIN, INT_MAX, 10, 10}, {100, 840, 10, 10}},
    };
    for (const auto& row : table) EXPECT_EQ(broughtIntoView(row.window, area), row.expected);
}

}  // namespace
}  // namespace vela
