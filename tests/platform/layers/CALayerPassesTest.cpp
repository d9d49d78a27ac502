// The layout and display passes of layers.
#include "platform/graphics/CGContext.h"
#include "tests/platform/layers/LayersFixture.h"

namespace {

// Writes down what it is asked; lays out and draws as the test wishes.
struct Delegate : CALayerDelegate {
    using Lines = std::vector<std::string>;

    explicit Delegate(Lines& lines)
        : log(lines)
    {
    }

    void layoutSublayersOfLayer(CALayer& layer) override
    {
        log.push_back("layout " + layer.name().toStdString());
        if (layout)
            layout(layer);
    }
    bool layerDrawsContent(const CALayer&) const override { return draws; }
    void drawLayerInContext(CALayer& layer, CGContext& context) override
    {
        log.push_back("draw " + layer.name().toStdString());
        context.fillRect(layer.bounds(), *UIColor::colorWithRed(1, 0, 0, 1));
    }
    bool displayLayer(CALayer& layer) override
    {
        if (!fillsContents)
            return false;
        log.push_back("display " + layer.name().toStdString());
        return true;
    }

    Lines& log;
    std::function<void(CALayer&)> layout;
    bool draws = false;
    bool fillsContents = false;
};

class CALayerPassesTest : public LayersFixture {
protected:
    std::shared_ptr<CALayer> named(const char* name)
    {
        auto result = CALayer::layer();
        result->setName(QLatin1String(name));
        result->setDelegate(delegate);
        return result;
    }
    static QSize drawnSize(const CALayer& drawn)
    {
        const FrameContent content = drawn.frameContent(drawn.modelValues());
        const auto* image = std::get_if<FrameImage>(&content);
        return image ? image->image.size() : QSize(0, 0);
    }

