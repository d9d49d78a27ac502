#include "platform/foundation/NSAssertionHandler.h"
#include "platform/layout/VisualFormatBuilder.h"

NSLayoutConstraint::List NSLayoutConstraint::constraintsWithVisualFormat(
    const NSString& format, NSLayoutFormatOptions options, const Metrics& metrics, const Views& views)
{
    VisualFormatError error;
    const auto tree = VisualFormat::parse(format, error);
    auto constraints = tree ? VisualFormatBuilder(options, metrics, views, error).build(*tree) : List();
    NSCAssert(error.message.isEmpty(), "NSLayoutConstraint", error.pointingInto(format));
    return constraints;
}
