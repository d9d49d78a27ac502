#include "platform/controls/UIImageView.h"
#include "tests/gallery/Gallery.h"

#include <QFile>
#include <QPainter>

namespace {

class ImagesGallery : public Gallery {
protected:
    // An arrow that shows which way is up, 30 × 20 points. Of another size it stands in the middle.
    static std::shared_ptr<UIImage> arrow(const QSize& points = { 30, 20 });

    static std::shared_ptr<UIImage> photograph();

    std::shared_ptr<UIImageView> addImage(std::shared_ptr<UIImage> image, const CGRect& rect)
    {
        const auto view = make<UIImageView>();
        view->setImage(std::move(image));
        view->setBackgroundColor(UIColor::systemGray6Color());
        return add(view, rect);
    }
};

std::shared_ptr<UIImage> ImagesGallery::arrow(const QSize& points)
{
    const double scale = GetParam().scale;
    const auto inPixels = [scale](int length) { return qRound(length * scale); };
    QImage pixels(inPixels(points.width()), inPixels(points.height()), QImage::Format_ARGB32_Premultiplied);
    pixels.fill(QColor(255, 236, 190));
    QPainter painter(&pixels);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    painter.translate(points.width() / 2.0, points.height() / 2.0);
    painter.scale(points.height() / 20.0, points.height() / 20.0);
    painter.translate(-15, -10);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(200, 60, 40));
    painter.drawPolygon(QPolygonF { { 15, 2 }, { 22, 10 }, { 8, 10 } });
    painter.drawRect(QRectF(13, 10, 4, 8));
    painter.end();
    return UIImage::imageWithQImage(pixels, scale);
}

std::shared_ptr<UIImage> ImagesGallery::photograph()
{
    QFile file(
        NSBundle::mainBundle()->pathForResource(QStringLiteral("portrait_gus@3x"), QStringLiteral("jpg")));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const auto image = UIImage::imageWithData(file.readAll(), 3);
    EXPECT_TRUE(image);
    return image;
}

TEST_P(ImagesGallery, ContentModes)
{
    showsNoText();
    // Of other proportions than the views, so that no two ways of filling look alike.
    const auto wide = arrow({ 44, 16 });
    const struct {
        UIViewContentMode mode;
        const char* name;
    } modes[]
        = { { UIViewContentMode::ScaleToFill, "fill" }, { UIViewContentMode::ScaleAspectFit, "aspect fit" },
              { UIViewContentMode::ScaleAspectFill, "aspect fill" }, { UIViewContentMode::Center, "centre" },
              { UIViewContentMode::Top, "top" }, { UIViewContentMode::Bottom, "bottom" },
              { UIViewContentMode::Left, "left" }, { UIViewContentMode::Right, "right" },
              { UIViewContentMode::TopLeft, "top left" }, { UIViewContentMode::TopRight, "top right" },
              { UIViewContentMode::BottomLeft, "bottom left" },
              { UIViewContentMode::BottomRight, "bottom right" } };
    for (int index = 0; index < int(std::size(modes)); ++index) {
        const int row = index / 4;
        const CGPoint place(margin + index % 4 * 94, 8 + row * 84);
        addCaption(modes[index].name, place.x(), place.y());
        const auto view = addImage(wide, { place + CGPoint(0, 14), CGSize(80, 56) });
        view->setContentMode(modes[index].mode);
        view->setClipsToBounds(true);
    }
    expectPicture("image-modes", 262);
}

TEST_P(ImagesGallery, TemplatesTilesAndCorners)
{
    showsNoText();
    const auto icon = picture("ov_icon_play");
    const auto asTemplate = icon->imageWithRenderingMode(UIImageRenderingMode::AlwaysTemplate);
    const auto centred = [this](std::shared_ptr<UIImage> image, const CGRect& rect) {
        const auto view = addImage(std::move(image), rect);
        view->setContentMode(UIViewContentMode::Center);
        return view;
    };
    addCaption("original", 12, 8);
    centred(icon->imageWithRenderingMode(UIImageRenderingMode::AlwaysOriginal), { 12, 22, 60, 44 });
    addCaption("template", 88, 8);
    centred(asTemplate, { 88, 22, 60, 44 });
    addCaption("own tint", 164, 8);
    centred(asTemplate, { 164, 22, 60, 44 })->setTintColor(UIColor::colorWithRed(0.9, 0.1, 0.5, 1));
    addCaption("dimmed", 240, 8);
    centred(asTemplate, { 240, 22, 60, 44 })->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
    addCaption("half alpha", 316, 8);
    centred(asTemplate, { 316, 22, 60, 44 })->setAlpha(0.5);

    addCaption("a picture that repeats", 12, 76);
    addImage(arrow()->resizableImage({}, UIImageResizingMode::Tile), { 12, 92, 170, 50 });
    addCaption("… as a template", 198, 76);
    addImage(asTemplate->resizableImage({}, UIImageResizingMode::Tile), { 198, 92, 180, 50 });

    addCaption("round, masked", 12, 152);
    const auto portrait = photograph();
    const auto round = addImage(portrait, { 12, 168, 80, 80 });
    round->layer()->setCornerRadius(40);
    round->layer()->setMasksToBounds(true);
    addCaption("… rasterised", 108, 152);
    const auto rasterised = addImage(portrait, { 108, 168, 80, 80 });
    rasterised->layer()->setCornerRadius(40);
    rasterised->layer()->setMasksToBounds(true);
    rasterised->layer()->setShouldRasterize(true);
    rasterised->layer()->setRasterizationScale(GetParam().scale);
    addCaption("radius alone", 204, 152);
    const auto background = addImage(nullptr, { 204, 168, 80, 80 });
    background->layer()->setCornerRadius(16);
    addCaption("turned", 300, 152);
    const auto turned = addImage(arrow(), { 306, 184, 66, 44 });
    turned->setTransform(CGAffineTransform().rotate(30));
    showsTurned(turned->frame());
    expectPicture("image-looks", 262);
}

GALLERY_LOOKS(ImagesGallery);

} // namespace
