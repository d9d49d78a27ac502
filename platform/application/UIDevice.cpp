#include "platform/application/UIDevice.h"

#include "platform/views/UIScreen.h"

const std::shared_ptr<UIDevice>& UIDevice::currentDevice()
{
    static const std::shared_ptr<UIDevice> device = make<UIDevice>();
    return device;
}

UIUserInterfaceIdiom UIDevice::userInterfaceIdiom() const
{
    constexpr double smallestTablet = 600;
    const CGRect screen = UIScreen::mainScreen()->bounds();
    const double shorterSide = std::min(screen.width(), screen.height());
    if (shorterSide <= 0)
        return UIUserInterfaceIdiom::Unspecified;
    return shorterSide >= smallestTablet ? UIUserInterfaceIdiom::Pad : UIUserInterfaceIdiom::Phone;
}
