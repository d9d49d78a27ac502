// The one kind of row in the records list: portrait, author, age and place of a record, the button that plays
// it, and, while the row is selected, the slider with its waveform.
//
// The cell holds no playback state of its own: it turns taps and drags into requests to its delegate, and is
// brought up to date by the configurator.
#pragma once

#include "list/ORVRecordTableViewCellDelegate.h"
#include "platform/controls/UIImageView.h"
#include "platform/controls/UILabel.h"
#include "platform/tables/UITableViewCell.h"
#include "playback/ORVPlaybackButton.h"
#include "playback/ORVPlaybackSlider.h"

class ORVRecordTableViewCell final : public UITableViewCell, public ORVPlaybackSliderDelegate {
public:
    static inline const NSString identifier = QStringLiteral("ORVRecordTableViewCell");
    // preferredHeightWhenSelected: — points; they differ by the slider's height.
    static constexpr double preferredHeight(bool whenSelected) { return whenSelected ? 108 : 64; }

    using UITableViewCell::UITableViewCell;

    void setDelegate(std::weak_ptr<ORVRecordTableViewCellDelegate> delegate)
    {
        m_delegate = std::move(delegate);
    }
    std::shared_ptr<ORVRecordTableViewCellDelegate> delegate() const { return m_delegate.lock(); }

    // Everything but the slider, which lies directly below it.
    const std::shared_ptr<UIView>& infoView() const { return m_infoView; }
    const std::shared_ptr<UIView>& customSeparator() const { return m_customSeparator; }
    const std::shared_ptr<UIImageView>& portraitView() const { return m_portraitView; }
    const std::shared_ptr<UILabel>& authorNameLabel() const { return m_authorNameLabel; }
    const std::shared_ptr<UILabel>& timestampLabel() const { return m_timestampLabel; }
    const std::shared_ptr<UILabel>& locationNameLabel() const { return m_locationNameLabel; }
    const std::shared_ptr<ORVPlaybackButton>& playbackButton() const { return m_playbackButton; }
    // Outside of the view tree while it is not shown.
    const std::shared_ptr<ORVPlaybackSlider>& playbackSlider() const { return m_playbackSlider; }

    // setPlaybackSliderVisible:animated: — each showing renders the waveform anew, and so does a change of
    // the width or of the screen's scale while it shows. Hiding takes the slider out when its fade has
    // finished.
    void setPlaybackSliderVisible(bool visible, Animated animated);

    void layoutSubviews() override;

    void playbackButtonTapped(ORVPlaybackButton& sender);
    void playbackSliderDidBeginDraggingThumb(ORVPlaybackSlider&) override;
    void playbackSliderDidDragThumbToPosition(ORVPlaybackSlider&, double position) override;
    void playbackSliderDidEndDraggingThumbWithNewPosition(ORVPlaybackSlider&, double position) override;
    void playbackSliderDidTapOnPosition(ORVPlaybackSlider&, double position) override;

protected:
    void init() override;

private:
    void makeInfoView();
    void makeSlider();
    void constrainInfoView();
    void constrainSeparator();
    void addPlaybackSliderIfNecessary();
    void removePlaybackSliderIfNecessary();
    void removeFadedPlaybackSlider();
    NSLayoutConstraint::List makeSliderConstraints() const;
    void renderWaveformAtItsPlace(UIView& around);
    bool waveformFits() const;

    std::weak_ptr<ORVRecordTableViewCellDelegate> m_delegate;
    std::shared_ptr<UIView> m_infoView;
    std::shared_ptr<UIView> m_customSeparator;
    std::shared_ptr<UIImageView> m_portraitView;
    std::shared_ptr<UILabel> m_authorNameLabel;
    std::shared_ptr<UILabel> m_timestampLabel;
    std::shared_ptr<UILabel> m_locationNameLabel;
    std::shared_ptr<ORVPlaybackButton> m_playbackButton;
    std::shared_ptr<ORVPlaybackSlider> m_playbackSlider;
    NSLayoutConstraint::List m_sliderConstraints; // active while the slider is in the view tree
    double m_waveformWidth = 0; // points and scale that the waveform was last asked for with
    double m_waveformScale = 0;
    bool m_wasPlayingBeforeSeeking = false;
};
