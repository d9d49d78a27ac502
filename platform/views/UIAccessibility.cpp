#include "platform/views/UIAccessibility.h"

#include "platform/graphics/UIBezierPath.h"
#include "platform/views/UIView.h"

std::shared_ptr<const UIBezierPath> UIAccessibilityConvertPathToScreenCoordinates(
    const UIBezierPath& path, const UIView& view)
{
    // Places are enough to know the whole way: it is affine.
    const CGPoint origin = view.convertPointToView({ 0, 0 }, nullptr);
    const CGPoint right = view.convertPointToView({ 1, 0 }, nullptr) - origin;
    const CGPoint down = view.convertPointToView({ 0, 1 }, nullptr) - origin;
    const auto onScreen = UIBezierPath::bezierPath();
    onScreen->appendPath(path);
    onScreen->applyTransform({ right.x(), right.y(), down.x(), down.y(), origin.x(), origin.y() });
    return onScreen;
}
