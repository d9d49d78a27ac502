#include "platform/layers/LayerDump.h"

#include "platform/graphics/UIColor.h"
#include "platform/layers/CALayer.h"

#include <QStringList>

namespace {

NSString text(double number) { return NSString::number(number == 0 ? 0 : number, 'g', 6); }
NSString text(const CGSize& size) { return text(size.width()) + u'x' + text(size.height()); }

NSString text(const CGRect& rect)
{
    return QStringLiteral("(%1 %2; %3)").arg(text(rect.x()), text(rect.y()), text(rect.size()));
}

NSString text(const QColor& color)
{
    return color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
}

NSString text(const CGAffineTransform& matrix)
{
    const NSString move = QStringLiteral("move(%1 %2)").arg(text(matrix.dx()), text(matrix.dy()));
    if (matrix.m11() == 1 && matrix.m12() == 0 && matrix.m21() == 0 && matrix.m22() == 1)
        return move;
    return QStringLiteral("matrix(%1 %2 %3 %4) ")
               .arg(text(matrix.m11()), text(matrix.m12()), text(matrix.m21()), text(matrix.m22()))
        + move;
}

NSString indented(int depth, const QStringList& words)
{
    return NSString(2 * depth, u' ') + words.join(u' ') + u'\n';
}

// --- Layers ----------------------------------------------------------------------------------------------

void addLayer(NSString& dump, const CALayer& layer, int depth)
{
    QStringList words { layer.name().isEmpty() ? layer.className() : layer.name(), text(layer.frame()) };
    if (layer.bounds().topLeft() != CGPoint(0, 0))
        words << QStringLiteral("bounds ") + text(layer.bounds());
    if (!layer.transform().isIdentity())
        words << text(layer.transform());
    if (layer.isHidden())
        words << QStringLiteral("hidden");
    if (layer.opacity() != 1)
        words << QStringLiteral("opacity ") + text(layer.opacity());
    if (layer.backgroundColor())
        words << QStringLiteral("background ") + text(layer.backgroundColor()->qColor());
    if (layer.cornerRadius() != 0)
        words << QStringLiteral("radius ") + text(layer.cornerRadius());
    if (layer.masksToBounds())
        words << QStringLiteral("clips");
    if (layer.contents())
        words << QStringLiteral("contents ") + text(layer.contents()->size());
    if (layer.speed() != 1)
        words << QStringLiteral("speed ") + text(layer.speed());
    for (const NSString& key : layer.animationKeys())
        words << QStringLiteral("animates ") + key;
    dump += indented(depth, words);
    for (const auto& sublayer : layer.sublayers())
        addLayer(dump, *sublayer, depth + 1);
}

// --- Frames ----------------------------------------------------------------------------------------------

NSString text(const FrameImage& image)
{
    NSString words = QStringLiteral("image %1x%2 in %3")
                         .arg(NSString::number(image.image.width()), NSString::number(image.image.height()),
                             text(image.rect));
    if (image.tint.isValid())
        words += QStringLiteral(" tint ") + text(image.tint);
    return words;
}

NSString text(const FrameShape& shape)
{
    QStringList words { QStringLiteral("shape in ") + text(shape.path->controlPointRect()) };
    if (shape.fillColor.isValid())
        words << QStringLiteral("fill ") + text(shape.fillColor);
    if (shape.strokeColor.isValid())
        words << QStringLiteral("stroke %1 width %2 from %3 to %4")
                     .arg(text(shape.strokeColor), text(shape.lineWidth), text(shape.strokeStart),
                         text(shape.strokeEnd));
    return words.join(u' ');
}

void addItem(NSString& dump, const FrameItem& item, int number, int depth)
{
    QStringList words { u'#' + NSString::number(number), text(item.transform), text(item.bounds) };
    if (item.opacity != 1)
        words << QStringLiteral("opacity ") + text(item.opacity);
    if (item.backgroundColor.isValid())
        words << QStringLiteral("background ") + text(item.backgroundColor);
    if (item.cornerRadius != 0)
        words << QStringLiteral("radius ") + text(item.cornerRadius);
    if (item.clipsToBounds)
        words << QStringLiteral("clips");
    if (const auto* image = std::get_if<FrameImage>(&item.content))
        words << text(*image);
    if (const auto* shape = std::get_if<FrameShape>(&item.content))
        words << text(*shape);
    dump += indented(depth, words);
}

} // namespace

NSString LayerDump::layerTree(const CALayer& layer)
{
    NSString dump;
    addLayer(dump, layer, 0);
    return dump;
}

NSString LayerDump::frame(const FrameList& list)
{
    NSString dump = QStringLiteral("frame %1 at scale %2\n").arg(text(list.size), text(list.scale));
    std::vector<int> openEnds;
    for (int index = 0; index < static_cast<int>(list.items.size()); ++index) {
        const FrameItem& item = list.items[static_cast<std::size_t>(index)];
        while (!openEnds.empty() && openEnds.back() <= index)
            openEnds.pop_back();
        openEnds.push_back(item.subtreeEnd);
        addItem(dump, item, index, static_cast<int>(openEnds.size()));
    }
    return dump;
}
