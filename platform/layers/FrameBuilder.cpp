#include "platform/layers/FrameBuilder.h"

#include "platform/graphics/UIColor.h"
#include "platform/layers/CALayer.h"
#include "platform/layers/CALayerAnimations.h"
#include "platform/layers/PixelGrid.h"

#include <algorithm>
#include <cmath>
#include <utility>

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
    const double shorterSide = std::min(bounds.width(), bounds.height());
    return radius > 0 && shorterSide > 0 ? std::min(radius, shorterSide / 2) : 0;
}

// Where the content may leave a mark, in the layer's coordinates.
CGRect contentArea(const FrameContent& content)
{
    if (const auto* image = std::get_if<FrameImage>(&content))
        return image->rect;
    if (const auto* shape = std::get_if<FrameShape>(&content)) {
        const double reach = 2 * std::max(shape->lineWidth, 0.0); // half the line, more at a sharp corner
        return shape->path->controlPointRect().adjusted(-reach, -reach, reach, reach);
    }
    return {};
}

// One walk over the layer tree, which writes over the items of the last list.
class Pass {
public:
    enum class Mode { Alone, Remembering }; // whether the layers' records are kept

    Pass(std::vector<FrameItem>& items, Mode mode)
        : m_items(items)
        , m_remembers(mode == Mode::Remembering)
    {
    }

    // What a layer's sublayers need to know of it: where its item is, whether their records are about the
    // items at hand, and its pixels.
    struct Super {
        int index;
        bool isKnown;
        PixelGrid grid;
    };

    void visitRoot(const CALayer& root, double mediaTime, double scale, bool isKnown)
    {
        visit(root, { mediaTime, 1 }, { 0, isKnown, PixelGrid(scale) });
        if (m_cursor == 0) {
            FrameItem item;
            item.layer = root.layerID();
            item.subtreeEnd = ++m_cursor;
            put(0, std::move(item));
        }
        if (m_items.size() != std::size_t(m_cursor)) {
            m_items.resize(std::size_t(m_cursor));
            m_sameStructure = false;
        }
    }

    double secondsUntilChange() const { return m_secondsUntilChange; }
    // Whether the layers and their nesting are those of the last list.
    bool hasSameStructure() const { return m_sameStructure; }
    std::vector<int>& changedItems() { return m_changedItems; } // in no order

private:
    // Lists the layer's subtree from the cursor on. Answers the area that it covers, in the superlayer's
    // coordinates; an empty one stands for a subtree that shows nothing and has left nothing in the list.
    CGRect visit(const CALayer& layer, const CAMoment& superMoment, const Super& super)
    {
        if (layer.isHidden())
            return leaveOut(layer);
        CAFrameRecord& record = layer.frameRecord();
        const bool isInPlace
            = super.isKnown && record.itemCount > 0 && super.index + record.offset == m_cursor;
        const bool isUnchanged
            = isInPlace && !record.isStale && !record.moves && record.superGrid.placesAs(super.grid);
        if (isUnchanged && m_cursor >= m_writtenUpTo) {
            m_cursor += record.itemCount;
            return record.area;
        }
        const CAMoment moment = layer.timing().local(superMoment);
        if (!layer.hasAnimations())
            return visit(layer, moment, super, isInPlace, layer.modelValues());
        CALayerValues shown = layer.modelValues();
        layer.animations()->apply(shown, layer.modelValues(), moment);
        const bool canBeSeen = shown.opacity > 0 || layer.animations()->animates(CAProperty::Opacity);
        if (canBeSeen)
            m_secondsUntilChange
                = std::min(m_secondsUntilChange, layer.animations()->secondsUntilChange(moment));
        m_moves = true;
        return visit(layer, moment, super, isInPlace, shown);
    }

