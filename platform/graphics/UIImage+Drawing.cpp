// The part of UIImage that draws into the context in force.

#include "platform/graphics/CGContext.h"
#include "platform/graphics/UIGraphics.h"
#include "platform/graphics/UIImage.h"

void UIImage::drawInRect(const CGRect& rect) const
{
    if (CGContext* context = UIGraphicsGetCurrentContext())
        context->drawImage(*this, rect);
}
