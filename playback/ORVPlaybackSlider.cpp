#include "playback/ORVPlaybackSlider.h"

#include "platform/foundation/ClassRegistry.h"
#include "platform/foundation/Messages.h"
#include "platform/graphics/UIColor.h"
#include "platform/views/UIAppearance.h"
#include "theme/UIColor+ORVTheme.h"

#include <limits>

namespace {

constexpr double maximumThumbWidth = 66; // points
constexpr double smallestMultiplier = std::numeric_limits<float>::epsilon();
constexpr double stepDuration = 0.1; // seconds: as long as it takes until the player reports again
constexpr double tapDuration = 0.3; // seconds

NSString positionKey() { return QStringLiteral("currentPosition"); }

void setUpAppearance()
{
    const auto handle = UIImage::imageNamed(QStringLiteral("ov_progress_grabhandle"));
    UIAppearance::of<ORVPlaybackSlider>()
        .set(&ORVPlaybackSlider::setThumbImage,
            UIImage::imageWithRenderingMode(handle, UIImageRenderingMode::AlwaysTemplate))
        .set(&ORVPlaybackSlider::setMaximumWaveformTintColor, orv_oruvanePlaybackSliderTrackColor());
}

const ClassRegistry::LoadHook loadHook(setUpAppearance);

} // namespace

// --- Set-up ------------------------------------------------------------------------------------------

void ORVPlaybackSlider::init()
{
    UIView::init();
    setupDefaults();
    setupSubviews();
}

void ORVPlaybackSlider::setupDefaults() { m_maximumWaveformTintColor = UIColor::grayColor(); }

void ORVPlaybackSlider::setupSubviews()
{
    m_minimumTrackView = addTrackView(ORVPlaybackSliderWaveformViewModeAlignLeft);
    m_maximumTrackView = addTrackView(ORVPlaybackSliderWaveformViewModeAlignRight);
    m_maximumTrackView->setTintColor(m_maximumWaveformTintColor);
    m_thumbView = make<ORVPlaybackSliderThumb>();
    m_thumbView->setBackgroundColor(UIColor::clearColor());
    m_thumbView->imageView()->setImage(m_thumbImage);
    m_thumbView->setTranslatesAutoresizingMaskIntoConstraints(false);
    addSubview(m_thumbView);
    setupRecognizers();
    setNeedsUpdateConstraints();
}

std::shared_ptr<ORVPlaybackSliderWaveformView> ORVPlaybackSlider::addTrackView(
    ORVPlaybackSliderWaveformViewMode mode)
{
    auto view = make<ORVPlaybackSliderWaveformView>();
    view->setMode(mode);
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    addSubview(view);
    return view;
}

void ORVPlaybackSlider::setupRecognizers()
{
    const auto self = strongSelf(this);
    m_trackTapRecognizer = make<UITapGestureRecognizer>(Action(self, &ORVPlaybackSlider::trackTapped));
    addGestureRecognizer(m_trackTapRecognizer);
    m_thumbPanRecognizer = make<UIPanGestureRecognizer>(Action(self, &ORVPlaybackSlider::thumbPanned));
    m_thumbPanRecognizer->setCancelsTouchesInView(false); // the thumb stays highlighted
    m_thumbView->addGestureRecognizer(m_thumbPanRecognizer);
}

// --- Constraints -------------------------------------------------------------------------------------

void ORVPlaybackSlider::updateConstraints()
{
    if (!m_staticConstraints) {
        m_staticConstraints.emplace(makeStaticConstraints());
        NSLayoutConstraint::activateConstraints(*m_staticConstraints);
    }
    if (!m_thumbCenterConstraint) {
        m_thumbCenterConstraint = makeThumbCenterConstraint();
        m_thumbCenterConstraint->setActive(true);
    }
    UIView::updateConstraints();
}

NSLayoutConstraint::List ORVPlaybackSlider::makeStaticConstraints()
{
    auto constraints = NSLayoutConstraint::constraintsWithVisualFormats(
        { "V:|-(0)-[minimumTrack]-(0)-|", "V:|-(0)-[maximumTrack]-(0)-|", "V:|-(0)-[thumb]-(0)-|",
            "H:|-(0)-[minimumTrack]-(0)-[maximumTrack]-(0)-|" },
        { { "minimumTrack", m_minimumTrackView }, { "maximumTrack", m_maximumTrackView },
            { "thumb", m_thumbView } });
    constraints.push_back(m_thumbView->widthAnchor().constraintLessThanOrEqualToConstant(maximumThumbWidth));
    constraints.push_back(
        m_minimumTrackView->rightAnchor().constraintEqualToAnchor(m_thumbView->centerXAnchor()));
    return constraints;
}

// At position 0 the multiplier would be 0, and an equation without the right edge says nothing of a place.
std::shared_ptr<NSLayoutConstraint> ORVPlaybackSlider::makeThumbCenterConstraint()
{
    if (m_currentPosition <= smallestMultiplier)
        return m_thumbView->centerXAnchor().constraintEqualToAnchor(leftAnchor());
    return NSLayoutConstraint::constraintWithItem(*m_thumbView, NSLayoutAttribute::CenterX,
        NSLayoutRelation::Equal, this, NSLayoutAttribute::Right, m_currentPosition, 0);
}

