#include "platform/foundation/NSCoding.h"

#include <QHash>

namespace {

// A function-level static: registrations of other files may run before this file's.
QHash<NSString, NSCoder::Recipe::Maker>& registeredMakers()
{
    static QHash<NSString, NSCoder::Recipe::Maker> makers;
    return makers;
}

} // namespace

NSCoder::~NSCoder() = default;

NSCoder::Registration::Registration(const Recipe& recipe)
{
    registeredMakers().insert(recipe.name, recipe.maker);
}

NSCoder::Recipe::Maker NSCoder::makerFor(const NSString& className, const Recipe& expected)
{
    return className == expected.name ? expected.maker : registeredMakers().value(className);
}
