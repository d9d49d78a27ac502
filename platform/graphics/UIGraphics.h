// The current drawing context of a thread, and bitmap contexts that make images.
//
// Contexts nest; each thread has its own. Every begin needs its end.
#pragma once

#include "platform/graphics/CGContext.h"

// Begins a bitmap context and makes it current. Scale 0 is the main screen's. A size that makes no
// picture (a side of zero, negative, not finite, beyond UIImage's limits) begins a context that draws
// nothing and has no image.
void UIGraphicsBeginImageContextWithOptions(const CGSize& size, bool opaque, CGFloat scale);
// What has been drawn so far, at the context's scale and of the size that it was begun with; null without a
// usable bitmap context.
std::shared_ptr<UIImage> UIGraphicsGetImageFromCurrentImageContext();
// Ends the innermost bitmap context. Without one nothing happens.
void UIGraphicsEndImageContext();

// Null when nothing is being drawn on this thread.
CGContext* UIGraphicsGetCurrentContext();

// Makes a context current for the length of a block, as for a view that draws itself.
class [[nodiscard]] CurrentContextGuard {
public:
    explicit CurrentContextGuard(CGContext&);
    ~CurrentContextGuard();
    CurrentContextGuard(const CurrentContextGuard&) = delete;
    CurrentContextGuard& operator=(const CurrentContextGuard&) = delete;
};
