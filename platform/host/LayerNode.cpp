#include "platform/host/LayerNode.h"

#include "platform/host/FrameGeometry.h"

#include <QQuickWindow>

#include <algorithm>
#include <utility>

namespace {

// A matrix that only moves says so, which spares the renderer general multiplications.
QMatrix4x4 matrixOf(const CGAffineTransform& transform)
{
    if (!FrameGeometry::isTranslation(transform))
        return QMatrix4x4(transform);
    QMatrix4x4 matrix;
    matrix.translate(static_cast<float>(transform.dx()), static_cast<float>(transform.dy()));
    return matrix;
}

} // namespace

LayerNode::LayerNode(QQuickWindow& window)
    : m_window(window)
{
}

LayerNode::~LayerNode()
{
    m_cutPictures.reset();
    removeStroke();
    removeImage(); // before its texture goes
}

void LayerNode::place(const CGAffineTransform& transform, NodeEdges edges)
{
    m_edges = edges;
    const QMatrix4x4 matrix = matrixOf(placed(transform, edges));
    if (matrix == this->matrix())
        return;
    setMatrix(matrix);
    m_hasMoved = true;
}

void LayerNode::setOpacity(double opacity)
{
    if (!m_opacity) {
        if (opacity >= 1)
            return;
        m_opacity = new QSGOpacityNode;
        m_opacity->setFlag(OwnedByParent);
        reparentChildNodesTo(m_opacity);
        appendChildNode(m_opacity);
    }
    m_opacity->setOpacity(opacity);
}

void LayerNode::showItem(const FrameList& list, int index, TextureCache& textures)
{
    m_shown = Shown::Item;
    m_cutPictures.reset();
    const FrameItem& item = list.items[std::size_t(index)];
    const CGRect bounds = placed(FrameGeometry::deviceRect(item.bounds, list.scale), m_edges);
    // Round corners are cut in the picture itself; a layer that cuts others so is one picture anyway.
    setClip(item.clipsToBounds ? &bounds : nullptr);
    if (FrameGeometry::needsPainter(item)) {
        removeBackground();
        if (showStroke(item, list.scale, textures))
            removeImage();
        else
            showPicture(FramePainter(list).paintItem(index), textures);
        return;
    }
    removeStroke();
    if (FrameGeometry::drawsBackground(item))
        setBackground(bounds, item.backgroundColor);
    else
        removeBackground();
    if (FrameGeometry::drawsContent(item)) {
        showImage(std::get<FrameImage>(item.content), list.scale, textures);
    } else {
        removeImage();
    }
}

void LayerNode::showSubtree(const FrameList& list, int index, TextureCache& textures)
{
    m_shown = Shown::Subtree;
    m_cutPictures.reset();
    removeStroke();
    setClip(nullptr);
    removeBackground();
    showPicture(FramePainter(list).paintSubtree(index), textures);
}

void LayerNode::showCutPictures(const FrameList& list, int index, NodeEdges edges, TextureCache& textures)
{
    m_edges = edges;
    if (!showsCutPictures()) {
        m_shown = Shown::CutPictures;
        place({}, edges);
        removeStroke();
        setClip(nullptr);
        removeBackground();
        removeImage();
        m_cutPictures = std::make_unique<CutPictures>(m_window);
    }
    m_hasMoved = m_cutPictures->show(list, index, edges, textures, *container()) || m_hasMoved;
}

// Shows a stroke in tiles when its ends, and nothing else, move for the second time: most that do then go on.
// Answers false where it is to be one picture.
bool LayerNode::showStroke(const FrameItem& item, double scale, TextureCache& textures)
{
    const FrameShape* const stroke = StrokeTiles::strokeOf(item, scale);
    if (m_strokeTiles && !(stroke && m_strokeTiles->canShow(*stroke, scale)))
        delete std::exchange(m_strokeTiles, nullptr);
    const bool endsMove = stroke && m_shownStroke && m_shownScale == scale
        && StrokeTiles::differInEnds(*stroke, *m_shownStroke);
    m_shownStroke = stroke ? std::optional(*stroke) : std::nullopt;
    m_shownScale = scale;
    m_movesOfEnds = endsMove ? m_movesOfEnds + 1 : 0;
    if (!m_strokeTiles && m_movesOfEnds > 1) {
        m_strokeTiles = new StrokeTiles(m_window, *stroke, scale);
        m_strokeTiles->setFlag(OwnedByParent);
        container()->prependChildNode(m_strokeTiles);
        m_hasMoved = true;
    }
    if (m_strokeTiles)
        m_strokeTiles->show(*stroke, textures);
    return m_strokeTiles;
}

void LayerNode::removeStroke()
{
    delete std::exchange(m_strokeTiles, nullptr);
    m_shownStroke.reset();
}

void LayerNode::showPicture(const FramePicture& picture, TextureCache& textures)
{
    if (picture.image.isNull())
        removeImage();
    else
        setImage(textures.makeTexture(picture.image), picture.rect, picture.image.rect());
}

