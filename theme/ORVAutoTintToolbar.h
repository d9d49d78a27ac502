// A toolbar in the tint colour of the view that holds it.
#pragma once

#include "platform/controls/UIToolbar.h"

class ORVAutoTintToolbar final : public UIToolbar {
public:
    using UIToolbar::UIToolbar;

    void tintColorDidChange() override;
};
