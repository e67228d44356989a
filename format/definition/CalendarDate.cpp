#include "CalendarDate.h"

namespace zel {

CalendarDate CalendarDateOf(std::int64_t ticks) {
    constexpr std::int64_t kTicksPerDay = 864000000000;
    if (ticks < 0) return {};
    // Counted in years that begin on 1 March, so that the leap day comes last: day 0 is 1 March of the year
    // 0.
    constexpr int kFirstOfMarchTo1601 = 584694;
    constexpr int kDaysOf400Years = 146097;
    const int days = static_cast<int>(ticks / kTicksPerDay) + kFirstOfMarchTo1601;
    const int era = days / kDaysOf400Years;
    const int dayOfEra = days % kDaysOf400Years;
    const int yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const int dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int marchMonth = (5 * dayOfYear + 2) / 153;
    const int month = marchMonth < 10 ? marchMonth + 3 : marchMonth - 9;
    return {era * 400 + yearOfEra + (month <= 2 ? 1 : 0), month, dayOfYear - (153 * marchMonth + 2) / 5 + 1};
}

}  // namespace zel
