// Texts in motion: in a changing tint, and in a changing size.
#include "platform/controls/UIButton.h"
#include "platform/graphics/UIColor.h"
#include "platform/layers/CAMotionGroup.h"
#include "tests/support/SceneFixture.h"

namespace {

// A label in the colour of the tint.
class TintedLabel : public UILabel {
public:
    using UILabel::UILabel;
    void tintColorDidChange() override
    {
        UILabel::tintColorDidChange();
        setTextColor(tintColor());
    }
};

class TextMotionTest : public SceneFixture {
protected:
    TextMotionTest() { window->setTintColor(red); }

    const FrameImage& pictureOf(const UIView& view) const
    {
        for (const FrameItem& item : frame.items)
            if (item.layer == view.layer()->layerID())
                return std::get<FrameImage>(item.content);
        throw std::logic_error("a view without a picture");
    }
    // The colour of the text at its densest point.
    QColor inkOf(const UIView& view) const
    {
        const FrameImage& picture = pictureOf(view);
        QColor densest(0, 0, 0, 0);
        for (int y = 0; y < picture.image.height(); ++y)
            for (int x = 0; x < picture.image.width(); ++x)
                if (picture.image.pixelColor(x, y).alpha() > densest.alpha())
                    densest = picture.image.pixelColor(x, y);
        if (!picture.tint.isValid())
            return densest;
        QColor filled = picture.tint;
        filled.setAlphaF(filled.alphaF() * densest.alphaF());
        return filled;
    }
    void showFrame()
    {
        window->layer()->setNeedsFrame();
        runFrames();
    }
    template <typename View = UILabel> std::shared_ptr<View> addLabel(const CGRect& rect)
    {
        const auto label = addView<View>(rect);
        label->setText(QStringLiteral("MMMM"));
        runFrames();
        return label;
    }

    const std::shared_ptr<UIColor> red = UIColor::colorWithRed(1, 0, 0, 1);
    const std::shared_ptr<UIColor> blue = UIColor::colorWithRed(0, 0, 1, 1);
};

TEST_F(TextMotionTest, TitlesAndLabelsInTheTintShiftWithTheBlock)
{
    const auto label = addLabel<TintedLabel>({ 0, 0, 100, 30 });
    const auto button = make<UIButton>(UIButtonType::System);
    button->setTitle(QStringLiteral("MMMM"), UIControlState::Normal);
    button->setFrame({ 0, 50, 100, 30 });
    window->addSubview(button);
    runFrames();
    EXPECT_EQ(inkOf(*label), QColor(Qt::red));
    UIView::animate(
        0.4, 0, optionsOfCurve(UIViewAnimationCurve::Linear), [this] { window->setTintColor(blue); });
    const double start = scheduler.now();
    for (int step = 0; step < 10; ++step) {
        showFrame();
        const double share = (scheduler.now() - start) / 0.4;
        EXPECT_NEAR(inkOf(*label).blueF(), share, 0.01);
        EXPECT_NEAR(inkOf(*label).redF(), 1 - share, 0.01);
        EXPECT_EQ(inkOf(*button->titleLabel()), inkOf(*label));
        scheduler.advance(0.04);
    }
    scheduler.advance(0.1);
    EXPECT_EQ(inkOf(*label), QColor(Qt::blue));
    EXPECT_EQ(label->textColor(), blue);
}

TEST_F(TextMotionTest, TheLettersKeepTheirShapeWhileTheirColourShifts)
{
    const auto label = addLabel<TintedLabel>({ 0, 0, 100, 30 });
    const QImage before = pictureOf(*label).image.convertToFormat(QImage::Format_Alpha8);
    UIView::animate(0.4, [this] { window->setTintColor(blue); });
    scheduler.advance(0.2);
    EXPECT_TRUE(pictureOf(*label).tint.isValid());
    EXPECT_EQ(pictureOf(*label).image.convertToFormat(QImage::Format_Alpha8), before);
}

TEST_F(TextMotionTest, ATextThatDimsIsHeldAndComesBack)
{
    const auto label = addLabel<TintedLabel>({ 0, 0, 100, 30 });
    const auto group = make<CAMotionGroup>();
    {
        const CAMotionGroup::Collection collection(group);
        UIView::animate(0.4, 0, optionsOfCurve(UIViewAnimationCurve::Linear),
            [this] { window->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed); });
    }
    group->setFraction(0.5);
    showFrame();
    EXPECT_NEAR(inkOf(*label).alphaF(), 0.9, 0.01); // half way to 80 %
    group->setFraction(1);
    showFrame();
    EXPECT_NEAR(inkOf(*label).alphaF(), 0.8, 0.01);
    group->setFraction(0);
    showFrame();
    EXPECT_EQ(inkOf(*label), QColor(Qt::red));
    group->settle(CAMotionGroup::Outcome::TakenBack);
    showFrame();
    EXPECT_EQ(inkOf(*label), QColor(Qt::red));
    EXPECT_EQ(label->textColor(), red);
}

TEST_F(TextMotionTest, ALabelInTheLabelColourStaysAsItIs)
{
    const auto label = addLabel({ 0, 0, 100, 30 });
    const QColor before = inkOf(*label);
    UIView::animate(0.4, [this] { window->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed); });
    scheduler.advance(0.2);
    EXPECT_EQ(inkOf(*label), before);
    EXPECT_FALSE(label->layer()->hasAnimations());
}

TEST_F(TextMotionTest, ATextThatIsChangedAfterItsTintHasShiftedIsDrawnInTheNewColour)
{
    const auto label = addLabel<TintedLabel>({ 0, 0, 100, 30 });
    UIView::animate(0.4, [this] { window->setTintColor(blue); });
    scheduler.advance(0.5);
    label->setText(QStringLiteral("WWWW"));
    label->setTextColor(red);
    showFrame();
    EXPECT_EQ(inkOf(*label), QColor(Qt::red));
}

TEST_F(TextMotionTest, ATextInAChangingWidthIsNotSqueezed)
{
    struct Row {
        NSTextAlignment alignment;
        double share; // of the room left of the picture
    };
    for (const Row& row : { Row { NSTextAlignment::Left, 0 }, Row { NSTextAlignment::Natural, 0 },
             Row { NSTextAlignment::Center, 0.5 }, Row { NSTextAlignment::Right, 1 } }) {
        const auto label = addLabel({ 0, 0, 200, 30 });
        label->setTextAlignment(row.alignment);
        runFrames();
        const double start = scheduler.now();
        UIView::animate(0.4, 0, optionsOfCurve(UIViewAnimationCurve::Linear), [&] {
            label->setFrame({ 0, 0, 100, 50 });
        });
        for (int step = 0; step < 8; ++step) {
            showFrame();
            const double share = (scheduler.now() - start) / 0.4;
            const CGSize room(200 - 100 * share, 30 + 20 * share);
            const FrameImage& picture = pictureOf(*label);
            EXPECT_EQ(picture.rect.size(), CGSize(100, 50));
            EXPECT_EQ(QSizeF(picture.image.size()) / 2, picture.rect.size())
                << "a pixel of the bitmap for each";
            EXPECT_NEAR(picture.rect.x(), (room.width() - 100) * row.share, 1e-6);
            EXPECT_NEAR(picture.rect.y(), (room.height() - 50) / 2, 1e-6);
            scheduler.advance(0.05);
        }
        label->removeFromSuperview();
    }
}

} // namespace
