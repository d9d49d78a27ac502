// The application's fonts, by what they are for. Each call makes a new font.
#pragma once

#include "platform/graphics/UIFont.h"

std::shared_ptr<UIFont> orv_oruvaneNavigationBarTitleFont();
std::shared_ptr<UIFont> orv_oruvaneProfileNumbersSubtitleFont();
