// Patterns longer than a 16-bit counter, and patterns that change under it.
#include "notifications/pulse_pattern.h"

#include <gtest/gtest.h>

#include <string>

namespace vela {
namespace {

TEST(NotificationsPattern, GoesOnPastThe16BitRange) {
    std::wstring pattern(70'000, L'0');
    pattern.back() = L'1';
    PatternPlace place;
    for (std::size_t tick = 1; tick < pattern.size(); ++tick) EXPECT_FALSE(place.advance(pattern));
    EXPECT_TRUE(place.advance(pattern));
    EXPECT_TRUE(place.advance(L"10"));
}

}  // namespace
}  // namespace vela
