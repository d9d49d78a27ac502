// A navigation bar in the tint colour of the view that holds it.
#pragma once

#include "platform/controls/UINavigationBar.h"

class ORVAutoTintNavigationBar final : public UINavigationBar {
public:
    using UINavigationBar::UINavigationBar;

    void tintColorDidChange() override;
};
