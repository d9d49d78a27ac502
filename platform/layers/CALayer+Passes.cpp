// The part of CALayer that prepares a frame: the pass of layout, then the pass of display.
//
// A layer that waits marks the layers above it, so a pass goes straight to what waits and costs nothing
// where nothing does.
#include "platform/foundation/Messages.h"
#include "platform/foundation/NSAssertionHandler.h"
#include "platform/layers/CALayer.h"
#include "platform/layers/CALayerTree.h"

#include <cmath>

namespace {

// Layouts that have not come to rest after so many rounds never will.
constexpr int maximumLayoutRounds = 100;

} // namespace

// --- Layout ----------------------------------------------------------------------------------------------

void CALayer::setNeedsLayout()
{
    m_needsLayout = true;
    ancestorsNeedLayout();
    if (m_tree)
        m_tree->setNeedsFrame(); // a hidden layer is laid out too: others may measure it
}

void CALayer::ancestorsNeedLayout()
{
    for (CALayer* layer = m_superlayer; layer && !layer->m_sublayersNeedLayout; layer = layer->m_superlayer)
        layer->m_sublayersNeedLayout = true;
}

void CALayer::layoutIfNeeded()
{
    CALayer* top = this;
    while (top->m_superlayer && top->m_superlayer->m_needsLayout)
        top = top->m_superlayer;
    const auto self = top->strongSelf(top);
    for (int round = 0; round < maximumLayoutRounds && self->hasPendingLayout(); ++round) {
        if (const auto delegate = self->m_delegate.lock())
            delegate->layerWillLayoutTree(*self);
        self->layoutSubtreeOnce();
    }
}

void CALayer::layoutSubtreeOnce()
{
    if (std::exchange(m_needsLayout, false))
        layoutSublayers();
    if (!std::exchange(m_sublayersNeedLayout, false))
        return;
    const auto sublayers = m_sublayers; // a layout may change the tree
    for (const auto& sublayer : sublayers)
        if (sublayer->hasPendingLayout() && sublayer->m_superlayer == this)
            sublayer->layoutSubtreeOnce();
}

void CALayer::layoutSublayers()
{
    sendMessage(*this, m_delegate, &CALayerDelegate::layoutSublayersOfLayer, *this);
}

// --- Display ---------------------------------------------------------------------------------------------

void CALayer::setContents(std::shared_ptr<UIImage> image)
{
    if (m_contents.image() == image)
        return;
    const bool hasRepeated = m_contents.repeatsImage();
    m_contents.setImage(std::move(image));
    if (hasRepeated || m_contents.repeatsImage())
        setNeedsDisplay();
    setNeedsFrame();
}

void CALayer::setContentsGravity(CAContentsGravity gravity)
{
    m_contents.setGravity(gravity);
    setNeedsFrame();
}

void CALayer::setContentsScale(double scale)
{
    const bool usable = std::isfinite(scale) && scale > 0;
    NSParameterAssert(usable, "CALayer", "contentsScale > 0");
    if (!usable || m_contents.scale() == scale)
        return;
    m_contents.setScale(scale);
    contentsDidChange();
}

void CALayer::setRasterizationScale(double scale)
{
    const bool usable = std::isfinite(scale) && scale > 0;
    NSParameterAssert(usable, "CALayer", "rasterizationScale > 0");
    if (usable)
        m_rasterizationScale = scale;
}

// What is drawn has another size now.
void CALayer::contentsDidChange()
{
    if (m_contents.hasDrawn() || m_contents.repeatsImage() || drawsContent())
        setNeedsDisplay();
}

void CALayer::setNeedsDisplay()
{
    m_needsDisplay = true;
    ancestorsNeedDisplay();
    setNeedsFrame();
}

void CALayer::ancestorsNeedDisplay()
{
    for (CALayer* layer = m_superlayer; layer && !layer->m_sublayersNeedDisplay; layer = layer->m_superlayer)
        layer->m_sublayersNeedDisplay = true;
}

void CALayer::displayIfNeeded()
{
    if (std::exchange(m_needsDisplay, false))
        display();
}

void CALayer::displaySubtreeIfNeeded()
{
    if (m_hidden)
        return;
    const KeepAlive keepAlive(*this);
    displayIfNeeded();
    if (!std::exchange(m_sublayersNeedDisplay, false))
        return;
    const auto sublayers = m_sublayers;
    for (const auto& sublayer : sublayers)
        if (sublayer->m_needsDisplay || sublayer->m_sublayersNeedDisplay)
            sublayer->displaySubtreeIfNeeded();
}

void CALayer::display()
{
    const auto delegate = m_delegate.lock();
    setNeedsFrame();
    if (delegate && delegate->displayLayer(*this))
        return;
    if (drawsContent())
        m_contents.draw(bounds(), [this](CGContext& context) { drawInContext(context); });
    else if (m_contents.repeatsImage())
        m_contents.draw(bounds(), [this](CGContext& context) { context.drawImage(*contents(), bounds()); });
    else
        m_contents.dropDrawn();
}

bool CALayer::drawsContent() const
{
    const auto delegate = m_delegate.lock();
    return delegate && delegate->layerDrawsContent(*this);
}

void CALayer::drawInContext(CGContext& context)
{
    sendMessage(*this, m_delegate, &CALayerDelegate::drawLayerInContext, *this, context);
}

FrameContent CALayer::frameContent(const CALayerValues& shown) const
{
    return m_contents.frameContent(shown);
}
