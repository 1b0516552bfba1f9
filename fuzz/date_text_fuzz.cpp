// Dates and times as text: whatever is read, every result is one that callers may meet.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "text/dates/core/date_text.h"
#include "text/dates/core/stopwatch.h"
#include "text/dates/core/time_text.h"

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

}  // namespace

// The first two bytes are a number of days, the others characters; a line break parts two texts.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const int days = static_cast<std::int16_t>(data[0] | data[1] << 8);
    const std::wstring all(data + 2, data + size);
    const std::size_t end = std::min(all.find(L'\n'), all.size());
    const std::wstring first = all.substr(0, end);
    const std::wstring second = all.substr(std::min(end + 1, all.size()));

    const int fault = vela::dateFault(first);
    require(fault >= 0 && fault <= 9);
    const auto day = vela::readDate(first);
    if (fault == 0) {
        require(vela::dayIn(first) >= 1 && vela::dayIn(first) <= 31);
        require(vela::monthIn(first) >= 1 && vela::monthIn(first) <= 12);
        // Only a two-digit year is not read here: it is 1900 then.
        require(day || first.size() == 8);
    }
    if (day) require(vela::readDate(vela::dateText(*day)) == day);

    const std::wstring later = vela::datePlus(first, days);
    require(later.empty() || vela::readDate(later).has_value());

    const int order = vela::compareDates(first, second);
    const int reversed = vela::compareDates(second, first);
    require(order == (reversed == 1 ? 3 : reversed == 3 ? 1 : reversed));
    const int between = vela::daysBetween(first, second);
    const bool known = between != -9999;
    require(!known || order == (between == 0 ? 2 : between > 0 ? 3 : 1));
    if (vela::isDateWithin(first, second, second)) require(between == 0);

    const auto unreadable = [](const std::wstring&) { return std::nullopt; };
    const std::wstring standard = vela::standardDate(first, L'/', unreadable);
    require(standard == first || vela::dateFault(standard) == 0 ||
            standard.ends_with(first.substr(8)));

    const int time = vela::readTime(first);
    require(time >= 0 && time <= 9999 &&
            vela::timeText(static_cast<std::int16_t>(time)).size() == 5);
    vela::byPicture(vela::ElapsedTime(days * 65'536), first);
    return 0;
}
