#include "platform/layers/LayerDump.h"

#include "platform/layers/CAShapeLayer.h"
#include "platform/layers/FrameBuilder.h"
#include "tests/platform/layers/LayersFixture.h"
#include "tests/support/Pictures.h"

namespace {

using LayerDumpTest = LayersFixture;

TEST_F(LayerDumpTest, PrintsALayerTree)
{
    layer->setName(QStringLiteral("window"));
    layer->setFrame({ 0, 0, 390, 844 });
    const auto card = CAShapeLayer::layer();
    card->setFrame({ 10, 20, 30.5, 40 });
    card->setBounds({ 0, 5, 30.5, 40 });
    card->setOpacity(0.5);
    card->setHidden(true);
    card->setCornerRadius(4);
    card->setMasksToBounds(true);
    card->setSpeed(0);
    card->setTransform(CGAffineTransform::fromScale(2, 2));
    card->setBackgroundColor(UIColor::colorWithRed(1, 0, 0, 0.5));
    card->setContents(plainImage({ 4, 2 }, Qt::red, 2));
    card->addAnimation(basic("opacity", 0.0, 1.0), QStringLiteral("fade"));
    layer->addSublayer(card);
    EXPECT_EQ(LayerDump::layerTree(*layer).toStdString(),
        "window (0 0; 390x844)\n"
        "  CAShapeLayer (-5.25 0; 61x80) bounds (0 5; 30.5x40) matrix(2 0 0 2) move(0 0) hidden opacity 0.5"
        " background #80ff0000 radius 4 clips contents 2x1 speed 0 animates fade\n");
}

TEST_F(LayerDumpTest, PrintsAFrame)
{
    layer->setAnchorPoint({ 0, 0 });
    layer->setBounds({ 0, 0, 100, 100 });
    layer->setContents(plainImage({ 4, 2 }, Qt::red, 2));
    layer->setContentsTintColor(UIColor::colorWithRed(0, 0, 1, 1));
    const auto ring = CAShapeLayer::layer();
    ring->setPath(UIBezierPath::bezierPathWithRect({ 0, 0, 10, 10 }));
    ring->setStrokeColor(UIColor::colorWithRed(0, 1, 0, 1));
    ring->setStrokeEnd(0.25);
    ring->setLineWidth(2);
    ring->setPosition({ 5, 5 });
    ring->setMasksToBounds(false);
    ring->setOpacity(0.5);
    layer->addSublayer(ring);
    EXPECT_EQ(LayerDump::frame(FrameBuilder::buildFrame(*layer, 0, { 100, 100 }, 3).list).toStdString(),
        "frame 100x100 at scale 3\n"
        "  #0 move(0 0) (0 0; 100x100) image 4x2 in (0 0; 100x100) tint #0000ff\n"
        "    #1 move(5 5) (0 0; 0x0) opacity 0.5 shape in (0 0; 10x10) fill #000000 stroke #00ff00 width 2 "
        "from 0"
        " to 0.25\n");
}

} // namespace
