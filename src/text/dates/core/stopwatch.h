// A stopwatch over a clock of milliseconds with 32 bits, and the times that it shows.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vela {

// The clock may wrap around between two readings: what matters is the difference.
class Stopwatch {
  public:
    void start(std::uint32_t now) {
        start_ = now;
        stopped_ = false;
    }
    void stop(std::uint32_t now) {
        stop_ = now;
        stopped_ = true;
    }
    // From the start, or from 0 on the clock without one, to the stop, or to `now` without one.
    // Negative from 2^31 milliseconds, about 24.8 days, on.
    std::int32_t milliseconds(std::uint32_t now) const {
        return static_cast<std::int32_t>((stopped_ ? stop_ : now) - start_);
    }

  private:
    std::uint32_t start_ = 0;
    std::uint32_t stop_ = 0;
    bool stopped_ = false;
};

// Whole seconds, minutes and hours, each by integerPart() from the one before: 3,000 milliseconds
// are 2 seconds, 3,200 are 3. So the rests may be 60.
struct ElapsedTime {
    explicit ElapsedTime(std::int32_t milliseconds);

    std::int32_t restMinutes() const { return minutes - hours * 60; }
    std::int32_t restSeconds() const { return seconds - minutes * 60; }

    std::int32_t seconds;
    std::int32_t minutes;
    std::int32_t hours;
};

// "2 Horas 1 Minuto 5 Segundos "; parts that are zero or less are left out.
std::wstring inWords(const ElapsedTime& time);

// "2:1:5"
std::wstring plainText(const ElapsedTime& time);

// Whether a clock can show it: below 24 hours, 60 minutes and 60 seconds.
bool isTimeOfDay(const ElapsedTime& time);

// By a picture as for times of day, but with as many hours as there are. h, n and s are the parts,
// doubled for two digits at least; m behind h is minutes too. Text in quotes and what stands behind
// a backslash is copied, and so is the rest, without AM, PM and blanks at the ends. The names "Long
// Time", "Medium Time", "Short Time" and "General Date" are known. plainText() for pictures without
// any part.
std::wstring byPicture(const ElapsedTime& time, std::wstring_view picture);

}  // namespace vela
