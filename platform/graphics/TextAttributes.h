// The attributes of a text that a bar or a label draws, by name.
#pragma once

#include "platform/foundation/NSObject.h"

#include <map>

class UIColor;
class UIFont;

using NSTextAttributes = std::map<NSString, std::shared_ptr<NSObject>>;

inline const NSString NSFontAttributeName = QStringLiteral("NSFont"); // a UIFont
inline const NSString NSForegroundColorAttributeName = QStringLiteral("NSColor"); // a UIColor

// Null where the attribute is missing or of another class.
std::shared_ptr<UIFont> fontOfAttributes(const NSTextAttributes&);
std::shared_ptr<UIColor> foregroundColorOfAttributes(const NSTextAttributes&);
