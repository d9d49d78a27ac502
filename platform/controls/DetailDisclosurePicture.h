// The circled "i" of detail disclosure buttons.
#pragma once

#include "platform/graphics/UIImage.h"

// A template of 22 × 22 points, up to the next whole pixel, drawn from paths at that many device pixels a
// point and kept, so that all buttons share one. Null for a scale that makes no picture. Main thread only.
std::shared_ptr<UIImage> detailDisclosurePicture(CGFloat scale);
