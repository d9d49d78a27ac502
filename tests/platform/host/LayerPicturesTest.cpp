// What layers look like when they are painted: corners, clips and rasterised subtrees, pixel by pixel.
#include "platform/controls/UIImageView.h"
#include "platform/graphics/UIColor.h"
#include "platform/host/FramePainter.h"
#include "tests/support/PictureComparison.h"
#include "tests/support/Pictures.h"
#include "tests/support/SceneFixture.h"

namespace {

class LayerPicturesTest : public SceneFixture {
protected:
    LayerPicturesTest() { window->setBackgroundColor(UIColor::whiteColor()); }

    QImage painted()
    {
        runFrames();
        return FramePainter(frame).paintScreen();
    }
    // At a place in points.
    QColor colorAt(double x, double y)
    {
        return painted().pixelColor(qRound(x * frame.scale), qRound(y * frame.scale));
    }

    const std::shared_ptr<UIImageView> portrait = [this] {
        auto view = addView<UIImageView>({ 100, 100, 40, 40 });
        view->setImage(plainImage({ 80, 80 }, Qt::red, 2));
        return view;
    }();
};

TEST_F(LayerPicturesTest, ACornerRadiusClipsAnImageViewsImageWhenItMasksToBounds)
{
    portrait->layer()->setCornerRadius(20);
    EXPECT_EQ(colorAt(101, 101), QColor(Qt::red)) << "a radius alone rounds the background only";
    portrait->layer()->setMasksToBounds(true);
    EXPECT_EQ(colorAt(101, 101), QColor(Qt::white));
    EXPECT_EQ(colorAt(120, 120), QColor(Qt::red));
    EXPECT_EQ(colorAt(120, 101), QColor(Qt::red));
    EXPECT_EQ(colorAt(138.5, 138.5), QColor(Qt::white));
    portrait->layer()->setMasksToBounds(false);
    EXPECT_EQ(colorAt(101, 101), QColor(Qt::red));
}

TEST_F(LayerPicturesTest, RoundCornersClipSublayersToo)
{
    portrait->layer()->setCornerRadius(20);
    portrait->layer()->setMasksToBounds(true);
    const auto badge = make<UIView>(CGRect(-10, -10, 20, 20));
    badge->setBackgroundColor(UIColor::colorWithRed(0, 0, 1, 1));
    portrait->addSubview(badge);
    EXPECT_EQ(colorAt(95, 95), QColor(Qt::white));
    EXPECT_EQ(colorAt(101, 101), QColor(Qt::white));
    EXPECT_EQ(colorAt(109, 109), QColor(Qt::blue));
}

TEST_F(LayerPicturesTest, ARadiusOfHalfTheSideIsACircle)
{
    portrait->layer()->setCornerRadius(20);
    portrait->layer()->setMasksToBounds(true);
    const QImage image = painted();
    int wrong = 0;
    for (int y = 0; y < 80; ++y)
        for (int x = 0; x < 80; ++x) {
            const double distance = std::hypot(x + 0.5 - 40, y + 0.5 - 40);
            const QColor color = image.pixelColor(200 + x, 200 + y);
            if (distance < 39)
                wrong += int(color != QColor(Qt::red));
            if (distance > 41)
                wrong += int(color != QColor(Qt::white));
        }
    EXPECT_EQ(wrong, 0);
}

TEST_F(LayerPicturesTest, ARasterisedLayerLooksTheSame)
{
    portrait->layer()->setCornerRadius(20);
    portrait->layer()->setMasksToBounds(true);
    portrait->setTransform(CGAffineTransform().rotate(30));
    const QImage plain = painted();
    for (const double scale : { 1.0, 2.0, 3.0 }) {
        portrait->layer()->setShouldRasterize(true);
        portrait->layer()->setRasterizationScale(scale);
        portrait->layer()->setNeedsFrame();
        EXPECT_TRUE(picturesMatch(painted(), plain, { .channel = 0 })) << scale;
        EXPECT_TRUE(portrait->layer()->shouldRasterize());
        EXPECT_EQ(portrait->layer()->rasterizationScale(), scale);
    }
}

} // namespace
