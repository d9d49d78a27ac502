// Does for a layer what it does not do itself: lays out its sublayers, fills its contents, chooses its
// implicit animations.
//
// A view is the delegate of its own layer. Every message is optional.
#pragma once

#include "platform/foundation/FoundationTypes.h"

#include <memory>
#include <optional>

class CAAnimation;
class CALayer;
class CGContext;
enum class CAProperty;

// The answer to "what is to happen when this property changes": an animation, nil for a change at once,
// or no answer, which leaves the question to the layer.
using CAActionAnswer = std::optional<std::shared_ptr<CAAnimation>>;

class CALayerDelegate {
public:
    // actionForLayer:forKey: — before the new value takes effect.
    virtual CAActionAnswer actionForLayerForKey(CALayer&, const NSString& /*key*/) { return std::nullopt; }

    // Its bounds, position, anchor point or transform is an earlier one again; see CAModelChanges.
    virtual void layerGeometryWasTakenBack(CALayer&, CAProperty) { }
    // The same for its opacity, or for being hidden.
    virtual void layerVisibilityWasTakenBack(CALayer&) { }

    // A round of layout begins at this layer.
    virtual void layerWillLayoutTree(CALayer&) { }
    virtual void layoutSublayersOfLayer(CALayer&) { }

    // Whether drawLayerInContext() draws anything; without it no bitmap is made.
    virtual bool layerDrawsContent(const CALayer&) const { return false; }
    // drawLayer:inContext: — in the layer's coordinates; the context is also the thread's current one.
    virtual void drawLayerInContext(CALayer&, CGContext&) { }
    // Asked first: fills the contents in another way and answers true.
    virtual bool displayLayer(CALayer&) { return false; }

protected:
    ~CALayerDelegate() = default; // nobody owns a delegate through this type
};
