#include "platform/controls/UILabel.h"

#include "platform/graphics/CGContext.h"
#include "tests/support/SceneFixture.h"

namespace {

// Counts its drawings.
class CountingLabel : public UILabel {
public:
    using UILabel::UILabel;
    void drawRect(const CGRect& rect, CGContext& context) override
    {
        ++drawn;
        UILabel::drawRect(rect, context);
    }
    int drawn = 0;
};

class UILabelTest : public SceneFixture {
protected:
    // The bitmap on the screen; null without one.
    QImage picture()
    {
        runFrames();
        for (const FrameItem& item : frame.items)
            if (item.layer == label->layer()->layerID())
                if (const auto* content = std::get_if<FrameImage>(&item.content))
                    return content->image;
        return {};
    }
    // The box around everything that is drawn, in pixels.
    static QRect inked(const QImage& image)
    {
        QRect box;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y).alpha() > 40)
                    box |= QRect(x, y, 1, 1);
        return box;
    }

    const QString longText = QStringLiteral("the quick brown fox jumps over the lazy dog");
    std::shared_ptr<CountingLabel> label = addView<CountingLabel>({ 0, 0, 200, 60 });
};

TEST_F(UILabelTest, StartsWithoutTextInTheAppearancesColour)
{
    EXPECT_TRUE(label->text().isNull());
    EXPECT_TRUE(label->textColor()->isEqual(UIColor::labelColor().get()));
    EXPECT_EQ(label->font()->pointSize(), UIFont::labelFontSize);
    EXPECT_EQ(label->numberOfLines(), 1);
    EXPECT_TRUE(picture().isNull());
}

TEST_F(UILabelTest, ATextIsDrawnAndNilTakesItAway)
{
    label->setText(QStringLiteral("Hello"));
    EXPECT_FALSE(inked(picture()).isEmpty());
    label->setText({});
    EXPECT_TRUE(picture().isNull());
}

TEST_F(UILabelTest, IsDrawnAgainOnlyWhenWhatIsSeenChanges)
{
    label->setText(QStringLiteral("Hello"));
    runFrames();
    EXPECT_EQ(label->drawn, 1);
    label->setText(QStringLiteral("Hello"));
    label->setTextColor(UIColor::labelColor());
    label->setFont(UIFont::systemFontOfSize(UIFont::labelFontSize));
    label->setCenter({ 200, 200 });
    label->setAlpha(0.5);
    label->setHidden(true);
    runFrames();
    label->setHidden(false);
    runFrames();
    EXPECT_EQ(label->drawn, 1);
    label->setText(QStringLiteral("Hello!"));
    runFrames();
    EXPECT_EQ(label->drawn, 2);
    label->setTextColor(UIColor::colorWithRed(1, 0, 0, 1));
    runFrames();
    EXPECT_EQ(label->drawn, 3);
    label->setFont(UIFont::boldSystemFontOfSize(17));
    label->setTextAlignment(NSTextAlignment::Center);
    runFrames();
    EXPECT_EQ(label->drawn, 4); // both at once
    label->setFrame({ 0, 0, 100, 60 });
    runFrames();
    EXPECT_EQ(label->drawn, 5);
}

TEST_F(UILabelTest, ItsIntrinsicSizeIsTheTextsInWholePixels)
{
    label->setText(longText);
    const CGSize size = label->intrinsicContentSize();
    EXPECT_GT(size.width(), 200);
    EXPECT_EQ(size.width() * 2, std::round(size.width() * 2));
    EXPECT_EQ(size.height() * 2, std::round(size.height() * 2));
    EXPECT_GE(size.height(), label->font()->lineHeight());
    EXPECT_LT(size.height(), label->font()->lineHeight() + 0.5);
    label->setText({});
    EXPECT_EQ(label->intrinsicContentSize(), CGSize(0, 0));
}

TEST_F(UILabelTest, TextsOfSeveralLinesGrowInHeight)
{
    label->setText(longText);
    const double oneLine = label->sizeThatFits({ 120, 0 }).height();
    label->setNumberOfLines(2);
    const CGSize two = label->sizeThatFits({ 120, 0 });
    label->setNumberOfLines(0);
    const CGSize all = label->sizeThatFits({ 120, 0 });
    EXPECT_NEAR(two.height(), 2 * oneLine, 1);
    EXPECT_GT(all.height(), two.height());
    EXPECT_LE(all.width(), 120);
}

