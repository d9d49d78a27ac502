// Writes frame lists as trees:
//
//     const FrameList list = makeFrameList({ 100, 100 }, 2,
//         layer(1).at(0, 0, 100, 100).fill(Qt::white).with({
//             layer(2).at(10, 10, 20, 20).fill(Qt::red),
//         }));
#pragma once

#include "platform/layers/FrameList.h"

#include <utility>

class LayerSketch {
public:
    explicit LayerSketch(std::uint64_t id) { m_item.layer = LayerID { id }; }

    // The frame in the parent's coordinates; the layer's own begin at its corner.
    LayerSketch& at(double x, double y, double width, double height)
    {
        m_item.transform = CGAffineTransform::fromTranslate(x, y);
        m_item.bounds = { 0, 0, width, height };
        return *this;
    }
    LayerSketch& transform(const CGAffineTransform& transform)
    {
        m_item.transform = transform;
        return *this;
    }
    LayerSketch& bounds(const CGRect& bounds)
    {
        m_item.bounds = bounds;
        return *this;
    }
    LayerSketch& fill(const QColor& color)
    {
        m_item.backgroundColor = color;
        return *this;
    }
    LayerSketch& content(FrameContent content)
    {
        m_item.content = std::move(content);
        return *this;
    }
    // A picture that fills the bounds.
    LayerSketch& image(const QImage& image, const QColor& tint = {})
    {
        return content(FrameImage { image, m_item.bounds, tint });
    }
    LayerSketch& opacity(double opacity)
    {
        m_item.opacity = opacity;
        return *this;
    }
    LayerSketch& corner(double radius)
    {
        m_item.cornerRadius = radius;
        return *this;
    }
    LayerSketch& clip()
    {
        m_item.clipsToBounds = true;
        return *this;
    }
    LayerSketch& with(std::vector<LayerSketch> sublayers)
    {
        m_sublayers = std::move(sublayers);
        return *this;
    }

    const std::vector<LayerSketch>& sublayers() const { return m_sublayers; }
    std::vector<LayerSketch>& sublayers() { return m_sublayers; }
    FrameItem& item() { return m_item; }

    void appendTo(FrameList& list) const
    {
        const std::size_t index = list.items.size();
        list.items.push_back(m_item);
        for (const LayerSketch& sublayer : m_sublayers)
            sublayer.appendTo(list);
        list.items[index].subtreeEnd = static_cast<int>(list.items.size());
    }

private:
    FrameItem m_item;
    std::vector<LayerSketch> m_sublayers;
};

inline LayerSketch layer(std::uint64_t id) { return LayerSketch(id); }

inline FrameList makeFrameList(const CGSize& size, double scale, const LayerSketch& root)
{
    FrameList list { size, scale, {} };
    root.appendTo(list);
    return list;
}
