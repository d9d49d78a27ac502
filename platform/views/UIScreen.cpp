#include "platform/views/UIScreen.h"

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/graphics/MainScreenScale.h"

const std::shared_ptr<UIScreen>& UIScreen::mainScreen()
{
    static const std::shared_ptr<UIScreen> screen = make<UIScreen>();
    return screen;
}

void UIScreen::setGeometry(const Geometry& geometry)
{
    const bool usable = std::isfinite(geometry.scale) && geometry.scale > 0;
    NSParameterAssert(usable, "UIScreen", "scale > 0");
    if (!usable || geometry == m_geometry)
        return;
    m_geometry = geometry;
    MainScreenScale::set(geometry.scale);
    m_observers.tell([](UIScreenObserver& observer) { observer.screenDidChange(); });
}
