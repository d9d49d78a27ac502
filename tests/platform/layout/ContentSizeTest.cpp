// What the contents of views ask of a layout: their sizes, how strongly, and their baselines.
#include "platform/controls/UIButton.h"
#include "platform/controls/UIImageView.h"
#include "platform/controls/UILabel.h"
#include "tests/platform/layout/LayoutFixture.h"
#include "tests/support/Pictures.h"

namespace {

constexpr auto horizontal = UILayoutConstraintAxis::Horizontal;

class ContentSizeTest : public LayoutFixture {
protected:
    template <typename View> std::shared_ptr<View> addAtCorner()
    {
        auto view = addTo<View>(*container);
        activate(view->leftAnchor().constraintEqualToAnchor(container->leftAnchor()));
        activate(view->topAnchor().constraintEqualToAnchor(container->topAnchor()));
        return view;
    }
};

TEST_F(ContentSizeTest, AViewTakesTheSizeOfItsContent)
{
    const auto view = addAtCorner<ContentView>();
    view->setContentSize({ 40, 30 });
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(0, 0, 40, 30));
    view->setContentSize({ 50, 20 });
    runFrames();
    EXPECT_EQ(view->frame(), CGRect(0, 0, 50, 20));
}

TEST_F(ContentSizeTest, ASizeThatIsGoneLeavesTheFrameAsItIs)
{
    const auto view = addAtCorner<ContentView>();
    view->setContentSize({ 40, 30 });
    runFrames();
    view->setContentSize({ UIViewNoIntrinsicMetric, 10 });
    runFrames();
    EXPECT_EQ(view->frame().height(), 10);
}

TEST_F(ContentSizeTest, ContentsThatAreNoNumbersAskForNothing)
{
    const auto view = addAtCorner<ContentView>();
    view->setFrame({ 0, 0, 5, 5 });
    for (const double size : { std::nan(""), HUGE_VAL, -7.0 }) {
        view->setContentSize({ size, size });
        runFrames();
        EXPECT_EQ(view->frame().size(), CGSize(5, 5));
    }
}

TEST_F(ContentSizeTest, IsAskedOnlyWhenItHasChanged)
{
    const auto view = addAtCorner<ContentView>();
    view->setContentSize({ 40, 30 });
    runFrames();
    const int asked = view->asked;
    container->setFrame({ 0, 0, 500, 500 });
    runFrames();
    EXPECT_EQ(view->asked, asked);
}

TEST_F(ContentSizeTest, TheOneThatHugsLessGrows)
{
    const auto left = addAtCorner<ContentView>();
    const auto right = addTo<ContentView>(*container);
    left->setContentSize({ 50, 10 });
    right->setContentSize({ 60, 10 });
    activate(right->leftAnchor().constraintEqualToAnchor(left->rightAnchor()));
    activate(right->rightAnchor().constraintEqualToAnchor(container->rightAnchor()));
    right->setContentHuggingPriority(249, horizontal);
    runFrames();
    EXPECT_EQ(left->frame().width(), 50);
    EXPECT_EQ(right->frame().width(), 250);
    left->setContentHuggingPriority(100, horizontal);
    runFrames();
    EXPECT_EQ(left->frame().width(), 240);
    EXPECT_EQ(right->frame().width(), 60);
}

TEST_F(ContentSizeTest, TheOneThatResistsLessShrinks)
{
    const auto left = addAtCorner<ContentView>();
    const auto right = addTo<ContentView>(*container);
    left->setContentSize({ 250, 10 });
    right->setContentSize({ 100, 10 });
    activate(right->leftAnchor().constraintEqualToAnchor(left->rightAnchor()));
    activate(right->rightAnchor().constraintEqualToAnchor(container->rightAnchor()));
    left->setContentCompressionResistancePriority(100, horizontal);
    runFrames();
    EXPECT_EQ(left->frame().width(), 200);
    EXPECT_EQ(right->frame().width(), 100);
}

TEST_F(ContentSizeTest, ContentsWithoutRoomShrinkToNothingAndNoFurther)
{
    const auto left = addAtCorner<ContentView>();
    const auto right = addTo<ContentView>(*container);
    left->setContentSize({ 250, 10 });
    right->setContentSize({ 100, 10 });
    activate(right->leftAnchor().constraintEqualToAnchor(left->rightAnchor(), 40));
    activate(right->rightAnchor().constraintEqualToAnchor(container->rightAnchor()));
    left->setContentCompressionResistancePriority(100, horizontal);
    for (const double width : { 300.0, 120.0, 50.0, 40.0 }) {
        container->setFrame({ 0, 0, width, 200 });
        runFrames();
        EXPECT_EQ(left->frame().width(), std::max(width - 140, 0.0)) << width;
        EXPECT_EQ(right->frame().width(), std::min(width - 40, 100.0)) << width;
    }
    EXPECT_TRUE(conflicts.empty());
}

