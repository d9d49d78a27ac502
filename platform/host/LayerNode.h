// The scene-graph nodes of one layer: its place, its own drawing, and below them its sublayers' nodes.
//
// Only kinds of nodes are used that every backend of the scene graph draws: transforms, opacities,
// rectangular clips, rectangles and images. A node that a layer does not need is not made. Touches a
// node only to change it, so that what is drawn again is only what looks different.
#pragma once

#include "platform/host/CutPictures.h"
#include "platform/host/FramePainter.h"
#include "platform/host/StrokeTiles.h"
#include "platform/host/TextureCache.h"

#include <QSGImageNode>
#include <QSGRectangleNode>
#include <QSGTexture>

#include <utility>

class LayerNode final : public QSGTransformNode {
public:
    explicit LayerNode(QQuickWindow& window);
    ~LayerNode() override;

    // In device pixels. With other edges than before the layer must be shown again, too.
    void place(const CGAffineTransform& transform, NodeEdges edges);
    NodeEdges edges() const { return m_edges; }
    void setOpacity(double);

    // Shows what the item draws by itself; its clip holds for the sublayers, too.
    void showItem(const FrameList& list, int index, TextureCache& textures);
    // Shows one picture that stands for the whole subtree.
    void showSubtree(const FrameList& list, int index, TextureCache& textures);
    // Shows the visible parts of the pictures in the subtree, in place.
    void showCutPictures(const FrameList& list, int index, NodeEdges edges, TextureCache& textures);
    bool showsItem() const { return m_shown == Shown::Item; }
    bool showsSubtree() const { return m_shown == Shown::Subtree; }
    bool showsCutPictures() const { return m_shown == Shown::CutPictures; }

    // Calls the function with the rectangle of each thing that the layer draws, sublayers aside, and whether
    // it is opaque; in drawing order and in the node's coordinates.
    template <typename Visit> void forEachDrawing(Visit visit) const
    {
        if (m_background)
            visit(m_background->rect(), m_background->color().alpha() == 255);
        if (m_image)
            visit(m_image->rect(), !m_texture->hasAlphaChannel());
        if (m_strokeTiles)
            m_strokeTiles->forEachDrawing(visit);
        if (m_cutPictures)
            m_cutPictures->forEachDrawing(visit);
    }
    // Around all that, and more where something is cut.
    CGRect drawnRect() const;
    // What cuts the sublayers and the picture, in the node's coordinates; none where nothing does.
    std::optional<CGRect> clipRect() const;

    // Makes these layers, in this order, the only ones below.
    void setSublayers(const std::vector<LayerNode*>& sublayers);
    // Takes the node out of the tree without deleting it.
    void detach();
    // Whether something of the node lies elsewhere than at the last call, or was not there.
    bool takeHasMoved() { return std::exchange(m_hasMoved, false); }
    // Takes the node out and puts it in where it was.
    void renew();

private:
    enum class Shown : std::uint8_t { Nothing, Item, Subtree, CutPictures };

    void setClip(const CGRect* deviceRect);
    void setBackground(const CGRect& deviceRect, const QColor& color);
    void removeBackground();
    void setImage(SharedTexture texture, const CGRect& deviceRect, const CGRect& source);
    void showImage(const FrameImage& image, double scale, TextureCache& textures);
    void removeImage();
    bool showStroke(const FrameItem& item, double scale, TextureCache& textures);
    void removeStroke();
    void showPicture(const FramePicture& picture, TextureCache& textures);
    QSGNode* container();
    QSGNode* firstSublayer();

    QQuickWindow& m_window;
    QSGOpacityNode* m_opacity = nullptr; // made with the first opacity below 1, then kept
    QSGClipNode* m_clip = nullptr;
    QSGRectangleNode* m_background = nullptr;
    QSGImageNode* m_image = nullptr;
    SharedTexture m_texture;
    std::unique_ptr<CutPictures> m_cutPictures;
    StrokeTiles* m_strokeTiles = nullptr; // of a stroke whose ends go on moving
    std::optional<FrameShape> m_shownStroke;
    double m_shownScale = 0; // of the stroke
    int m_movesOfEnds = 0; // of the stroke, one after the other
    Shown m_shown = Shown::Nothing;
    bool m_hasMoved = true;
    NodeEdges m_edges = NodeEdges::Anywhere;
};
