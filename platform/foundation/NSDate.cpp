#include "platform/foundation/NSDate.h"

#include "platform/foundation/Scheduler.h"

#include <cmath>

NSDate dateWithTimeIntervalSinceNow(NSTimeInterval seconds)
{
    return dateByAddingTimeInterval(Scheduler::current().currentDate(), seconds);
}

NSDate dateByAddingTimeInterval(const NSDate& date, NSTimeInterval seconds)
{
    const double milliseconds = seconds * 1000;
    constexpr double farthest = 0x1p62; // the rounding below takes less than 2^63
    if (!date.isValid() || !(std::abs(milliseconds) < farthest))
        return {};
    const NSDate result = date.addMSecs(qRound64(milliseconds));
    return result.isValid() ? result : NSDate();
}

NSString description(const NSDate& date)
{
    if (!date.isValid())
        return QStringLiteral("(null)");
    return date.toUTC().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) + QStringLiteral(" +0000");
}
