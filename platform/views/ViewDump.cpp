#include "platform/views/ViewDump.h"

#include "platform/graphics/UIColor.h"
#include "platform/graphics/UIImage.h"
#include "platform/layers/CAShapeLayer.h"
#include "platform/views/UIView.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

NSString text(double number) { return NSString::number(std::round(number * 2) / 2 + 0.0); }

NSString text(const CGRect& rect)
{
    return QStringLiteral("(%1 %2; %3x%4)")
        .arg(text(rect.x()), text(rect.y()), text(rect.width()), text(rect.height()));
}

NSString fraction(double number) { return NSString::number(number, 'f', 2); }

void addLine(NSString& dump, int depth, const QStringList& words)
{
    dump += NSString(2 * depth, u' ') + words.join(u' ') + u'\n';
}

void addLooks(QStringList& words, const CALayer& layer)
{
    if (layer.bounds().topLeft() != CGPoint(0, 0))
        words << QStringLiteral("scrolled to ") + text(layer.bounds().x()) + u' ' + text(layer.bounds().y());
    if (layer.opacity() != 1)
        words << QStringLiteral("opacity ") + fraction(layer.opacity());
    if (const auto& color = layer.backgroundColor(); color && color->qColor().alpha() > 0)
        words << QStringLiteral("background ") + color->qColor().name(QColor::HexArgb);
    if (layer.cornerRadius() != 0)
        words << QStringLiteral("radius ") + text(layer.cornerRadius());
    if (layer.masksToBounds())
        words << QStringLiteral("clips");
    if (layer.contents())
        words << QStringLiteral("picture ") + text(layer.contents()->size().width()) + u'x'
                + text(layer.contents()->size().height());
    if (layer.contentsTintColor())
        words << QStringLiteral("tint ") + layer.contentsTintColor()->qColor().name(QColor::HexArgb);
    for (const NSString& key : layer.animationKeys())
        words << QStringLiteral("animates ") + key;
}

void addLayer(NSString& dump, const CALayer& layer, int depth)
{
    QStringList words { layer.className(), text(layer.frame()) };
    if (layer.isHidden())
        words << QStringLiteral("hidden");
    addLooks(words, layer);
    if (const auto* const shape = dynamic_cast<const CAShapeLayer*>(&layer))
        words << QStringLiteral("stroke from %1 to %2")
                     .arg(fraction(shape->strokeStart()), fraction(shape->strokeEnd()));
    addLine(dump, depth, words);
}

void addView(NSString& dump, const UIView& view, int depth)
{
    QStringList words { view.className(), text(view.frame()) };
    if (const NSString label = view.accessibilityLabel(); !label.isEmpty())
        words << u'"' + label + u'"';
    if (view.isHidden()) {
        addLine(dump, depth, words << QStringLiteral("hidden"));
        return;
    }
    addLooks(words, *view.layer());
    addLine(dump, depth, words);
    const auto& subviews = view.subviews();
    for (const auto& layer : view.layer()->sublayers())
        if (std::none_of(subviews.begin(), subviews.end(),
                [&](const auto& subview) { return subview->layer() == layer; }))
            addLayer(dump, *layer, depth + 1);
    for (const auto& subview : subviews)
        addView(dump, *subview, depth + 1);
}

} // namespace

NSString ViewDump::tree(const UIView& view)
{
    NSString dump;
    addView(dump, view, 0);
    return dump;
}
