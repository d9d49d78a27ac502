#include "platform/layers/CALayer.h"

#include "platform/layers/CATransaction.h"
#include "tests/platform/layers/LayersFixture.h"
#include "tests/support/AssertionRecorder.h"

#include <set>

namespace {

using CALayerTest = LayersFixture;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// --- Geometry --------------------------------------------------------------------------------------------

TEST_F(CALayerTest, TheFrameFollowsFromBoundsPositionAnchorAndTransform)
{
    layer->setBounds({ 0, 0, 100, 50 });
    layer->setPosition({ 200, 100 });
    EXPECT_EQ(layer->frame(), CGRect(150, 75, 100, 50));
    layer->setAnchorPoint({ 0, 1 });
    EXPECT_EQ(layer->frame(), CGRect(200, 50, 100, 50));
    layer->setAnchorPoint({ 0.5, 0.5 });
    layer->setBounds({ 30, 40, 100, 50 }); // scrolling moves what is inside
    EXPECT_EQ(layer->frame(), CGRect(150, 75, 100, 50));
    layer->setTransform(CGAffineTransform::fromScale(2, 2));
    EXPECT_EQ(layer->frame(), CGRect(100, 50, 200, 100));
}

TEST_F(CALayerTest, SettingTheFrameSetsPositionAndSize)
{
    layer->setBounds({ 5, 6, 1, 1 });
    layer->setFrame({ 10, 20, 30, 40 });
    EXPECT_EQ(layer->bounds(), CGRect(5, 6, 30, 40));
    EXPECT_EQ(layer->position(), CGPoint(25, 40));
    EXPECT_EQ(layer->frame(), CGRect(10, 20, 30, 40));
}

TEST_F(CALayerTest, SettingTheFrameUnderAScaleSetsTheUnscaledSize)
{
    layer->setTransform(CGAffineTransform::fromScale(2, 4));
    layer->setFrame({ 10, 20, 30, 40 });
    EXPECT_EQ(layer->bounds().size(), CGSize(15, 10));
    EXPECT_EQ(layer->frame(), CGRect(10, 20, 30, 40));
    layer->setTransform(CGAffineTransform::fromScale(0, 0)); // no size could make that frame
    layer->setFrame({ 0, 0, 50, 50 });
    EXPECT_EQ(layer->bounds().size(), CGSize(15, 10));
}

TEST_F(CALayerTest, PointsAndRectsAreConvertedBetweenLayers)
{
    const auto left = CALayer::layer();
    const auto right = CALayer::layer();
    layer->setFrame({ 0, 0, 400, 400 });
    left->setFrame({ 10, 10, 100, 100 });
    right->setFrame({ 200, 50, 100, 100 });
    right->setBounds({ 0, 1000, 100, 100 }); // scrolled
    right->setTransform(CGAffineTransform::fromScale(2, 2));
    layer->addSublayer(left);
    layer->addSublayer(right);
    EXPECT_EQ(left->convertPointToLayer({ 1, 2 }, layer.get()), CGPoint(11, 12));
    EXPECT_EQ(left->convertPointFromLayer({ 11, 12 }, layer.get()), CGPoint(1, 2));
    EXPECT_EQ(layer->convertPointToLayer({ 250, 100 }, right.get()), CGPoint(50, 1050)); // its middle
    EXPECT_EQ(right->convertPointToLayer({ 0, 1000 }, left.get()), CGPoint(140, -10));
    EXPECT_EQ(left->convertPointToLayer({ 3, 4 }, left.get()), CGPoint(3, 4));
    EXPECT_EQ(left->convertPointToLayer({ 1, 2 }, nullptr), CGPoint(11, 12));
    EXPECT_EQ(left->convertPointFromLayer({ 11, 12 }, nullptr), CGPoint(1, 2));
    EXPECT_EQ(right->convertRectToLayer({ 0, 1000, 10, 10 }, layer.get()), CGRect(150, 0, 20, 20));
    EXPECT_EQ(right->convertRectFromLayer({ 150, 0, 20, 20 }, layer.get()), CGRect(0, 1000, 10, 10));
    EXPECT_EQ(left->convertRectFromLayer({ 10, 10, 5, 5 }, nullptr), CGRect(0, 0, 5, 5));
}

TEST_F(CALayerTest, LayerIdentitiesAreNeverUsedAgain)
{
    std::set<LayerID> seen;
    for (int count = 0; count < 1000; ++count)
        EXPECT_TRUE(seen.insert(CALayer::layer()->layerID()).second);
    EXPECT_FALSE(seen.contains(LayerID::None));
}

TEST_F(CALayerTest, ValuesAreReadAndSetByKeyPath)
{
    const auto black = UIColor::blackColor();
    const auto white = UIColor::whiteColor();
    layer->setValueForKeyPath(0.5, QStringLiteral("opacity"));
    layer->setValueForKeyPath(7.0, QStringLiteral("position.y"));
    layer->setValueForKeyPath(2.0, QStringLiteral("transform.scale.xy"));
    layer->setValueForKeyPath(CGSize(30, 40), QStringLiteral("bounds.size"));
    layer->setValueForKeyPath(CGPoint(0, 0), QStringLiteral("anchorPoint"));
    layer->setValueForKeyPath(black, QStringLiteral("backgroundColor"));
    layer->setValueForKeyPath(white, QStringLiteral("contentsTintColor"));
    layer->setValueForKeyPath(3.0, QStringLiteral("cornerRadius"));
    layer->setValueForKeyPath(3.0, QStringLiteral("nonsense"));
    EXPECT_EQ(layer->opacity(), 0.5);
    EXPECT_EQ(layer->position(), CGPoint(0, 7));
    EXPECT_EQ(layer->transform(), CGAffineTransform::fromScale(2, 2));
    EXPECT_EQ(layer->bounds(), CGRect(0, 0, 30, 40));
    EXPECT_EQ(layer->anchorPoint(), CGPoint(0, 0));
    EXPECT_EQ(layer->backgroundColor(), black);
    EXPECT_EQ(layer->contentsTintColor(), white);
    EXPECT_EQ(layer->cornerRadius(), 3);
    EXPECT_EQ(layer->valueForKeyPath(QStringLiteral("position.y")), CAValue(7.0));
    EXPECT_TRUE(CAValues::isMissing(layer->valueForKeyPath(QStringLiteral("nonsense"))));
}

// --- Tree ------------------------------------------------------------------------------------------------

TEST_F(CALayerTest, SublayersAreKeptInOrderAndKnowTheirSuperlayer)
{
    const auto first = CALayer::layer();
    const auto second = CALayer::layer();
    const auto between = CALayer::layer();
    layer->addSublayer(first);
    layer->addSublayer(second);
    layer->insertSublayer(between, 1);
    EXPECT_THAT(layer->sublayers(), ElementsAre(first, between, second));
    EXPECT_EQ(between->superlayer(), layer.get());
    layer->addSublayer(first); // adding again brings it to the top
    EXPECT_THAT(layer->sublayers(), ElementsAre(between, second, first));
    layer->insertSublayer(first, 99);
    EXPECT_THAT(layer->sublayers(), ElementsAre(between, second, first));
    layer->insertSublayer(first, 0);
    EXPECT_THAT(layer->sublayers(), ElementsAre(first, between, second));
    between->removeFromSuperlayer();
    between->removeFromSuperlayer();
    EXPECT_THAT(layer->sublayers(), ElementsAre(first, second));
    EXPECT_EQ(between->superlayer(), nullptr);
}

TEST_F(CALayerTest, ALayerMovesFromOneSuperlayerToAnother)
{
    const auto other = CALayer::layer();
    const auto child = CALayer::layer();
    layer->addSublayer(child);
    other->addSublayer(layer->sublayers().front()); // the very reference that is taken out
    EXPECT_THAT(layer->sublayers(), IsEmpty());
    EXPECT_EQ(child->superlayer(), other.get());
}

TEST_F(CALayerTest, ASublayerOutlivesItsSuperlayerWithoutOne)
{
    const auto child = CALayer::layer();
    layer->addSublayer(child);
    layer = nullptr;
    EXPECT_EQ(child->superlayer(), nullptr);
}

TEST_F(CALayerTest, RemovingTheLastReferenceIsSafe)
{
    layer->addSublayer(CALayer::layer());
    layer->sublayers().front()->removeFromSuperlayer();
    EXPECT_THAT(layer->sublayers(), IsEmpty());
}

TEST_F(CALayerTest, ALayerCannotBePutIntoItself)
{
    const AssertionRecorder assertions;
    const auto child = CALayer::layer();
    layer->addSublayer(child);
    child->addSublayer(layer);
    layer->addSublayer(layer);
    const NSString message
        = QStringLiteral("A layer cannot be put into itself, nor the root of a tree into a layer.");
    EXPECT_THAT(assertions.messages(), ElementsAre(message, message));
    EXPECT_THAT(child->sublayers(), IsEmpty());
    EXPECT_EQ(layer->superlayer(), nullptr);
}

TEST_F(CALayerTest, TheRootOfATreeCannotBePutIntoALayer)
{
    const CALayerTree tree(layer);
    const AssertionRecorder assertions;
    CALayer::layer()->addSublayer(layer);
    EXPECT_EQ(assertions.failures().size(), 1u);
    EXPECT_EQ(layer->superlayer(), nullptr);
}

TEST_F(CALayerTest, NilLayersAndAnimationsAreProgrammingErrors)
{
    const AssertionRecorder assertions;
    layer->addSublayer(nullptr);
    layer->addAnimation(nullptr, QStringLiteral("key"));
    EXPECT_THAT(assertions.messages(),
        ElementsAre(QStringLiteral("Invalid parameter not satisfying: sublayer != nil"),
            QStringLiteral("Invalid parameter not satisfying: animation != nil")));
    EXPECT_FALSE(layer->hasAnimations());
}

// --- Implicit actions ------------------------------------------------------------------------------------

// Writes each question down with the value that the layer has at that moment.
class AskingLayer : public CALayer {
public:
    std::shared_ptr<CAAnimation> actionForKey(const NSString& key) override
    {
        questions.push_back(key.toStdString() + " at " + std::to_string(opacity()));
        return CALayer::actionForKey(key);
    }
    std::vector<std::string> questions;
};

TEST_F(CALayerTest, TheActionIsAskedBeforeTheNewValueTakesEffect)
{
    const auto asking = make<AskingLayer>();
    asking->setOpacity(0.25);
    asking->setOpacity(0.25); // no change, no question
    asking->setBackgroundColor(nullptr);
    asking->setOpacity(0.5);
    EXPECT_EQ(asking->questions, (Lines { "opacity at 1.000000", "opacity at 0.250000" }));
}

TEST_F(CALayerTest, EveryAnimatablePropertyAsksAndNoOther)
{
    const auto asking = make<AskingLayer>();
    asking->setFrame({ 1, 2, 3, 4 });
    asking->setAnchorPoint({ 0, 0 });
    asking->setTransform(CGAffineTransform::fromScale(2, 2));
    asking->setCornerRadius(1);
    asking->setBackgroundColor(UIColor::blackColor());
    asking->setContentsTintColor(UIColor::blackColor());
    asking->setHidden(true);
    asking->setMasksToBounds(true);
    asking->setContentsScale(2);
    std::vector<std::string> keys;
    for (const std::string& question : asking->questions)
        keys.push_back(question.substr(0, question.find(' ')));
    EXPECT_EQ(keys,
        (Lines { "bounds", "position", "anchorPoint", "transform", "cornerRadius", "backgroundColor",
            "contentsTintColor" }));
}

TEST_F(CALayerTest, ALayerInAWindowAnimatesFromTheShownValueByDefault)
{
    const CALayerTree tree(layer);
    layer->setOpacity(0);
    EXPECT_EQ(layer->opacity(), 0);
    EXPECT_DOUBLE_EQ(layer->presentationValues().opacity, 1);
    scheduler.advance(0.125);
    const double shown = layer->presentationValues().opacity;
    const auto standard = CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionDefault);
    EXPECT_NEAR(shown, 1 - standard->valueAt(0.5), 1e-12);
    layer->setOpacity(0.75); // turns back from where it is
    EXPECT_NEAR(layer->presentationValues().opacity, shown, 1e-12);
    EXPECT_THAT(layer->animationKeys(), ElementsAre(QStringLiteral("opacity")));
    scheduler.advance(0.25);
    EXPECT_EQ(layer->presentationValues().opacity, 0.75);
    EXPECT_FALSE(layer->hasAnimations());
}

