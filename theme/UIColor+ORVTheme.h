// The application's colours, by what they are for. Each call makes a new colour.
#pragma once

#include "platform/graphics/UIColor.h"

std::shared_ptr<UIColor> orv_oruvaneMainColor();
std::shared_ptr<UIColor> orv_oruvaneNavigationBarColor();
std::shared_ptr<UIColor> orv_oruvaneNavigationBarItemsColor();
std::shared_ptr<UIColor> orv_oruvaneSplitSeparatorMainColor();
// The navigation bar's colour, darker.
std::shared_ptr<UIColor> orv_oruvaneSplitSeparatorTopColor();
std::shared_ptr<UIColor> orv_oruvaneSelectedCellBackgroundColor();
std::shared_ptr<UIColor> orv_oruvaneProfileNumbersSubtitleColor();
std::shared_ptr<UIColor> orv_oruvanePlaybackSliderTrackColor();
std::shared_ptr<UIColor> orv_oruvaneRecordingButtonColor();
