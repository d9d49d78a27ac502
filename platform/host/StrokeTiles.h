// The scene-graph nodes of a stroke whose ends move, such as a ring that grows.
//
// Its picture lies in tiles. Where an end has moved, the tiles there are painted anew, with the part of the
// path that meets them; all others stay as they are, so that a step of a ring costs as much as the step is
// long and not as the ring is large.
#pragma once

#include "platform/host/MeasuredPath.h"
#include "platform/host/TextureCache.h"

#include <QSGImageNode>
#include <QSGNode>

// A transform, since the software renderer places what is added to a plain node as if nothing were around it.
class StrokeTiles final : public QSGTransformNode {
public:
    // Whether the item draws only a stroke that does not fill too many tiles. Answers it, else null.
    static const FrameShape* strokeOf(const FrameItem& item, double scale);
    // Whether the strokes are the same but for their ends.
    static bool differInEnds(const FrameShape& first, const FrameShape& second);

    // The stroke, of whatever ends, of a layer on a screen of that scale.
    StrokeTiles(QQuickWindow& window, const FrameShape& stroke, double scale);
    ~StrokeTiles() override;

    bool canShow(const FrameShape& stroke, double scale) const;
    void show(const FrameShape& stroke, TextureCache& textures);

    // As LayerNode's.
    template <typename Visit> void forEachDrawing(Visit visit) const
    {
        for (const Tile& tile : m_tiles)
            if (tile.node)
                visit(CGRect(tile.rect), false);
    }
    CGRect drawnRect() const { return m_rect; }

private:
    struct Tile {
        QRect rect; // in the layer's device pixels
        SharedTexture texture;
        QSGImageNode* node = nullptr; // null: nothing is to be seen of it
    };

    void paint(Tile& tile, TextureCache& textures);
    CGRect around(const CGRect& ofPath) const;

    QQuickWindow& m_window;
    FrameShape m_stroke; // as it is shown
    bool m_isShown = false;
    const double m_scale;
    const MeasuredPath m_path;
    CGRect m_rect;
    std::vector<Tile> m_tiles;
};
