#include "platform/views/ViewDump.h"

#include "platform/graphics/UIColor.h"
#include "platform/layers/CAShapeLayer.h"
#include "tests/support/SceneFixture.h"

namespace {

class ViewDumpTest : public SceneFixture { };

TEST_F(ViewDumpTest, TellsWhatDiffersFromAPlainViewALineEach)
{
    const auto card = addView<UIView>({ 10, 20, 100, 50.3 });
    card->setBackgroundColor(UIColor::blackColor());
    card->setClipsToBounds(true);
    card->layer()->setCornerRadius(8);
    const auto shape = make<CAShapeLayer>();
    shape->setStrokeEnd(0.5);
    card->layer()->addSublayer(shape);
    const auto label = make<UIView>(CGRect(0, 0, 30, 10));
    label->setAccessibilityLabel(QStringLiteral("Play"));
    label->setAlpha(0.25);
    card->addSubview(label);
    const auto hidden = make<UIView>(CGRect(5, 5, 1, 1));
    hidden->setHidden(true);
    hidden->addSubview(make<UIView>());
    card->addSubview(hidden);
    EXPECT_EQ(ViewDump::tree(*card).toStdString(),
        "UIView (10 20; 100x50.5) background #ff000000 radius 8 clips\n"
        "  CAShapeLayer (0 0; 0x0) stroke from 0.00 to 0.50\n"
        "  UIView (0 0; 30x10) \"Play\" opacity 0.25\n"
        "  UIView (5 5; 1x1) hidden\n");
}

TEST_F(ViewDumpTest, TellsMotionsAndScrolledContent)
{
    const auto view = addView<UIView>({ 0, 0, 10, 10 });
    view->setBounds({ 0, 5, 10, 10 });
    UIView::animate(1, [&] { view->setAlpha(0); });
    EXPECT_EQ(ViewDump::tree(*view).toStdString(),
        "UIView (0 0; 10x10) scrolled to 0 5 opacity 0.00 animates opacity\n");
}

} // namespace
