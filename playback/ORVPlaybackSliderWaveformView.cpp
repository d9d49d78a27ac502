#include "playback/ORVPlaybackSliderWaveformView.h"

#include "platform/graphics/UIColor.h"

void ORVPlaybackSliderWaveformView::init()
{
    UIView::init();
    setBackgroundColor(UIColor::clearColor());
    setOpaque(false);
    setClipsToBounds(true);
    setupSubviews();
}

void ORVPlaybackSliderWaveformView::setupSubviews()
{
    m_imageView = make<UIImageView>();
    m_imageView->setTranslatesAutoresizingMaskIntoConstraints(false);
    addSubview(m_imageView);
    setNeedsUpdateConstraints();
}

void ORVPlaybackSliderWaveformView::setWaveformImage(const std::shared_ptr<UIImage>& image)
{
    m_imageView->setImage(UIImage::imageWithRenderingMode(image, UIImageRenderingMode::AlwaysTemplate));
}

void ORVPlaybackSliderWaveformView::setBounds(const CGRect& bounds)
{
    UIView::setBounds(bounds);
    setNeedsLayout();
}

void ORVPlaybackSliderWaveformView::setMode(ORVPlaybackSliderWaveformViewMode mode)
{
    m_mode = mode;
    if (m_internalConstraints)
        removeConstraints(*m_internalConstraints);
    setNeedsUpdateConstraints();
}

void ORVPlaybackSliderWaveformView::updateConstraints()
{
    if (!m_internalConstraints) {
        m_internalConstraints.emplace(makeConstraints());
        NSLayoutConstraint::activateConstraints(*m_internalConstraints);
    }
    UIView::updateConstraints();
}

NSLayoutConstraint::List ORVPlaybackSliderWaveformView::makeConstraints()
{
    const NSLayoutConstraint::Views views { { "imageView", m_imageView } };
    auto constraints
        = NSLayoutConstraint::constraintsWithVisualFormats({ "V:|-(0)-[imageView]-(0)-|" }, views);
    switch (m_mode) {
    case ORVPlaybackSliderWaveformViewModeAlignRight:
        constraints.push_back(m_imageView->rightAnchor().constraintEqualToAnchor(rightAnchor()));
        break;
    case ORVPlaybackSliderWaveformViewModeAlignLeft:
        constraints.push_back(m_imageView->leftAnchor().constraintEqualToAnchor(leftAnchor()));
        break;
    case ORVPlaybackSliderWaveformViewModeStretch:
    default:
        constraints = NSLayoutConstraint::constraintsWithVisualFormats(
            { "V:|-(0)-[imageView]-(0)-|", "H:|-(0)-[imageView]-(0)-|" }, views);
    }
    return constraints;
}
