// The round button that plays and pauses: an icon in the middle of a ring that shows the progress.
//
// Which icon it is follows isPlaying(), which is a control state of its own. The icon shrinks away and comes
// back as the other one. The button keeps its images itself, and pales as a whole while it is pressed or
// disabled. A tap does not change its look: the targets of the tap do. Observers of "playing" are
// told by the setter, also when the value stays the same. Main thread only.
#pragma once

#include "platform/controls/UIButton.h"
#include "platform/layout/NSLayoutConstraint.h"
#include "playback/ORVCircularProgressView.h"

#include <optional>

class ORVPlaybackButton final : public UIButton {
public:
    ORVPlaybackButton() = default;
    // initWithFrame:
    explicit ORVPlaybackButton(const CGRect& frame)
        : UIButton(frame)
    {
    }

    bool isPlaying() const { return m_playing; }
    void setPlaying(bool playing) { setPlaying(playing, Animated::Yes); }
    // The new icon appears when the old one is smallest; only a change is animated.
    void setPlaying(bool playing, Animated animated);
    // With UIControlState::Application while playing.
    UIControlState state() const override;

    // Fills the button inside its content insets.
    const std::shared_ptr<ORVCircularProgressView>& progressView() const { return m_progressView; }
    // In the middle; asymmetric insets move it by their whole difference.
    std::shared_ptr<UIImageView> imageView() override { return m_imageView; }

    void setImage(std::shared_ptr<UIImage> image, UIControlState state) override;
    // The image of the nearest state that has one: without the press, then without being disabled, then
    // without being selected, then of the other of play and pause, each on top of the ones before.
    std::shared_ptr<UIImage> imageForState(UIControlState state) const override;
    bool adjustsImageWhenHighlighted() const override { return false; }
    bool adjustsImageWhenDisabled() const override { return false; }
    void setContentEdgeInsets(const UIEdgeInsets& insets) override;
    void setImageEdgeInsets(const UIEdgeInsets& insets) override;

    // The button fades when a finger highlights it, and changes at once when code does.
    void setHighlighted(bool highlighted) override;
    void setEnabled(bool enabled) override;
    void setSelected(bool selected) override;
    bool continueTrackingWithTouch(UITouch& touch, UIEvent& event) override;
    void endTrackingWithTouch(UITouch& touch, UIEvent& event) override;

    bool requiresConstraintBasedLayout() const override { return true; }
    void updateConstraints() override;
    NSString accessibilityLabel() const override;

protected:
    void init() override;
    bool automaticallyNotifiesObserversForKey(const NSString& key) const override;

private:
    void setupSubviews();
    NSLayoutConstraint::List makeInternalConstraints();
    void invalidateInternalConstraints();
    Action unlockAction();
    void shrinkAndGrowImageView();
    void lockImageView() { m_imageViewLocked = true; }
    void unlockImageView();
    void updateImageViewMaybe();
    void updateImageView();
    void updateState(Animated animated);

    std::shared_ptr<ORVCircularProgressView> m_progressView;
    std::shared_ptr<UIImageView> m_imageView;
    std::optional<NSLayoutConstraint::List> m_internalConstraints; // none: to be made
    std::map<UIControlState, std::shared_ptr<UIImage>> m_imagesForStates;
    bool m_playing = false;
    bool m_imageViewLocked = false; // a switch is under way, and the old icon still shows
    Animated m_animateHighlight = Animated::No; // for the next change of the highlight
};