TEST_F(ContentSizeTest, AnImageViewIsAsLargeAsItsImageUpToABound)
{
    const auto view = addAtCorner<UIImageView>();
    activate(view->widthAnchor().constraintLessThanOrEqualToConstant(66));
    view->setImage(plainImage({ 44, 20 }, Qt::red));
    runFrames();
    EXPECT_EQ(view->frame().size(), CGSize(44, 20));
    view->setImage(plainImage({ 100, 20 }, Qt::red));
    runFrames();
    EXPECT_EQ(view->frame().size(), CGSize(66, 20));
}

TEST_F(ContentSizeTest, ALabelIsSqueezedRatherThanWideningItsContainer)
{
    const auto box = addAtCorner<UIView>();
    const auto label = addTo<UILabel>(*box);
    label->setText(QStringLiteral("A place with a very long name indeed"));
    activate(box->widthAnchor().constraintEqualToConstant(60), 200);
    activate(label->leftAnchor().constraintEqualToAnchor(box->leftAnchor()));
    activate(label->rightAnchor().constraintEqualToAnchor(box->rightAnchor()));
    runFrames();
    EXPECT_GT(box->frame().width(), 200);
    label->setContentCompressionResistancePriority(100, horizontal);
    runFrames();
    EXPECT_EQ(box->frame().width(), 60);
}

TEST_F(ContentSizeTest, FirstBaselinesKeepTheirDistance)
{
    const auto number = addAtCorner<UILabel>();
    const auto subtitle = addTo<UILabel>(*container);
    number->setText(QStringLiteral("12"));
    subtitle->setText(QStringLiteral("RECORDINGS"));
    subtitle->setFont(UIFont::systemFontOfSize(9));
    activate(subtitle->leftAnchor().constraintEqualToAnchor(container->leftAnchor()));
    activate(subtitle->firstBaselineAnchor().constraintEqualToAnchor(number->firstBaselineAnchor(), 17));
    runFrames();
    const auto baseline = [](UILabel& label) { return label.frame().top() + label.firstBaseline(); };
    EXPECT_NEAR(baseline(*subtitle) - baseline(*number), 17, 1e-9);

    subtitle->setFont(UIFont::systemFontOfSize(20));
    runFrames();
    EXPECT_NEAR(baseline(*subtitle) - baseline(*number), 17, 1e-9) << "with another font";
    activate(subtitle->heightAnchor().constraintEqualToConstant(90));
    runFrames();
    EXPECT_NEAR(baseline(*subtitle) - baseline(*number), 17, 0.25) << "text stands on whole pixels";
}

TEST_F(ContentSizeTest, TheBaselineOfAButtonIsItsTitles)
{
    const auto button = addTo<UIButton>(*container);
    const auto subtitle = addAtCorner<UILabel>();
    button->setTitle(QStringLiteral("12"), UIControlState::Normal);
    subtitle->setText(QStringLiteral("RECORDINGS"));
    activate(button->topAnchor().constraintEqualToAnchor(container->topAnchor(), 30));
    activate(button->leftAnchor().constraintEqualToAnchor(container->leftAnchor()));
    activate(button->heightAnchor().constraintEqualToConstant(50));
    container->removeConstraint(*container->constraints()[1]);
    activate(subtitle->firstBaselineAnchor().constraintEqualToAnchor(button->firstBaselineAnchor(), 17));
    runFrames();
    EXPECT_NEAR(subtitle->frame().top() + subtitle->firstBaseline(),
        button->frame().top() + button->firstBaseline() + 17, 1e-9);
}

TEST_F(ContentSizeTest, ViewsWithoutTextTakeTheirEdgesForBaselines)
{
    const auto view = addAtCorner<UIView>();
    const auto other = addTo(*container);
    activate(view->heightAnchor().constraintEqualToConstant(40));
    activate(other->firstBaselineAnchor().constraintEqualToAnchor(view->lastBaselineAnchor(), 2));
    runFrames();
    EXPECT_EQ(other->frame().top(), 42);
}

TEST_F(ContentSizeTest, AWrappingLabelTakesItsHeightFromTheWidthItGets)
{
    const auto label = addAtCorner<UILabel>();
    label->setNumberOfLines(0);
    label->setText(QStringLiteral("The bells of the old town hall strike twelve over the market"));
    const auto width = activate(label->widthAnchor().constraintEqualToConstant(120));
    runFrames();
    const double tall = label->frame().height();
    EXPECT_EQ(tall, label->sizeThatFits({ 120, 1000 }).height());
    width->setConstant(280);
    runFrames();
    EXPECT_EQ(label->frame().height(), label->sizeThatFits({ 280, 1000 }).height());
    EXPECT_LT(label->frame().height(), tall);
}

} // namespace
