#include "playback/ORVPlaybackSliderThumb.h"

#include "platform/layout/NSLayoutConstraint.h"

namespace {

constexpr double alphaAtRest = 0.5;
constexpr double alphaWhenHighlighted = 1;
constexpr double fadeDuration = 0.2; // seconds

} // namespace

void ORVPlaybackSliderThumb::init()
{
    UIControl::init();
    setupSubviews();
}

void ORVPlaybackSliderThumb::setupSubviews()
{
    m_imageView = make<UIImageView>();
    m_imageView->setTranslatesAutoresizingMaskIntoConstraints(false);
    addSubview(m_imageView);
    NSLayoutConstraint::activateVisualFormats(
        { "V:|-(0)-[imageView]-(0)-|", "H:|-(>=0)-[imageView]-(>=0)-|" }, { { "imageView", m_imageView } });
    m_imageView->centerXAnchor().constraintEqualToAnchor(centerXAnchor())->setActive(true);
    updateState(Animated::No);
}

void ORVPlaybackSliderThumb::setHighlighted(bool highlighted)
{
    if (highlighted && !isTracking())
        return;
    UIControl::setHighlighted(highlighted);
    updateState(highlighted ? Animated::No : Animated::Yes);
}

void ORVPlaybackSliderThumb::updateState(Animated animated)
{
    const double alpha = isHighlighted() ? alphaWhenHighlighted : alphaAtRest;
    if (animated == Animated::Yes)
        UIView::animate(fadeDuration, [this, alpha] { m_imageView->setAlpha(alpha); });
    else
        m_imageView->setAlpha(alpha);
}
