// The device that the application runs on.
#pragma once

#include "platform/foundation/NSObject.h"

enum class UIUserInterfaceIdiom { Unspecified = -1, Phone = 0, Pad = 1 };

class UIDevice final : public NSObject {
public:
    static const std::shared_ptr<UIDevice>& currentDevice();

    // A tablet from 600 points on the screen's shorter side; unspecified while there is no screen.
    UIUserInterfaceIdiom userInterfaceIdiom() const;
};
