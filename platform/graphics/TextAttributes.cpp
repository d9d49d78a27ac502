#include "platform/graphics/TextAttributes.h"

#include "platform/graphics/UIColor.h"
#include "platform/graphics/UIFont.h"

template <typename Class>
static std::shared_ptr<Class> attribute(const NSTextAttributes& attributes, const NSString& name)
{
    const auto found = attributes.find(name);
    return found == attributes.end() ? nullptr : std::dynamic_pointer_cast<Class>(found->second);
}

std::shared_ptr<UIFont> fontOfAttributes(const NSTextAttributes& attributes)
{
    return attribute<UIFont>(attributes, NSFontAttributeName);
}

std::shared_ptr<UIColor> foregroundColorOfAttributes(const NSTextAttributes& attributes)
{
    return attribute<UIColor>(attributes, NSForegroundColorAttributeName);
}
