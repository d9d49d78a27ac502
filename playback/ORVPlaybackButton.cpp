#include "playback/ORVPlaybackButton.h"

#include "platform/foundation/ClassRegistry.h"
#include "platform/foundation/Messages.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/Scheduler.h"
#include "platform/graphics/UIColor.h"
#include "platform/layers/CABasicAnimation.h"
#include "platform/views/UIAppearance.h"

namespace {

constexpr double switchDuration
    = 0.15; // seconds until the icon is gone, and again until the other one is there
constexpr double fadeDuration = 0.47F; // seconds
constexpr double paleAlpha = 0.2F;

const NSString& playingKey()
{
    static const NSString key = QStringLiteral("playing");
    return key;
}

const NSString& switchKey()
{
    static const NSString key = QStringLiteral("imageViewSwitch");
    return key;
}

UIControlState exclusiveOr(UIControlState first, UIControlState second)
{
    return static_cast<UIControlState>(static_cast<unsigned>(first) ^ static_cast<unsigned>(second));
}

const ClassRegistry::LoadHook loadHook([] {
    UIAppearance::of<ORVPlaybackButton>()
        .set(&UIButton::setImage, UIImage::imageNamed(QStringLiteral("ov_icon_play")), UIControlState::Normal)
        .set(&UIButton::setImage, UIImage::imageNamed(QStringLiteral("ov_icon_pause")),
            UIControlState::Application);
});

} // namespace

void ORVPlaybackButton::init()
{
    UIButton::init();
    setupSubviews();
}

bool ORVPlaybackButton::automaticallyNotifiesObserversForKey(const NSString& key) const
{
    return key != playingKey() && UIButton::automaticallyNotifiesObserversForKey(key);
}

// --- Playing -----------------------------------------------------------------------------------------

UIControlState ORVPlaybackButton::state() const
{
    return m_playing ? UIButton::state() | UIControlState::Application : UIButton::state();
}

void ORVPlaybackButton::setPlaying(bool playing, Animated animated)
{
    const KeepAlive keepAlive(*this); // an observer may drop the button
    const bool unchanged = playing == m_playing;
    willChangeValueForKey(playingKey());
    m_playing = playing;
    Scheduler::current().cancelPreviousPerforms(unlockAction());
    if (unchanged || animated == Animated::No) {
        m_imageView->layer()->removeAnimationForKey(switchKey());
        m_imageViewLocked = false;
        updateImageView();
    } else {
        lockImageView();
        shrinkAndGrowImageView();
        Scheduler::current().performAfterDelay(unlockAction(), switchDuration);
    }
    didChangeValueForKey(playingKey());
}

void ORVPlaybackButton::shrinkAndGrowImageView()
{
    const auto animation = CABasicAnimation::animationWithKeyPath(QStringLiteral("transform.scale.xy"));
    animation->setToValue(0.0);
    animation->setDuration(switchDuration);
    animation->setAutoreverses(true);
    m_imageView->layer()->addAnimation(animation, switchKey());
}

Action ORVPlaybackButton::unlockAction() { return { strongSelf(this), &ORVPlaybackButton::unlockImageView }; }

void ORVPlaybackButton::unlockImageView()
{
    if (!std::exchange(m_imageViewLocked, false))
        return;
    updateImageView();
}

NSString ORVPlaybackButton::accessibilityLabel() const
{
    return NSBundle::mainBundle()->localizedStringForKey(
        m_playing ? QStringLiteral("Pause") : QStringLiteral("Play"), {}, QStringLiteral("Accessibility"));
}

// --- Images ------------------------------------------------------------------------------------------

void ORVPlaybackButton::setImage(std::shared_ptr<UIImage> image, UIControlState state)
{
    appearanceNotes().noteSetting(&UIButton::setImage, state);
    if (image)
        m_imagesForStates[state] = std::move(image);
    else
        m_imagesForStates.erase(state);
    updateImageViewMaybe();
}

std::shared_ptr<UIImage> ORVPlaybackButton::imageForState(UIControlState state) const
{
    if (m_imagesForStates.empty())
        return nullptr;
    using enum UIControlState;
    for (const UIControlState mask : { Normal, Highlighted, Disabled, Selected, Application }) {
        state = exclusiveOr(state, mask);
        if (const auto found = m_imagesForStates.find(state); found != m_imagesForStates.end())
            return found->second;
    }
    return nullptr;
}

void ORVPlaybackButton::updateImageViewMaybe()
{
    if (!m_imageViewLocked)
        updateImageView();
}

void ORVPlaybackButton::updateImageView()
{
    auto image = imageForState(state());
    if (image && image->renderingMode() == UIImageRenderingMode::Automatic)
        image = image->imageWithRenderingMode(UIImageRenderingMode::AlwaysTemplate);
    m_imageView->setImage(image);
}