TEST_F(CALayerTest, TheDefaultActionTakesTheTransactionsDurationAndPace)
{
    const CALayerTree tree(layer);
    const CATransaction::Guard transaction;
    CATransaction::setAnimationDuration(2);
    CATransaction::setAnimationTimingFunction(
        CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionLinear));
    layer->setOpacity(0);
    EXPECT_DOUBLE_EQ(opacityAt(*layer, 0.5), 0.75);
}

TEST_F(CALayerTest, ALayerInNoWindowChangesAtOnce)
{
    layer->setOpacity(0);
    EXPECT_FALSE(layer->hasAnimations());
}

TEST_F(CALayerTest, DisabledActionsAreNotEvenAskedFor)
{
    const auto asking = make<AskingLayer>();
    const CALayerTree tree(asking);
    const CATransaction::Guard transaction;
    CATransaction::setDisableActions(true);
    asking->setOpacity(0);
    EXPECT_THAT(asking->questions, IsEmpty());
    EXPECT_FALSE(asking->hasAnimations());
}

struct ActionDelegate : CALayerDelegate {
    CAActionAnswer actionForLayerForKey(CALayer&, const NSString& key) override
    {
        return key == QLatin1String("opacity") ? answer : std::nullopt;
    }
    CAActionAnswer answer;
};

