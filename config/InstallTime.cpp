#include "config/InstallTime_p.h"

#include <algorithm>

int installDays(qint64 installTime, const QDateTime &now)
{
    // Beyond it QDateTime's milliseconds, and then the days of an int, would overflow.
    constexpr qint64 furthest = 400'000'000'000;
    const qint64 time = std::clamp(installTime, -furthest, furthest);
    const qint64 days = QDateTime::fromSecsSinceEpoch(time).daysTo(now);
    return days < 0 ? 0 : static_cast<int>(days) + 1;
}