// --- Highlight and dimming ---------------------------------------------------------------------------

void ORVPlaybackButton::setHighlighted(bool highlighted)
{
    UIButton::setHighlighted(highlighted);
    updateImageViewMaybe();
    updateState(m_animateHighlight);
    m_animateHighlight = Animated::No;
}

void ORVPlaybackButton::setEnabled(bool enabled)
{
    const KeepAlive keepAlive(*this); // a target that hears of the touch's end may drop the button
    UIButton::setEnabled(enabled);
    updateImageViewMaybe();
    updateState(Animated::No);
}

void ORVPlaybackButton::setSelected(bool selected)
{
    UIButton::setSelected(selected);
    updateImageViewMaybe();
    updateState(Animated::No);
}

bool ORVPlaybackButton::continueTrackingWithTouch(UITouch& touch, UIEvent& event)
{
    m_animateHighlight = Animated::Yes;
    return UIButton::continueTrackingWithTouch(touch, event);
}

void ORVPlaybackButton::endTrackingWithTouch(UITouch& touch, UIEvent& event)
{
    m_animateHighlight = Animated::Yes;
    UIButton::endTrackingWithTouch(touch, event);
}

void ORVPlaybackButton::updateState(Animated animated)
{
    const double alpha = isHighlighted() || !isEnabled() ? paleAlpha : 1;
    const auto apply = [this, alpha] {
        m_progressView->setAlpha(alpha);
        m_imageView->setAlpha(alpha);
    };
    if (animated == Animated::Yes)
        UIView::animate(fadeDuration, 0, UIViewAnimationOptions::AllowUserInteraction, apply);
    else
        apply();
}

// --- Subviews and their places -----------------------------------------------------------------------

void ORVPlaybackButton::setupSubviews()
{
    m_progressView = make<ORVCircularProgressView>(bounds());
    m_progressView->setBackgroundColor(UIColor::clearColor());
    m_progressView->setUserInteractionEnabled(false); // the touches are the button's
    m_progressView->setTranslatesAutoresizingMaskIntoConstraints(false);
    addSubview(m_progressView);

    m_imageView = make<UIImageView>(bounds());
    m_imageView->setTranslatesAutoresizingMaskIntoConstraints(false);
    addSubview(m_imageView);
    setNeedsUpdateConstraints();
}

void ORVPlaybackButton::setContentEdgeInsets(const UIEdgeInsets& insets)
{
    UIButton::setContentEdgeInsets(insets);
    invalidateInternalConstraints();
}

void ORVPlaybackButton::setImageEdgeInsets(const UIEdgeInsets& insets)
{
    UIButton::setImageEdgeInsets(insets);
    invalidateInternalConstraints();
}

void ORVPlaybackButton::invalidateInternalConstraints()
{
    if (const auto constraints = std::exchange(m_internalConstraints, std::nullopt))
        removeConstraints(*constraints);
    setNeedsUpdateConstraints();
}

void ORVPlaybackButton::updateConstraints()
{
    if (!m_internalConstraints) {
        m_internalConstraints = makeInternalConstraints();
        NSLayoutConstraint::activateConstraints(*m_internalConstraints);
    }
    UIButton::updateConstraints();
}

NSLayoutConstraint::List ORVPlaybackButton::makeInternalConstraints()
{
    const UIEdgeInsets& content = contentEdgeInsets();
    const UIEdgeInsets& image = imageEdgeInsets();
    const NSLayoutConstraint::Metrics metrics {
        { "insetLeft", content.left },
        { "insetRight", content.right },
        { "insetTop", content.top },
        { "insetBottom", content.bottom },
    };
    auto constraints = NSLayoutConstraint::constraintsWithVisualFormats(
        { "H:|-insetLeft-[progressView]-insetRight-|", "V:|-insetTop-[progressView]-insetBottom-|" },
        { { "progressView", m_progressView } }, metrics);
    // The whole differences, not their halves: an inset on one side moves the icon by just as much.
    const double right = content.left - content.right + image.left - image.right;
    const double down = content.top - content.bottom + image.top - image.bottom;
    constraints.push_back(m_imageView->centerXAnchor().constraintEqualToAnchor(centerXAnchor(), right));
    constraints.push_back(m_imageView->centerYAnchor().constraintEqualToAnchor(centerYAnchor(), down));
    constraints.push_back(m_imageView->widthAnchor().constraintLessThanOrEqualToAnchor(widthAnchor(), 1));
    constraints.push_back(m_imageView->heightAnchor().constraintLessThanOrEqualToAnchor(heightAnchor(), 1));
    return constraints;
}
