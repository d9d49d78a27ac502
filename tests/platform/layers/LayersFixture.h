// What the tests of layers stand on: a clock moved by hand and short ways to make animations.
#pragma once

#include "platform/graphics/UIColor.h"
#include "platform/layers/CABasicAnimation.h"
#include "platform/layers/CALayer.h"
#include "platform/layers/CALayerTree.h"
#include "tests/support/ManualScheduler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

class LayersFixture : public ::testing::Test {
protected:
    static std::shared_ptr<CABasicAnimation> basic(
        const char* keyPath, CAValue from = {}, CAValue to = {}, CAValue by = {}, double duration = 1)
    {
        auto animation = CABasicAnimation::animationWithKeyPath(QLatin1String(keyPath));
        animation->setFromValue(std::move(from));
        animation->setToValue(std::move(to));
        animation->setByValue(std::move(by));
        animation->setDuration(duration);
        return animation;
    }

    // Writes "name finished" or "name stopped" into the log when the animation ends.
    void logEnd(CAAnimation& animation, const std::string& name)
    {
        animation.setCompletion(
            [this, name](bool finished) { log.push_back(name + (finished ? " finished" : " stopped")); });
    }

    static double opacityAt(const CALayer& layer, double time)
    {
        return layer.presentationValuesAt(time).opacity;
    }
    static CGPoint positionAt(const CALayer& layer, double time)
    {
        return layer.presentationValuesAt(time).position;
    }

    static constexpr double infinity = std::numeric_limits<double>::infinity();
    static constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    static constexpr double forever = 3.4028235e38;

    using Lines = std::vector<std::string>;
    ManualScheduler scheduler;
    std::shared_ptr<CALayer> layer = CALayer::layer();
    Lines log;
};