TEST_F(UILabelTest, WhatDoesNotFitEndsInAnEllipsisWithinTheBounds)
{
    label->setText(longText);
    const QRect whole = inked(picture());
    EXPECT_LE(whole.right(), 400);
    EXPECT_GT(whole.right(), 340); // up to near the edge
    label->setLineBreakMode(NSLineBreakMode::ByClipping);
    EXPECT_NE(inked(picture()), QRect());
}

TEST_F(UILabelTest, TheHeightLimitsTheLinesThatAreDrawn)
{
    label->setNumberOfLines(0);
    label->setText(longText);
    label->setFrame({ 0, 0, 90, label->font()->lineHeight() * 2 + 1 });
    const QImage limitedByHeight = picture();
    label->setNumberOfLines(2);
    EXPECT_EQ(picture(), limitedByHeight); // with its ellipsis at the end of the second line
    label->setNumberOfLines(0);
    label->setFrame({ 0, 0, 90, label->font()->lineHeight() * 4 + 1 });
    EXPECT_GT(inked(picture()).height(), inked(limitedByHeight).height() * 1.5);
}

TEST_F(UILabelTest, StandsInTheMiddleOfTheHeightAndWhereItIsAligned)
{
    label->setText(QStringLiteral("mmmm"));
    const QRect left = inked(picture());
    EXPECT_NEAR(left.center().y(), 60, 8);
    EXPECT_LT(left.left(), 8);
    label->setTextAlignment(NSTextAlignment::Center);
    EXPECT_NEAR(inked(picture()).center().x(), 200, 3);
    label->setTextAlignment(NSTextAlignment::Right);
    EXPECT_GT(inked(picture()).right(), 390);
}

TEST_F(UILabelTest, TellsWhereItsFirstLineStands)
{
    EXPECT_EQ(label->firstBaseline(), 60); // without text: the bottom edge
    label->setText(QStringLiteral("mmmm"));
    const double bottomOfLetters = (inked(picture()).bottom() + 1) / 2.0;
    EXPECT_NEAR(label->firstBaseline(), bottomOfLetters, 1);
}

TEST_F(UILabelTest, IsDrawnInItsColourAlsoAfterTheAppearanceHasChanged)
{
    label->setText(QStringLiteral("mmmm"));
    const auto darkest = [](const QImage& image) {
        int value = 255;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y).alpha() == 255)
                    value = std::min(value, image.pixelColor(x, y).lightness());
        return value;
    };
    EXPECT_LT(darkest(picture()), 40);
    CurrentUserInterfaceStyle::set(UIUserInterfaceStyle::Dark);
    EXPECT_GT(darkest(picture()), 200);
}

TEST_F(UILabelTest, IsOpaqueWhereItsBackgroundIs)
{
    EXPECT_FALSE(label->isOpaque());
    label->setBackgroundColor(UIColor::whiteColor());
    EXPECT_TRUE(label->isOpaque());
    label->setBackgroundColor(UIColor::colorWithWhite(1, 0.5));
    EXPECT_FALSE(label->isOpaque());
    label->setBackgroundColor(nullptr);
    EXPECT_FALSE(label->isOpaque());
}

TEST_F(UILabelTest, NilFontAndColourAreTheDefaults)
{
    label->setFont(UIFont::boldSystemFontOfSize(30));
    label->setTextColor(UIColor::whiteColor());
    label->setFont(nullptr);
    label->setTextColor(nullptr);
    EXPECT_EQ(label->font()->pointSize(), UIFont::labelFontSize);
    EXPECT_TRUE(label->textColor()->isEqual(UIColor::labelColor().get()));
}

TEST_F(UILabelTest, ZeroSizesDrawNothing)
{
    label->setText(longText);
    label->setFrame({});
    EXPECT_TRUE(picture().isNull());
}

TEST_F(UILabelTest, TakesNoTouches) { EXPECT_EQ(window->hitTest({ 10, 10 }), window.get()); }

} // namespace