TEST_F(CALayerTest, TheDelegateIsAskedFirst)
{
    const CALayerTree tree(layer);
    const auto delegate = std::make_shared<ActionDelegate>();
    layer->setDelegate(delegate);
    delegate->answer = std::shared_ptr<CAAnimation>(); // no action
    layer->setOpacity(0.5);
    EXPECT_FALSE(layer->hasAnimations());
    delegate->answer = basic("opacity", 0.1, 0.2, {}, 9);
    layer->setOpacity(0.6);
    EXPECT_EQ(layer->animationForKey(QStringLiteral("opacity"))->duration(), 9);
    delegate->answer = std::nullopt; // leaves it to the layer
    layer->setOpacity(0.7);
    EXPECT_EQ(layer->animationForKey(QStringLiteral("opacity"))->duration(), 0.25);
    layer->setPosition({ 1, 1 });
    EXPECT_TRUE(layer->animationForKey(QStringLiteral("position")));
}

TEST_F(CALayerTest, ADelegateThatIsGoneIsNotAsked)
{
    auto delegate = std::make_shared<ActionDelegate>();
    delegate->answer = basic("opacity", 0.1, 0.2, {}, 9);
    layer->setDelegate(delegate);
    delegate = nullptr;
    layer->setOpacity(0.5);
    EXPECT_FALSE(layer->hasAnimations());
    EXPECT_EQ(layer->delegate(), nullptr);
}

