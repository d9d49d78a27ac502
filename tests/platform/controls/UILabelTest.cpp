#include "platform/controls/UILabel.h"

#include "platform/graphics/CGContext.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/SceneFixture.h"

#include <limits>

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

// --- Several lines in a layout ---------------------------------------------------------------------------

TEST_F(UILabelTest, TheHeightOfAWrappingLabelFollowsItsWidth)
{
    label->setNumberOfLines(0);
    label->setText(longText);
    const double oneLine = UIFont::systemFontOfSize(UIFont::labelFontSize)->lineHeight();
    label->setFrame({ 0, 0, 120, 0 });
    const CGSize narrow = label->intrinsicContentSize();
    EXPECT_EQ(narrow.height(), label->sizeThatFits({ 120, 0 }).height());
    EXPECT_GT(narrow.height(), 2.5 * oneLine);
    EXPECT_GT(narrow.width(), 200); // what it would take in one line
    label->setFrame({ 0, 0, 1000, 0 });
    EXPECT_EQ(label->intrinsicContentSize().width(), narrow.width());
    EXPECT_LT(label->intrinsicContentSize().height(), oneLine + 1);
    label->setNumberOfLines(2);
    label->setFrame({ 0, 0, 120, 0 });
    EXPECT_NEAR(label->intrinsicContentSize().height(), 2 * oneLine, 0.5);
    label->setFrame({});
    EXPECT_LT(label->intrinsicContentSize().height(), oneLine + 1); // no width yet
}

TEST_F(UILabelTest, AWrappingLabelAsksForLayoutWhenItsWidthChanges)
{
    class Asked : public UIView {
    public:
        using UIView::UIView;
        void layoutSubviews() override { ++layouts; }
        int layouts = 0;
    };
    const auto around = addView<Asked>({ 0, 100, 300, 300 });
    around->addSubview(label);
    label->setText(longText);
    label->setFrame({ 0, 0, 200, 60 });
    runFrames();
    around->layouts = 0;
    label->setFrame({ 0, 0, 150, 60 });
    runFrames();
    EXPECT_EQ(around->layouts, 0); // one line: the same size at any width
    label->setNumberOfLines(0);
    runFrames();
    around->layouts = 0;
    label->setFrame({ 0, 0, 100, 60 });
    runFrames();
    EXPECT_EQ(around->layouts, 1);
    label->setFrame({ 10, 10, 100, 80 });
    runFrames();
    EXPECT_EQ(around->layouts, 1); // the width is the same
}

TEST_F(UILabelTest, APreferredWidthIsWhereTheIntrinsicSizeBreaks)
{
    label->setNumberOfLines(0);
    label->setText(longText);
    label->setPreferredMaxLayoutWidth(120);
    EXPECT_EQ(label->intrinsicContentSize(), label->sizeThatFits({ 120, 0 }));
    EXPECT_LE(label->intrinsicContentSize().width(), 120);
    label->setFrame({ 0, 0, 300, 60 });
    EXPECT_EQ(label->intrinsicContentSize(), label->sizeThatFits({ 120, 0 }));
    label->setPreferredMaxLayoutWidth(std::numeric_limits<double>::infinity());
    EXPECT_EQ(label->intrinsicContentSize(), label->sizeThatFits({ 0, 0 }));
    label->setNumberOfLines(1);
    label->setPreferredMaxLayoutWidth(50);
    EXPECT_GT(label->intrinsicContentSize().width(), 200); // one line does not break
}

TEST_F(UILabelTest, APreferredWidthThatIsNoneIsAProgrammingErrorAndChangesNothing)
{
    label->setPreferredMaxLayoutWidth(80);
    AssertionRecorder recorder;
    label->setPreferredMaxLayoutWidth(-1);
    label->setPreferredMaxLayoutWidth(std::numeric_limits<double>::quiet_NaN());
    const NSString message = QStringLiteral("Invalid parameter not satisfying: width >= 0");
    EXPECT_EQ(recorder.messages(), (std::vector<NSString> { message, message }));
    EXPECT_EQ(label->preferredMaxLayoutWidth(), 80);
}

TEST_F(UILabelTest, FewerLinesThanNoneAreAsManyAsTheTextNeeds)
{
    label->setNumberOfLines(-3);
    EXPECT_EQ(label->numberOfLines(), 0);
}

TEST_F(UILabelTest, HugeBoundsFailNothing)
{
    label->setNumberOfLines(0);
    label->setText(longText);
    label->setFrame({ 0, 0, 1e300, 1e300 });
    EXPECT_TRUE(picture().isNull()); // beyond what a bitmap may measure
    label->setFrame({ 0, 0, 100, 1e300 });
    EXPECT_NEAR(label->firstBaseline(), 5e299, 1e297);
}

// --- Drawing ---------------------------------------------------------------------------------------------

TEST_F(UILabelTest, IsShortenedWhereItsModeSays)
{
    // Dots with tall letters at both ends; in pixels, two a point.
    label->setText(QStringLiteral("MM") + NSString(200, QLatin1Char('.')) + QStringLiteral("MM"));
    const auto isTall = [&](const QImage& image, int x) {
        return inked(image.copy(x, 0, 24, image.height())).height() > 16;
    };
    const struct {
        NSLineBreakMode mode;
        bool startIsTall;
        bool endIsTall;
    } rows[] = {
        { NSLineBreakMode::ByTruncatingHead, false, true },
        { NSLineBreakMode::ByTruncatingMiddle, true, true },
        { NSLineBreakMode::ByTruncatingTail, true, false },
    };
    for (const auto& row : rows) {
        label->setLineBreakMode(row.mode);
        const QImage image = picture();
        EXPECT_EQ(isTall(image, inked(image).left()), row.startIsTall) << static_cast<int>(row.mode);
        EXPECT_EQ(isTall(image, inked(image).right() - 23), row.endIsTall) << static_cast<int>(row.mode);
    }
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

TEST_F(UILabelTest, TellsWhereItsLastLineStands)
{
    EXPECT_EQ(label->lastBaseline(), 60); // without text: the bottom edge
    label->setText(QStringLiteral("mmmm"));
    EXPECT_EQ(label->lastBaseline(), label->firstBaseline());
    label->setNumberOfLines(0);
    label->setText(QStringLiteral("mmmm\nmmmm"));
    const double bottomOfLetters = (inked(picture()).bottom() + 1) / 2.0;
    EXPECT_NEAR(label->lastBaseline(), bottomOfLetters, 1);
    EXPECT_NEAR(label->lastBaseline() - label->firstBaseline(), label->font()->lineHeight(), 1e-9);
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
