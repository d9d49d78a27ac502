// Random screens at rest, at whole and broken scales: the renderer draws what a painter does, to the pixel,
// also when they have been scrolled, resized and rebuilt in between.
#include "platform/controls/UIImageView.h"
#include "platform/controls/UILabel.h"
#include "platform/graphics/UIBezierPath.h"
#include "platform/graphics/UIColor.h"
#include "platform/graphics/UIFont.h"
#include "platform/host/FramePainter.h"
#include "platform/layers/CAShapeLayer.h"
#include "platform/layers/LayerDump.h"
#include "tests/gallery/RendererWindow.h"
#include "tests/support/PictureComparison.h"
#include "tests/support/Pictures.h"
#include "tests/support/SceneFixture.h"

#include <array>
#include <random>

namespace {

// What lies on each other in several layers is rounded in another order in each.
constexpr PictureTolerance manySoftEdges { .channel = 24 };

class RandomScenesTest : public SceneFixture, public ::testing::WithParamInterface<unsigned> {
protected:
    RandomScenesTest()
        : random(GetParam())
    {
        resizeScreen();
        window->setBackgroundColor(color(1));
        for (int count = 0; count < 3; ++count)
            addTo(*window, 2);
    }
    std::size_t below(std::size_t count) { return random() % count; }
    bool oneOutOf(std::size_t count) { return below(count) == 0; }
    double between(double low, double high) { return std::uniform_real_distribution(low, high)(random); }
    // To any size of whole pixels.
    void resizeScreen()
    {
        const auto pixels = [this](double points) { return std::floor(points * scale); };
        const CGSize size(pixels(between(120, 160)), pixels(between(120, 160)));
        UIScreen::mainScreen()->setGeometry({ size / scale, scale, {} });
    }
    std::shared_ptr<UIColor> color(double alpha)
    {
        return UIColor::colorWithRed(between(0, 1), between(0, 1), between(0, 1), alpha);
    }
    CGRect place() { return { between(-10, 40), between(-10, 40), between(0.2, 55), between(0.2, 55) }; }

    std::shared_ptr<UIView> someView()
    {
        switch (below(4)) {
        case 0: {
            const auto label = make<UILabel>();
            label->setText(QStringLiteral("Half a pixel off is blurred"));
            label->setNumberOfLines(0);
            label->setFont(UIFont::systemFontOfSize(CGFloat(8 + below(12))));
            return label;
        }
        case 1: {
            QImage pixels = plainPixels({ int(2 + below(40)), int(2 + below(40)) }, Qt::white);
            for (int x = 0; x < pixels.width(); x += 3)
                pixels.setPixelColor(x, int(below(std::size_t(pixels.height()))), Qt::red);
            const auto image = UIImage::imageWithQImage(pixels, CGFloat(1 + below(3)));
            const auto picture = make<UIImageView>(image);
            picture->setContentMode(oneOutOf(2) ? UIViewContentMode::Center : UIViewContentMode::TopRight);
            return picture;
        }
        case 2: {
            const auto shape = CAShapeLayer::layer();
            shape->setPath(UIBezierPath::bezierPathWithRoundedRect({ 2, 3, between(5, 50), 30 }, 7));
            shape->setFillColor(oneOutOf(2) ? color(0.5) : nullptr);
            shape->setStrokeColor(color(1));
            shape->setLineWidth(between(0.5, 5));
            shape->setStrokeEnd(between(0.2, 1));
            const auto view = make<UIView>();
            view->layer()->addSublayer(shape);
            return view;
        }
        default:
            return make<UIView>();
        }
    }
    void addTo(UIView& around, int depth)
    {
        const auto view = someView();
        view->setFrame(place());
        if (oneOutOf(2))
            view->setBackgroundColor(color(oneOutOf(2) ? 1 : 0.6));
        if (oneOutOf(3))
            view->setClipsToBounds(true);
        if (oneOutOf(3))
            view->layer()->setCornerRadius(between(0, 20));
        if (oneOutOf(4))
            view->setAlpha(between(0.3, 1));
        if (oneOutOf(3))
            view->setBounds({ CGPoint(between(-4, 4), between(-4, 4)), view->bounds().size() });
        if (oneOutOf(5))
            view->setTransform(CGAffineTransform::fromTranslate(between(-4, 4), between(-4, 4)));
        around.addSubview(view);
        views.push_back(view);
        if (depth > 0)
            for (std::size_t count = below(4); count > 0; --count)
                addTo(*view, depth - 1);
    }
    void change()
    {
        const auto& view = views.at(below(views.size()));
        switch (below(5)) {
        case 0:
            view->setFrame(place());
            break;
        case 1:
            for (int step = 0; step < 4; ++step) { // often enough to be drawn as one picture
                view->setBounds({ CGPoint(between(-4, 4), between(-4, 4)), view->bounds().size() });
                runFrames();
                RendererWindow::shared().show(frame);
            }
            break;
        case 2:
            addTo(*view, 1);
            break;
        case 3:
            resizeScreen();
            break;
        default:
            view->setBackgroundColor(color(0.8));
        }
        scheduler.advance(1);
    }

    static constexpr std::array scales { 1.0, 1.25, 1.5, 2.0, 3.0 };
    std::mt19937 random;
    const double scale = scales.at(below(scales.size()));
    std::vector<std::shared_ptr<UIView>> views;
};

TEST_P(RandomScenesTest, AreDrawnAsTheyArePainted)
{
    for (int step = 0; step < 4; ++step) {
        runFrames();
        const QImage shown = RendererWindow::shared().show(frame);
        const QImage painted = FramePainter(frame).paintScreen();
        ASSERT_TRUE(picturesMatch(shown, painted, manySoftEdges, std::to_string(step)))
            << "scale " << scale << "\n"
            << LayerDump::frame(frame).toStdString();
        change();
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomScenesTest, ::testing::Range(1U, 121U));

} // namespace