// --- Time ------------------------------------------------------------------------------------------------

TEST_F(CALayerTest, TimeIsConvertedThroughTheLayersAbove)
{
    const auto child = CALayer::layer();
    layer->addSublayer(child);
    layer->setBeginTime(10);
    layer->setSpeed(2);
    child->setTimeOffset(5);
    EXPECT_DOUBLE_EQ(layer->convertTimeFromMedia(12), 4);
    EXPECT_DOUBLE_EQ(child->convertTimeFromMedia(12), 9);
    EXPECT_DOUBLE_EQ(child->convertTimeToMedia(9), 12);
    EXPECT_EQ(child->momentAt(12).rate, 2);
}

TEST_F(CALayerTest, PausingKeepsWhatIsShown)
{
    layer->addAnimation(basic("opacity", 0.0, 1.0), QStringLiteral("key"));
    scheduler.advance(0.5);
    const double paused = layer->convertTimeFromMedia(scheduler.now());
    layer->setSpeed(0);
    layer->setTimeOffset(paused);
    scheduler.advance(100);
    EXPECT_DOUBLE_EQ(layer->presentationValues().opacity, 0.5);
    layer->setSpeed(1);
    layer->setBeginTime(scheduler.now());
    scheduler.advance(0.25);
    EXPECT_DOUBLE_EQ(layer->presentationValues().opacity, 0.75);
    scheduler.advance(0.25);
    EXPECT_FALSE(layer->hasAnimations());
}

} // namespace
