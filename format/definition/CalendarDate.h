#pragma once

#include <cstdint>

namespace zel {

// A broken-down date of the Gregorian calendar, all zero where there is none.
struct CalendarDate {
    int year = 0;
    int month = 0;  // 1 to 12
    int day = 0;    // 1 to 31
};

// The date of ticks of 100 ns since 1 January 1601. Earlier times have none, as in the platform's own
// conversion.
CalendarDate CalendarDateOf(std::int64_t ticks);

}  // namespace zel
