#include "platform/graphics/UIUserInterfaceStyle.h"

std::atomic<UIUserInterfaceStyle> CurrentUserInterfaceStyle::s_style { UIUserInterfaceStyle::Light };

static ObserverList<UserInterfaceStyleObserver>& observers()
{
    static ObserverList<UserInterfaceStyleObserver> list;
    return list;
}

void CurrentUserInterfaceStyle::set(UIUserInterfaceStyle style)
{
    if (s_style.exchange(style) == style)
        return;
    observers().tell(
        [style](UserInterfaceStyleObserver& observer) { observer.userInterfaceStyleDidChange(style); });
}

void CurrentUserInterfaceStyle::addObserver(std::weak_ptr<UserInterfaceStyleObserver> observer)
{
    observers().add(std::move(observer));
}

void CurrentUserInterfaceStyle::removeObserver(const UserInterfaceStyleObserver& observer)
{
    observers().remove(observer);
}
