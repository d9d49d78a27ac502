#include "platform/foundation/NSAssertionHandler.h"
#include "platform/layout/VisualFormatBuilder.h"
#include "platform/layout/VisualFormatParser.h"

NSLayoutConstraint::List NSLayoutConstraint::constraintsWithVisualFormat(
    const NSString& format, NSLayoutFormatOptions options, const Metrics& metrics, const Views& views)
{
    VisualFormatError error;
    const auto tree = VisualFormatParser(format, error).parse();
    auto constraints = tree ? VisualFormatBuilder(options, metrics, views, error).build(*tree) : List();
    NSCAssert(error.message.isEmpty(), "NSLayoutConstraint", error.pointingInto(format));
    return constraints;
}

NSLayoutConstraint::List NSLayoutConstraint::constraintsWithVisualFormats(
    std::initializer_list<const char*> formats, const Views& views, const Metrics& metrics)
{
    List all;
    for (const char* const format : formats) {
        const List constraints = constraintsWithVisualFormat(
            NSString::fromUtf8(format), NSLayoutFormatOptions::None, metrics, views);
        all.insert(all.end(), constraints.begin(), constraints.end());
    }
    return all;
}

NSLayoutConstraint::List NSLayoutConstraint::activateVisualFormats(
    std::initializer_list<const char*> formats, const Views& views, const Metrics& metrics)
{
    List constraints = constraintsWithVisualFormats(formats, views, metrics);
    activateConstraints(constraints);
    return constraints;
}
