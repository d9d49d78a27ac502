// One call of UIView::animate(): it makes the animations of the changes in its block and waits for their
// ends.
#pragma once

#include "platform/foundation/NSObject.h"
#include "platform/layers/FrameList.h"
#include "platform/views/UIViewAnimationOptions.h"

#include <functional>
#include <optional>
#include <set>

class CAAnimation;
class CABasicAnimation;
class CALayer;

class UIViewAnimationBlock final : public NSObject {
public:
    struct Spring {
        double damping;
        double initialVelocity;
    };
    struct Parameters {
        double duration = 0;
        double delay = 0;
        UIViewAnimationOptions options = UIViewAnimationOptions::None;
        std::optional<Spring> spring = std::nullopt; // instead of the curve
    };
    using Changes = std::function<void()>;
    using Completion = std::function<void(bool finished)>;

    static void run(const Parameters&, const Changes&, Completion);
    static void runWithout(const Changes&);
    // The innermost block being run; null outside of any, and where changes are not to be animated.
    static std::shared_ptr<UIViewAnimationBlock> current();

    UIViewAnimationBlock(const Parameters&, Completion);

    bool allowsUserInteraction() const;
    // Whether the property is under way in this block already: that motion ends at the model, wherever the
    // model goes, so a further change needs none.
    bool isAnimating(const CALayer& layer, const NSString& key) const;
    // The animation of a property that is about to change. It starts from the value that is shown, so that
    // one which interrupts another does not jump, and ends wherever the model is by then, so that a model
    // which changes on the way redirects it.
    std::shared_ptr<CAAnimation> makeAnimation(
        const CALayer& layer, const NSString& key, std::function<void()> atEnd);

private:
    class InForce;

    std::shared_ptr<CABasicAnimation> makeTimedAnimation(const NSString& key) const;
    void animationDidEnd(bool finished);
    void close();

    const Parameters m_parameters;
    Completion m_completion;
    std::set<std::pair<LayerID, NSString>> m_animated;
    int m_running = 0;
    bool m_allFinished = true;
};
