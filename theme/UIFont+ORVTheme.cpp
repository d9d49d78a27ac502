#include "theme/UIFont+ORVTheme.h"

std::shared_ptr<UIFont> orv_oruvaneNavigationBarTitleFont()
{
    return UIFont::fontWithName(QStringLiteral("AvenirNextCondensed-Bold"), 22);
}

std::shared_ptr<UIFont> orv_oruvaneProfileNumbersSubtitleFont()
{
    return UIFont::fontWithName(QStringLiteral("AvenirNext-Regular"), 11);
}