void LayerNode::setSublayers(const std::vector<LayerNode*>& sublayers)
{
    if (showsCutPictures())
        return; // which stand for those of all sublayers
    QSGNode* const parent = container();
    // Those that leave go first: the others then mostly stand where they belong already.
    QSGNode* present = firstSublayer();
    while (present) {
        QSGNode* const next = present->nextSibling();
        if (std::find(sublayers.begin(), sublayers.end(), present) == sublayers.end())
            parent->removeChildNode(present);
        present = next;
    }
    QSGNode* place = firstSublayer();
    for (LayerNode* sublayer : sublayers) {
        if (place && sublayer == place) {
            place = place->nextSibling();
            continue;
        }
        sublayer->detach();
        if (place)
            parent->insertChildNodeBefore(sublayer, place);
        else
            parent->appendChildNode(sublayer);
    }
}

void LayerNode::detach()
{
    if (QSGNode* const holder = parent())
        holder->removeChildNode(this);
}

void LayerNode::renew()
{
    QSGNode* const holder = parent();
    QSGNode* const next = nextSibling();
    holder->removeChildNode(this);
    if (next)
        holder->insertChildNodeBefore(this, next);
    else
        holder->appendChildNode(this);
}

CGRect LayerNode::drawnRect() const
{
    CGRect rect = m_cutPictures ? m_cutPictures->drawnRect() : CGRect();
    if (m_background)
        rect |= m_background->rect();
    if (m_image)
        rect |= m_image->rect();
    if (m_strokeTiles)
        rect |= m_strokeTiles->drawnRect();
    return rect;
}

std::optional<CGRect> LayerNode::clipRect() const
{
    return m_clip ? std::optional(m_clip->clipRect()) : std::nullopt;
}

void LayerNode::setClip(const CGRect* deviceRect)
{
    if (!deviceRect) {
        if (!m_clip)
            return;
        QSGNode* const outer = m_clip->parent();
        m_clip->reparentChildNodesTo(outer);
        outer->removeChildNode(m_clip);
        delete std::exchange(m_clip, nullptr);
        return;
    }
    if (!m_clip) {
        QSGNode* const outer = container();
        m_clip = new QSGClipNode;
        m_clip->setFlags(OwnedByParent | OwnsGeometry);
        m_clip->setIsRectangular(true);
        m_clip->setGeometry(new QSGGeometry(QSGGeometry::defaultAttributes_Point2D(), 4));
        outer->reparentChildNodesTo(m_clip);
        outer->appendChildNode(m_clip);
    } else if (m_clip->clipRect() == *deviceRect) {
        return;
    }
    m_hasMoved = true;
    m_clip->setClipRect(*deviceRect);
    QSGGeometry::updateRectGeometry(m_clip->geometry(), *deviceRect); // for a renderer that clips by shape
    m_clip->markDirty(DirtyGeometry);
}

void LayerNode::setBackground(const CGRect& deviceRect, const QColor& color)
{
    const bool isNew = !m_background;
    if (isNew) {
        m_background = m_window.createRectangleNode();
        m_background->setFlag(OwnedByParent);
    }
    if (isNew || m_background->rect() != deviceRect) {
        m_background->setRect(deviceRect);
        m_hasMoved = true;
    }
    if (isNew || m_background->color() != color)
        m_background->setColor(color);
    if (isNew)
        container()->prependChildNode(m_background);
}

void LayerNode::removeBackground() { delete std::exchange(m_background, nullptr); }

// Leaves a transparent margin out where pixels meet pixels, for the renderer that draws only what changes:
// what moves is then no more than can be seen.
void LayerNode::showImage(const FrameImage& image, double scale, TextureCache& textures)
{
    const CGRect rect = placed(FrameGeometry::deviceRect(image.rect, scale), m_edges);
    const auto [texture, visible] = textures.picture(image);
    if (m_edges != NodeEdges::OnWholePixels || rect.size() != CGSize(image.image.size()))
        setImage(texture, rect, image.image.rect());
    else if (visible.isEmpty())
        removeImage();
    else
        setImage(texture, CGRect(visible).translated(rect.topLeft()), visible);
}

void LayerNode::setImage(SharedTexture texture, const CGRect& deviceRect, const CGRect& source)
{
    const bool isNew = !m_image;
    if (isNew) {
        m_image = m_window.createImageNode();
        m_image->setFlag(OwnedByParent);
        m_image->setOwnsTexture(false);
        m_image->setFiltering(QSGTexture::Linear); // costs nothing where pixels meet pixels
    }
    if (isNew || m_texture != texture) {
        m_image->setTexture(texture.get());
        m_texture = std::move(texture);
    }
    if (isNew || m_image->sourceRect() != source)
        m_image->setSourceRect(source);
    if (isNew || m_image->rect() != deviceRect) {
        m_image->setRect(deviceRect);
        m_hasMoved = true;
    }
    if (!isNew)
        return;
    if (m_background)
        container()->insertChildNodeAfter(m_image, m_background);
    else
        container()->prependChildNode(m_image);
}

void LayerNode::removeImage()
{
    delete std::exchange(m_image, nullptr);
    m_texture.reset();
}

QSGNode* LayerNode::container()
{
    if (m_clip)
        return m_clip;
    return m_opacity ? static_cast<QSGNode*>(m_opacity) : this;
}

QSGNode* LayerNode::firstSublayer()
{
    if (m_strokeTiles)
        return m_strokeTiles->nextSibling();
    if (m_image)
        return m_image->nextSibling();
    return m_background ? m_background->nextSibling() : container()->firstChild();
}
