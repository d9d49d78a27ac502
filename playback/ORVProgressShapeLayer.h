// A shape layer whose stroke ends move only when asked to.
#pragma once

#include "platform/layers/CAShapeLayer.h"

class ORVProgressShapeLayer final : public CAShapeLayer {
public:
    // Whether a change of strokeStart or strokeEnd takes the transaction's time; off by default. Off, it is
    // immediate: a motion that was under way ends as well.
    bool progressAnimationsEnabled() const { return m_progressAnimationsEnabled; }
    void setProgressAnimationsEnabled(bool enabled);

    // A motion of the stroke ends starts from the model, so it does not restart where the last one was.
    std::shared_ptr<CAAnimation> actionForKey(const NSString& key) override;

private:
    bool m_progressAnimationsEnabled = false;
};
