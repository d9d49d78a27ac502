#include "platform/layers/FrameBuilder.h"

#include "platform/graphics/UIColor.h"
#include "platform/layers/CALayer.h"
#include "platform/layers/CALayerAnimations.h"
#include "platform/layers/PixelGrid.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

bool hasArea(const CGRect& rect) { return rect.width() > 0 && rect.height() > 0; }

// A sum is finite only if all of it is; where finite numbers add up to infinity nothing could be drawn
// either.
bool isDrawable(const CGAffineTransform& transform, const CGRect& bounds)
{
    const double numbers = transform.m11() + transform.m12() + transform.m21() + transform.m22()
        + transform.dx() + transform.dy() + bounds.x() + bounds.y() + bounds.width() + bounds.height();
    const double area = transform.m11() * transform.m22() - transform.m12() * transform.m21();
    return std::isfinite(numbers) && area != 0 && std::isfinite(area);
}

double drawableRadius(double radius, const CGRect& bounds)
{
    return radius > 0 ? std::min(radius, std::min(bounds.width(), bounds.height()) / 2) : 0;
}

// Where the content may leave a mark, in the layer's coordinates.
CGRect contentArea(const FrameContent& content)
{
    if (const auto* image = std::get_if<FrameImage>(&content))
        return image->rect;
    if (const auto* shape = std::get_if<FrameShape>(&content)) {
        const double reach = 2 * shape->lineWidth; // half the line, more at a sharp corner
        return shape->path->controlPointRect().adjusted(-reach, -reach, reach, reach);
    }
    return {};
}

class Pass {
public:
    explicit Pass(std::vector<FrameItem>& items)
        : m_items(items)
    {
    }

    double secondsUntilChange() const { return m_secondsUntilChange; }

    // Appends the layer's subtree. Answers the area that it covers, in the superlayer's coordinates;
    // an empty one stands for a subtree that shows nothing and has left nothing in the list.
    CGRect visit(const CALayer& layer, const CAMoment& superMoment, const PixelGrid& superGrid)
    {
        if (layer.isHidden())
            return {};
        const CAMoment moment = layer.timing().local(superMoment);
        if (!layer.hasAnimations())
            return visit(layer, moment, superGrid, layer.modelValues());
        CALayerValues shown = layer.modelValues();
        layer.animations()->apply(shown, layer.modelValues(), moment);
        const bool canBeSeen = shown.opacity > 0 || layer.animations()->animates(CAProperty::Opacity);
        if (canBeSeen)
            m_secondsUntilChange
                = std::min(m_secondsUntilChange, layer.animations()->secondsUntilChange(moment));
        return visit(layer, moment, superGrid, shown);
    }

private:
    CGRect visit(
        const CALayer& layer, const CAMoment& moment, const PixelGrid& superGrid, const CALayerValues& shown)
    {
        const bool clips = layer.masksToBounds();
        if (!(shown.opacity > 0) || (clips && !hasArea(shown.bounds)))
            return {};
        const CALayerValues& rest = layer.modelValues();
        const PixelGrid grid = superGrid.inLayer(rest);
        const CGAffineTransform transform = grid.transformToSuperlayer(superGrid, rest, shown);
        const CGRect bounds = grid.bounds(rest, shown);
        if (!isDrawable(transform, bounds))
            return {};

        const std::size_t index = m_items.size();
        FrameItem& item = m_items.emplace_back();
        item.layer = layer.layerID();
        item.transform = transform;
        item.opacity = std::min(shown.opacity, 1.0);
        item.bounds = bounds;
        item.cornerRadius = drawableRadius(shown.cornerRadius, bounds);
        item.clipsToBounds = clips;
        CGRect area = fill(item, layer, grid, shown);

        const bool drawsItself = !area.isEmpty();
        for (const auto& sublayer : layer.sublayers())
            area |= visitSublayer(*sublayer, moment, grid, clips ? &bounds : nullptr);
        const bool drawsBelow = m_items.size() > index + 1;
        if (!drawsItself && !drawsBelow) {
            m_items.resize(index);
            return {};
        }
        m_items[index].subtreeEnd = static_cast<int>(m_items.size());
        return transform.mapRect(clips ? bounds : area);
    }

    // The item's background and content; answers the area that they cover.
    CGRect fill(FrameItem& item, const CALayer& layer, const PixelGrid& grid, const CALayerValues& shown)
    {
        CGRect area;
        if (shown.backgroundColor && hasArea(item.bounds)) {
            const QColor color = shown.backgroundColor->qColor();
            if (color.isValid() && color.alpha() > 0) {
                item.backgroundColor = color;
                area = item.bounds;
            }
        }
        item.content = layer.frameContent(shown);
        if (auto* picture = std::get_if<FrameImage>(&item.content))
            picture->rect = grid.pictureRect(*picture, layer.modelValues(), shown);
        if (!std::holds_alternative<std::monostate>(item.content))
            area |= contentArea(item.content);
        return area;
    }

    // Left out again where the clip leaves nothing of it. Only the nearest clip counts: a subtree that is
    // scrolled half out of sight keeps all its items, and so has only moved.
    CGRect visitSublayer(
        const CALayer& sublayer, const CAMoment& moment, const PixelGrid& grid, const CGRect* clip)
    {
        const std::size_t index = m_items.size();
        const CGRect area = visit(sublayer, moment, grid);
        if (!clip || area.intersects(*clip))
            return area;
        m_items.resize(index);
        return {};
    }

    std::vector<FrameItem>& m_items;
    double m_secondsUntilChange = infinity;
};

} // namespace

CAFrame FrameBuilder::buildFrame(
    const CALayer& root, double mediaTime, const CGSize& size, double scale, std::size_t expectedItems)
{
    CAFrame frame;
    frame.list.size = size;
    frame.list.scale = scale;
    frame.list.items.reserve(expectedItems);
    Pass pass(frame.list.items);
    pass.visit(root, { mediaTime, 1 }, PixelGrid(scale));
    if (frame.list.items.empty()) {
        FrameItem& item = frame.list.items.emplace_back();
        item.layer = root.layerID();
        item.subtreeEnd = 1;
    }
    frame.nextAnimationTime = mediaTime + pass.secondsUntilChange();
    return frame;
}
