// A ring in a window, and short ways to what its layers are and show.
#pragma once

#include "platform/graphics/UIColor.h"
#include "playback/ORVCircularProgressView.h"
#include "tests/playback/ChangeLog.h"
#include "tests/playback/Course.h"
#include "tests/support/SceneFixture.h"

#include <limits>

class CircularProgressFixture : public SceneFixture {
protected:
    CircularProgressFixture() { runFrames(); }

    static ORVProgressShapeLayer& sublayer(const ORVCircularProgressView& view, std::size_t index)
    {
        return dynamic_cast<ORVProgressShapeLayer&>(*view.layer()->sublayers().at(index));
    }
    ORVProgressShapeLayer& track() const { return sublayer(*ring, 0); }
    ORVProgressShapeLayer& arc() const { return sublayer(*ring, 1); }

    // What is shown of the arc so many seconds from now.
    CALayerValues shownIn(double seconds) const
    {
        return arc().presentationValuesAt(scheduler.now() + seconds);
    }
    std::shared_ptr<const CAAnimation> spin() const
    {
        return arc().animationForKey(QStringLiteral("indeterminateGroup"));
    }
    bool isAnimatingStroke() const
    {
        return arc().animationForKey(QStringLiteral("strokeStart"))
            || arc().animationForKey(QStringLiteral("strokeEnd"));
    }
    bool isAnimating() const { return track().hasAnimations() || arc().hasAnimations(); }
    // The item of the layer in the last frame; null when nothing of it is drawn.
    const FrameItem* itemOf(const CALayer& layer) const
    {
        for (const FrameItem& item : frame.items)
            if (item.layer == layer.layerID())
                return &item;
        return nullptr;
    }
    double circleWidth() const { return arc().path()->boundingRect().width(); }

    static constexpr double infinity = std::numeric_limits<double>::infinity();
    static constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    static constexpr double huge = 1e300;
    static constexpr double spinArc = 0.0666666701436042786; // 1/15 in single precision
    static constexpr double longArc = 0.933333337306976318; // 14/15 in single precision
    static constexpr auto clockwise = ORVCircularProgressDirectionClockwise;
    static constexpr auto counterclockwise = ORVCircularProgressDirectionCounterclockwise;
    static constexpr auto unknownDirection = static_cast<ORVCircularProgressDirection>(7);

    const std::shared_ptr<UIColor> red = UIColor::colorWithRed(1, 0, 0, 1);
    std::shared_ptr<ORVCircularProgressView> ring = addView<ORVCircularProgressView>({ 100, 100, 44, 44 });
};