// --- The position ------------------------------------------------------------------------------------

void ORVPlaybackSlider::setCurrentPosition(double position)
{
    const AutomaticChange automaticChange(*this, positionKey());
    willChangeValueForKey(positionKey());
    if (!(position <= 1))
        position = 1;
    m_currentPosition = std::max(position, 0.0);
    if (m_thumbCenterConstraint) {
        removeConstraint(*m_thumbCenterConstraint);
        m_thumbCenterConstraint = nullptr;
    }
    setNeedsUpdateConstraints();
    didChangeValueForKey(positionKey());
}

void ORVPlaybackSlider::setCurrentPosition(double position, Animated animated)
{
    if (animated == Animated::Yes)
        setCurrentPosition(position, stepDuration, UIViewAnimationCurve::Linear);
    else
        setCurrentPosition(position);
}

void ORVPlaybackSlider::setCurrentPosition(double position, double duration, UIViewAnimationCurve curve)
{
    const KeepAlive keepAlive(*this); // an observer may drop the slider
    setCurrentPosition(position);
    UIView::animate(duration, 0,
        optionsOfCurve(curve) | UIViewAnimationOptions::AllowUserInteraction
            | UIViewAnimationOptions::BeginFromCurrentState,
        [this] { layoutIfNeeded(); });
}

// --- Looks -------------------------------------------------------------------------------------------

void ORVPlaybackSlider::setThumbHidden(bool hidden)
{
    m_thumbView->setHidden(hidden);
    m_trackTapRecognizer->setEnabled(!hidden);
}

void ORVPlaybackSlider::setMaximumWaveformTintColor(std::shared_ptr<UIColor> color)
{
    appearanceNotes().noteSetting(&ORVPlaybackSlider::setMaximumWaveformTintColor);
    m_maximumWaveformTintColor = std::move(color);
    m_maximumTrackView->setTintColor(m_maximumWaveformTintColor);
}

void ORVPlaybackSlider::setThumbImage(std::shared_ptr<UIImage> image)
{
    appearanceNotes().noteSetting(&ORVPlaybackSlider::setThumbImage);
    m_thumbImage = std::move(image);
    m_thumbView->imageView()->setImage(m_thumbImage);
}

// --- Touches -----------------------------------------------------------------------------------------

void ORVPlaybackSlider::trackTapped(UITapGestureRecognizer& recognizer)
{
    const KeepAlive keepAlive(*this); // the delegate may drop the slider
    const CGPoint location = recognizer.locationInView(this);
    setCurrentPosition(
        trackPositionFromTouchLocation(location), tapDuration, UIViewAnimationCurve::EaseInOut);
    sendMessage(*this, m_delegate, &ORVPlaybackSliderDelegate::playbackSliderDidTapOnPosition, *this,
        m_currentPosition);
}

void ORVPlaybackSlider::thumbPanned(UIPanGestureRecognizer& recognizer)
{
    const CGPoint location = recognizer.locationInView(this);
    switch (recognizer.state()) {
    case UIGestureRecognizerState::Began:
        beginThumbDraggingWithLocation(location);
        break;
    case UIGestureRecognizerState::Changed:
        updateThumbDraggingWithLocation(location);
        break;
    default:
        endThumbDraggingWithLocation(location);
    }
}

void ORVPlaybackSlider::beginThumbDraggingWithLocation(const CGPoint& location)
{
    const KeepAlive keepAlive(*this);
    m_draggingThumb = true;
    m_panningOffset = offsetFromThumbCenter(location); // for a drag that ends inside the message
    sendMessage(*this, m_delegate, &ORVPlaybackSliderDelegate::playbackSliderDidBeginDraggingThumb, *this);
    m_panningOffset = offsetFromThumbCenter(location);
    updateThumbDraggingWithLocation(location);
}

void ORVPlaybackSlider::updateThumbDraggingWithLocation(const CGPoint& location)
{
    const KeepAlive keepAlive(*this);
    const CGPoint thumbCenter(location.x() + m_panningOffset, location.y());
    setCurrentPosition(trackPositionFromTouchLocation(thumbCenter), Animated::No);
    sendMessage(*this, m_delegate, &ORVPlaybackSliderDelegate::playbackSliderDidDragThumbToPosition, *this,
        m_currentPosition);
}

void ORVPlaybackSlider::endThumbDraggingWithLocation(const CGPoint& location)
{
    const KeepAlive keepAlive(*this);
    updateThumbDraggingWithLocation(location);
    m_draggingThumb = false;
    sendMessage(*this, m_delegate,
        &ORVPlaybackSliderDelegate::playbackSliderDidEndDraggingThumbWithNewPosition, *this,
        m_currentPosition);
}

double ORVPlaybackSlider::offsetFromThumbCenter(const CGPoint& location) const
{
    return m_thumbView->frame().center().x() - location.x();
}

double ORVPlaybackSlider::trackPositionFromTouchLocation(const CGPoint& location) const
{
    const CGRect track = bounds();
    return (location.x() + track.left()) / track.width();
}
