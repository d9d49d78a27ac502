// The scene-graph nodes of a subtree that only cuts upright pictures: no clip node, but the pictures' visible
// parts.
//
// A clip that moves by a pixel would have all beneath it drawn again. Here each picture lies in columns, and
// a clip shortens or drops those that it meets: the others stay as they are, also when the clip and its
// contents move against each other. Cuts are on whole device pixels, so that two halves that meet in one
// place leave no gap.
#pragma once

#include "platform/host/NodeEdges.h"
#include "platform/host/TextureCache.h"

#include <QSGNode>
#include <QSGTexture>

#include <optional>

class QSGImageNode;
class QSGRectangleNode;

class CutPictures {
public:
    // Whether the item clips a few upright rectangles and pictures of just so many pixels as they cover.
    static bool canShow(const FrameList& list, int index);

    explicit CutPictures(QQuickWindow& window)
        : m_window(window)
    {
    }
    ~CutPictures();
    CutPictures(const CutPictures&) = delete;
    CutPictures& operator=(const CutPictures&) = delete;

    // Shows the subtree in the coordinates of the item's superlayer, first among the nodes below the parent.
    // Answers whether a part lies elsewhere than before.
    bool show(const FrameList& list, int index, NodeEdges edges, TextureCache& textures, QSGNode& parent);

    // As LayerNode's.
    CGRect drawnRect() const { return m_drawnRect; }
    template <typename Visit> void forEachDrawing(Visit visit) const
    {
        for (const Part& part : m_parts)
            if (part.node())
                visit(part.rect, part.texture ? !part.texture->hasAlphaChannel() : part.color.alpha() == 255);
    }

private:
    // A rectangle of one colour, or a column of a picture.
    struct Part {
        CGRect rect; // empty: nothing is to be seen of it
        CGRect source; // in the texture's pixels
        QColor color;
        SharedTexture texture; // null: a coloured rectangle
        QSGRectangleNode* rectangle = nullptr;
        QSGImageNode* image = nullptr;

        QSGNode* node() const;
    };

    void collect(const FrameList& list, int index, const CGPoint& origin, const std::optional<CGRect>& clip,
        TextureCache& textures);
    void collectColumns(const CGRect& rect, const std::optional<CGRect>& clip, const SharedTexture& texture);
    void put(const CGRect& rect, const CGRect& source, const QColor& color, const SharedTexture& texture);
    void showPart(Part& part, const CGRect& rect, const CGRect& source, const QColor& color,
        const SharedTexture& texture);
    static void removeNode(Part& part);

    QQuickWindow& m_window;
    std::vector<Part> m_parts; // in drawing order
    CGRect m_drawnRect;
    // While showing:
    NodeEdges m_edges = NodeEdges::Anywhere;
    QSGNode* m_parent = nullptr;
    QSGNode* m_before = nullptr; // the node of the part before
    std::size_t m_partsShown = 0;
    bool m_hasMoved = false;
};