    CGRect visit(const CALayer& layer, const CAMoment& moment, const Super& super, bool isInPlace,
        const CALayerValues& shown)
    {
        const bool clips = layer.masksToBounds();
        if (!(shown.opacity > 0) || (clips && !hasArea(shown.bounds)))
            return leaveOut(layer);
        const CALayerValues& rest = layer.modelValues();
        const PixelGrid grid = super.grid.inLayer(rest);
        const CGAffineTransform transform = grid.transformToSuperlayer(super.grid, rest, shown);
        const CGRect bounds = grid.bounds(rest, shown);
        if (!isDrawable(transform, bounds))
            return leaveOut(layer);

        FrameItem item;
        item.layer = layer.layerID();
        item.transform = transform;
        item.opacity = std::min(shown.opacity, 1.0);
        item.bounds = bounds;
        item.cornerRadius = drawableRadius(shown.cornerRadius, bounds);
        item.clipsToBounds = clips;
        CGRect area = fill(item, layer, grid, shown);

        const Super self { m_cursor++, isInPlace, grid };
        const bool drawsItself = !area.isEmpty();
        const bool movesBefore = std::exchange(m_moves, layer.hasAnimations());
        for (const auto& sublayer : layer.sublayers())
            area |= visitSublayer(*sublayer, moment, self, clips ? &bounds : nullptr);
        const bool moves = std::exchange(m_moves, m_moves || movesBefore);
        const bool drawsBelow = m_cursor > self.index + 1;
        if (!drawsItself && !drawsBelow) {
            m_cursor = self.index;
            return leaveOut(layer);
        }
        item.subtreeEnd = m_cursor;
        put(self.index, std::move(item));
        area = transform.mapRect(clips ? bounds : area);
        if (m_remembers)
            layer.frameRecord()
                = { false, moves, self.index - super.index, m_cursor - self.index, area, super.grid };
        return area;
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
        const CALayer& sublayer, const CAMoment& moment, const Super& super, const CGRect* clip)
    {
        const int index = m_cursor;
        const CGRect area = visit(sublayer, moment, super);
        if (!clip || area.intersects(*clip))
            return area;
        m_cursor = index;
        return leaveOut(sublayer);
    }

    // It is visited again whenever its superlayer is.
    CGRect leaveOut(const CALayer& layer) const
    {
        if (m_remembers)
            layer.frameRecord() = { .isStale = false };
        return {};
    }

    void put(int index, FrameItem&& item)
    {
        if (m_items.size() <= std::size_t(index)) {
            m_items.resize(std::size_t(index) + 1);
            m_sameStructure = false;
        }
        FrameItem& old = m_items[std::size_t(index)];
        if (old.layer == item.layer && old.subtreeEnd == item.subtreeEnd) {
            if (old == item)
                return;
            m_changedItems.push_back(index);
        } else {
            m_sameStructure = false;
        }
        old = std::move(item);
        m_writtenUpTo = std::max(m_writtenUpTo, index + 1);
    }

    std::vector<FrameItem>& m_items;
    const bool m_remembers;
    int m_cursor = 0; // where the next item goes
    int m_writtenUpTo = 0; // from here on the items are those of the last list
    bool m_sameStructure = true;
    bool m_moves = false; // an animation was met since the superlayer's own item
    std::vector<int> m_changedItems;
    double m_secondsUntilChange = infinity;
};

std::uint64_t nextListID()
{
    static std::uint64_t last = 0;
    return ++last;
}

} // namespace

CAFrame FrameBuilder::buildFrame(const CALayer& root, double mediaTime, const CGSize& size, double scale)
{
    CAFrame frame;
    frame.list.size = size;
    frame.list.scale = scale;
    Pass pass(frame.list.items, Pass::Mode::Alone);
    pass.visitRoot(root, mediaTime, scale, false);
    frame.nextAnimationTime = mediaTime + pass.secondsUntilChange();
    return frame;
}

void FrameBuilder::update(const CALayer& root, double mediaTime, const CGSize& size, double scale)
{
    FrameList& list = m_frame.list;
    const UIUserInterfaceStyle style = CurrentUserInterfaceStyle::get();
    const bool isKnown = !list.items.empty() && list.size == size && list.scale == scale && m_style == style;
    m_style = style;
    list.size = size;
    list.scale = scale;
    Pass pass(list.items, Pass::Mode::Remembering);
    pass.visitRoot(root, mediaTime, scale, isKnown);
    m_frame.nextAnimationTime = mediaTime + pass.secondsUntilChange();

    FrameHistory& history = list.history;
    history.previous = isKnown && pass.hasSameStructure() ? history.id : 0;
    history.id = nextListID();
    history.changedItems = std::move(pass.changedItems());
    std::sort(history.changedItems.begin(), history.changedItems.end());
}
