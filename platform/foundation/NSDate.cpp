#include "platform/foundation/NSDate.h"

#include "platform/foundation/NumberRange.h"
#include "platform/foundation/Scheduler.h"

NSDate dateWithTimeIntervalSinceNow(NSTimeInterval seconds)
{
    return dateByAddingTimeInterval(Scheduler::current().currentDate(), seconds);
}

NSDate dateByAddingTimeInterval(const NSDate& date, NSTimeInterval seconds)
{
    const double milliseconds = seconds * 1000;
    // Twice as much: the date adds its own distance from 1970.
    if (!date.isValid() || !isInRange<qint64>(2 * milliseconds))
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