    std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>(log);
    std::shared_ptr<CALayer> root = named("root");
    std::shared_ptr<CALayer> child = named("child");
    std::shared_ptr<CALayer> grandchild = named("grandchild");
};

TEST_F(CALayerPassesTest, LayoutRunsOnceForWhatWaitsParentsFirst)
{
    root->addSublayer(child);
    child->addSublayer(grandchild);
    grandchild->setNeedsLayout();
    root->setNeedsLayout();
    EXPECT_TRUE(root->hasPendingLayout());
    root->layoutIfNeeded();
    EXPECT_EQ(log, (Lines { "layout root", "layout grandchild" }));
    EXPECT_FALSE(root->hasPendingLayout());
    root->layoutIfNeeded();
    EXPECT_EQ(log.size(), 2u);
}

TEST_F(CALayerPassesTest, LayoutStartsAtTheHighestAncestorThatWaits)
{
    root->addSublayer(child);
    child->addSublayer(grandchild);
    child->setNeedsLayout();
    grandchild->setNeedsLayout();
    grandchild->layoutIfNeeded();
    EXPECT_EQ(log, (Lines { "layout child", "layout grandchild" }));
}

TEST_F(CALayerPassesTest, AnotherSizeAsksForLayoutAnotherPlaceDoesNot)
{
    root->setBounds({ 0, 0, 10, 10 });
    EXPECT_TRUE(root->needsLayout());
    root->layoutIfNeeded();
    root->setBounds({ 0, 50, 10, 10 });
    root->setPosition({ 1, 1 });
    EXPECT_FALSE(root->needsLayout());
}

TEST_F(CALayerPassesTest, ALayoutThatResizesSublayersLaysThemOutInTheSamePass)
{
    root->addSublayer(child);
    delegate->layout = [this](CALayer& laidOut) {
        if (&laidOut == root.get())
            child->setFrame(root->bounds());
    };
    root->setBounds({ 0, 0, 10, 10 });
    root->layoutIfNeeded();
    EXPECT_EQ(log, (Lines { "layout root", "layout child" }));
}

TEST_F(CALayerPassesTest, ALayoutMayAskForItsSuperlayersAgain)
{
    root->addSublayer(child);
    int rounds = 0;
    delegate->layout = [&](CALayer& laidOut) {
        if (&laidOut == child.get() && ++rounds < 3) {
            root->setNeedsLayout();
            child->setNeedsLayout();
        }
    };
    child->setNeedsLayout();
    root->layoutIfNeeded();
    EXPECT_EQ(rounds, 3);
    EXPECT_FALSE(root->hasPendingLayout());
}

TEST_F(CALayerPassesTest, LayoutsThatForEverAskForOneAnotherAreLeftWaiting)
{
    int layouts = 0;
    delegate->layout = [&](CALayer& laidOut) {
        ++layouts;
        laidOut.setNeedsLayout();
    };
    root->setNeedsLayout();
    root->layoutIfNeeded();
    EXPECT_EQ(layouts, 100);
    EXPECT_TRUE(root->hasPendingLayout());
}

TEST_F(CALayerPassesTest, ALayoutMayRemoveAndDropLayers)
{
    root->addSublayer(child);
    root->addSublayer(grandchild);
    delegate->layout = [this](CALayer& laidOut) {
        if (&laidOut == child.get()) {
            grandchild->removeFromSuperlayer();
            grandchild = nullptr;
            child->removeFromSuperlayer();
            child = nullptr;
        }
    };
    child->setNeedsLayout();
    grandchild->setNeedsLayout();
    root->layoutIfNeeded();
    EXPECT_EQ(log, (Lines { "layout child" }));
    EXPECT_TRUE(root->sublayers().empty());
}

TEST_F(CALayerPassesTest, ALayerThatWaitsIsFoundAfterItIsAdded)
{
    child->addSublayer(grandchild);
    grandchild->setNeedsLayout();
    grandchild->setNeedsDisplay();
    delegate->draws = true;
    grandchild->setBounds({ 0, 0, 1, 1 });
    root->addSublayer(child);
    root->layoutIfNeeded();
    root->displaySubtreeIfNeeded();
    EXPECT_EQ(log, (Lines { "layout grandchild", "draw grandchild" }));
}

TEST_F(CALayerPassesTest, ContentIsDrawnOnceUntilItIsAskedForAgain)
{
    delegate->draws = true;
    root->setContentsScale(2);
    root->setBounds({ 0, 0, 10, 5 });
    root->displayIfNeeded();
    root->displayIfNeeded();
    EXPECT_EQ(log, (Lines { "draw root" }));
    EXPECT_EQ(drawnSize(*root), QSize(20, 10));
    root->setPosition({ 5, 5 });
    root->setTransform(CGAffineTransform::fromScale(2, 2));
    root->setOpacity(0.5);
    root->setBounds({ 0, 100, 10, 5 });
    root->displayIfNeeded();
    EXPECT_EQ(log.size(), 1u); // moved, not changed
    root->setNeedsDisplay();
    root->displayIfNeeded();
    EXPECT_EQ(log.size(), 2u);
    root->setBounds({ 0, 0, 11, 5 });
    root->displayIfNeeded();
    EXPECT_EQ(log.size(), 3u);
    root->setContentsScale(3);
    root->displayIfNeeded();
    EXPECT_EQ(log.size(), 4u);
    EXPECT_EQ(drawnSize(*root), QSize(33, 15));
}

TEST_F(CALayerPassesTest, TheDrawingLiesInTheLayersCoordinates)
{
    delegate->draws = true;
    root->setBounds({ 100, 200, 2, 2 });
    root->displayIfNeeded();
    const FrameContent content = root->frameContent(root->modelValues());
    const auto& image = std::get<FrameImage>(content);
    EXPECT_EQ(image.rect, CGRect(100, 200, 2, 2));
    EXPECT_EQ(image.image.pixelColor(0, 0), QColor(255, 0, 0));
    EXPECT_EQ(image.image.pixelColor(1, 1), QColor(255, 0, 0));
}

TEST_F(CALayerPassesTest, WithoutAnythingToDrawThereIsNoBitmap)
{
    root->setBounds({ 0, 0, 10, 10 });
    root->setNeedsDisplay();
    root->displayIfNeeded();
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(drawnSize(*root), QSize(0, 0));
}

TEST_F(CALayerPassesTest, SizesThatMakeNoBitmapDrawNothing)
{
    delegate->draws = true;
    for (const CGSize& size : { CGSize(0, 10), CGSize(10, 0), CGSize(-5, 10), CGSize(1e9, 1e9) }) {
        root->setBounds({ CGPoint(0, 0), size });
        root->displayIfNeeded();
        EXPECT_EQ(drawnSize(*root), QSize(0, 0));
    }
    EXPECT_TRUE(log.empty());
    root->setBounds({ 0, 0, 1, 1 }); // and recovers
    root->displayIfNeeded();
    EXPECT_EQ(log, (Lines { "draw root" }));
}

TEST_F(CALayerPassesTest, TheDelegateMayFillTheContentsInAnotherWay)
{
    delegate->draws = true;
    delegate->fillsContents = true;
    root->setBounds({ 0, 0, 10, 10 });
    root->displayIfNeeded();
    EXPECT_EQ(log, (Lines { "display root" }));
}

TEST_F(CALayerPassesTest, HiddenLayersAreDrawnWhenTheyAreShown)
{
    delegate->draws = true;
    root->addSublayer(child);
    child->addSublayer(grandchild);
    child->setHidden(true);
    grandchild->setBounds({ 0, 0, 10, 10 });
    root->displaySubtreeIfNeeded();
    EXPECT_TRUE(log.empty());
    child->setHidden(false);
    root->displaySubtreeIfNeeded();
    EXPECT_EQ(log, (Lines { "draw grandchild" }));
}

TEST_F(CALayerPassesTest, AnImageThatRepeatsIsDrawnToTheLayersSize)
{
    QImage pixels(2, 1, QImage::Format_ARGB32_Premultiplied);
    pixels.setPixelColor(0, 0, Qt::red);
    pixels.setPixelColor(1, 0, Qt::blue);
    const auto tile = UIImage::imageWithQImage(pixels, 1)->resizableImage({}, UIImageResizingMode::Tile);
    root->setBounds({ 0, 0, 5, 2 });
    root->setContents(tile);
    EXPECT_EQ(drawnSize(*root), QSize(0, 0));
    root->displaySubtreeIfNeeded();
    const FrameContent content = root->frameContent(root->modelValues());
    const QImage& drawn = std::get<FrameImage>(content).image;
    EXPECT_EQ(drawn.size(), QSize(5, 2));
    for (int x = 0; x < 5; ++x)
        EXPECT_EQ(drawn.pixelColor(x, 1), QColor(x % 2 ? Qt::blue : Qt::red)) << x;
    root->setBounds({ 0, 0, 7, 2 });
    root->displaySubtreeIfNeeded();
    EXPECT_EQ(drawnSize(*root), QSize(7, 2));
    root->setContents(nullptr);
    root->displaySubtreeIfNeeded();
    EXPECT_EQ(drawnSize(*root), QSize(0, 0));
}

} // namespace
