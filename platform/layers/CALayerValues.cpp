#include "platform/layers/CALayerValues.h"

#include "platform/graphics/UIColor.h"

CGAffineTransform CALayerValues::transformToSuperlayer() const
{
    const double anchorX = bounds.x() + anchorPoint.x() * bounds.width();
    const double anchorY = bounds.y() + anchorPoint.y() * bounds.height();
    return { transform.m11(), transform.m12(), transform.m21(), transform.m22(),
        position.x() + transform.dx() - anchorX * transform.m11() - anchorY * transform.m21(),
        position.y() + transform.dy() - anchorX * transform.m12() - anchorY * transform.m22() };
}

CGRect CALayerValues::frame() const
{
    if (transform.isIdentity())
        return { position.x() - anchorPoint.x() * bounds.width(),
            position.y() - anchorPoint.y() * bounds.height(), bounds.width(), bounds.height() };
    return transformToSuperlayer().mapRect(bounds);
}
