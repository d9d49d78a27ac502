#include "list/ORVRecordTableViewCell.h"

#include "platform/foundation/Messages.h"
#include "platform/graphics/MainScreenScale.h"
#include "theme/UIColor+ORVTheme.h"

namespace {

constexpr double portraitSize = 44; // points; the picture is round
constexpr double playbackButtonSize = 52; // the ring and the insets around it
constexpr double nameFontSize = 16;
constexpr double detailFontSize = 13;
constexpr double sliderFadeDuration = 0.3;

// Around the ring: the button takes touches beyond what is seen of it.
constexpr UIEdgeInsets playbackButtonInsets { 6, 6, 6, 6 };

std::shared_ptr<UILabel> makeLabel(const std::shared_ptr<UIFont>& font, const std::shared_ptr<UIColor>& color)
{
    auto label = make<UILabel>();
    label->setFont(font);
    label->setTextColor(color);
    return label;
}

void addConstrained(UIView& superview, const std::shared_ptr<UIView>& view)
{
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    superview.addSubview(view);
}

} // namespace

// --- The parts ---------------------------------------------------------------------------------------

void ORVRecordTableViewCell::init()
{
    UITableViewCell::init();
    auto selectedBackground = make<UIView>();
    selectedBackground->setBackgroundColor(orv_oruvaneSelectedCellBackgroundColor());
    setSelectedBackgroundView(selectedBackground);
    setPreservesSuperviewLayoutMargins(false);
    setLayoutMargins({});
    makeInfoView();
    makeSlider();
    m_customSeparator = make<UIView>();
    m_customSeparator->setBackgroundColor(UIColor::systemFillColor());
    addConstrained(*contentView(), m_customSeparator);
    constrainInfoView();
    constrainSeparator();
    setPlaybackSliderVisible(false, Animated::No);
}

void ORVRecordTableViewCell::makeInfoView()
{
    m_infoView = make<UIView>();
    addConstrained(*contentView(), m_infoView);

    m_portraitView = make<UIImageView>();
    m_portraitView->setClipsToBounds(true);
    m_portraitView->layer()->setCornerRadius(portraitSize / 2);
    m_authorNameLabel
        = makeLabel(UIFont::systemFontOfSize(nameFontSize, UIFontWeight::Semibold), UIColor::labelColor());
    m_timestampLabel = makeLabel(UIFont::systemFontOfSize(detailFontSize), UIColor::secondaryLabelColor());
    m_locationNameLabel = makeLabel(UIFont::systemFontOfSize(detailFontSize), UIColor::secondaryLabelColor());
    m_playbackButton = make<ORVPlaybackButton>();
    m_playbackButton->setContentEdgeInsets(playbackButtonInsets);
    m_playbackButton->addTarget(
        { strongSelf(this), &ORVRecordTableViewCell::playbackButtonTapped }, UIControlEvents::TouchUpInside);

    addConstrained(*m_infoView, m_portraitView);
    addConstrained(*m_infoView, m_authorNameLabel);
    addConstrained(*m_infoView, m_timestampLabel);
    addConstrained(*m_infoView, m_locationNameLabel);
    addConstrained(*m_infoView, m_playbackButton);
}

void ORVRecordTableViewCell::makeSlider()
{
    m_playbackSlider = make<ORVPlaybackSlider>();
    m_playbackSlider->setTranslatesAutoresizingMaskIntoConstraints(false);
    m_playbackSlider->setDelegate(weakSelf(this));
}

void ORVRecordTableViewCell::constrainInfoView()
{
    const NSLayoutConstraint::Views views { { "info", m_infoView }, { "portrait", m_portraitView },
        { "name", m_authorNameLabel }, { "age", m_timestampLabel }, { "place", m_locationNameLabel },
        { "button", m_playbackButton } };
    NSLayoutConstraint::activateVisualFormats(
        { "H:|-(0)-[info]-(0)-|", "V:|-(0)-[info(height)]",
            "H:|-16-[portrait(portraitSize)]-12-[name]-(>=12)-[age]-8-[button(buttonSize)]-8-|",
            "H:[portrait]-12-[place]-(>=12)-[button]", "V:[portrait(portraitSize)]",
            "V:[button(buttonSize)]" },
        views,
        { { "height", preferredHeight(false) }, { "portraitSize", portraitSize },
            { "buttonSize", playbackButtonSize } });
    NSLayoutConstraint::activateConstraints(
        std::vector { m_portraitView->centerYAnchor().constraintEqualToAnchor(m_infoView->centerYAnchor()),
            m_playbackButton->centerYAnchor().constraintEqualToAnchor(m_infoView->centerYAnchor()),
            m_authorNameLabel->firstBaselineAnchor().constraintEqualToAnchor(m_infoView->topAnchor(), 28),
            m_timestampLabel->firstBaselineAnchor().constraintEqualToAnchor(
                m_authorNameLabel->firstBaselineAnchor()),
            m_locationNameLabel->firstBaselineAnchor().constraintEqualToAnchor(
                m_authorNameLabel->firstBaselineAnchor(), 19) });
    // Where there is no room for both, the name is shortened and not the age.
    constexpr UILayoutPriority yielding = UILayoutPriorityDefaultHigh - 1;
    m_authorNameLabel->setContentCompressionResistancePriority(yielding, UILayoutConstraintAxis::Horizontal);
}

void ORVRecordTableViewCell::constrainSeparator()
{
    NSLayoutConstraint::activateVisualFormats({ "V:[line(hairline)]-(0)-|", "H:[line]-(0)-|" },
        { { "line", m_customSeparator } }, { { "hairline", 1 / MainScreenScale::get() } });
    m_customSeparator->leftAnchor().constraintEqualToAnchor(m_authorNameLabel->leftAnchor())->setActive(true);
}

// --- The slider --------------------------------------------------------------------------------------

void ORVRecordTableViewCell::setPlaybackSliderVisible(bool visible, Animated animated)
{
    if (visible) {
        addPlaybackSliderIfNecessary();
        renderWaveformAtItsPlace(*this);
    }
    const auto slider = m_playbackSlider;
    const auto fade = [slider, visible] { slider->setAlpha(visible ? 1 : 0); };
    if (animated == Animated::No) {
        m_playbackSlider->layer()->removeAnimationForKey(QStringLiteral("opacity")); // of a fade under way
        fade();
        if (!visible)
            removeFadedPlaybackSlider();
        return;
    }
    animate(sliderFadeDuration, fade, [weak = weakSelf(this), visible](bool finished) {
        const auto self = weak.lock();
        if (self && finished && !visible)
            self->removeFadedPlaybackSlider();
    });
}

// The picture has the width that the slider had when it was asked for, and each half is aligned to its own
// end: a wider slider would show a gap between them.
void ORVRecordTableViewCell::layoutSubviews()
{
    UITableViewCell::layoutSubviews();
    if (m_playbackSlider->superview() && !waveformFits())
        renderWaveformAtItsPlace(*contentView());
}

bool ORVRecordTableViewCell::waveformFits() const
{
    return m_waveformWidth == bounds().width() && m_waveformScale == MainScreenScale::get();
}

// Lays out what is around the slider first: it is asked for a picture of the size that it has then.
void ORVRecordTableViewCell::renderWaveformAtItsPlace(UIView& around)
{
    m_waveformWidth = bounds().width(); // which is the slider's
    m_waveformScale = MainScreenScale::get();
    around.layoutIfNeeded();
    m_playbackSlider->renderWafeformIfNecessaryWithCompletion(nullptr);
}

void ORVRecordTableViewCell::addPlaybackSliderIfNecessary()
{
    if (m_playbackSlider->superview())
        return;
    contentView()->addSubview(m_playbackSlider);
    if (m_sliderConstraints.empty())
        m_sliderConstraints = makeSliderConstraints();
    NSLayoutConstraint::activateConstraints(m_sliderConstraints);
}

void ORVRecordTableViewCell::removePlaybackSliderIfNecessary()
{
    m_playbackSlider->removeFromSuperview();
    // The slider itself holds the constraint of its height: left active, there would be one more of it after
    // each showing.
    NSLayoutConstraint::deactivateConstraints(m_sliderConstraints);
}

NSLayoutConstraint::List ORVRecordTableViewCell::makeSliderConstraints() const
{
    return NSLayoutConstraint::constraintsWithVisualFormats(
        { "H:|-(0)-[slider]-(0)-|", "V:[infoView]-(0)-[slider(44)]" },
        { { "slider", m_playbackSlider }, { "infoView", m_infoView } });
}

// Hiding the slider cancels a drag of its thumb, and the end of that drag may show the slider again.
void ORVRecordTableViewCell::removeFadedPlaybackSlider()
{
    if (m_playbackSlider->alpha() == 0)
        removePlaybackSliderIfNecessary();
}

// --- Requests ----------------------------------------------------------------------------------------

void ORVRecordTableViewCell::playbackButtonTapped(ORVPlaybackButton& sender)
{
    const KeepAlive keepAlive(*this);
    const auto delegate = m_delegate.lock();
    if (!delegate)
        return;
    if (sender.isPlaying())
        delegate->recordTableViewCellRequestsPauseInterim(*this, false);
    else
        delegate->recordTableViewCellRequestsPlayback(*this);
}

void ORVRecordTableViewCell::playbackSliderDidBeginDraggingThumb(ORVPlaybackSlider&)
{
    m_wasPlayingBeforeSeeking = m_playbackButton->isPlaying();
    sendMessage(*this, m_delegate, &ORVRecordTableViewCellDelegate::recordTableViewCellRequestsPauseInterim,
        *this, true);
}

// The sound does not follow the finger, only the ring does.
void ORVRecordTableViewCell::playbackSliderDidDragThumbToPosition(ORVPlaybackSlider&, double position)
{
    m_playbackButton->progressView()->setProgress(position, Animated::No);
}

void ORVRecordTableViewCell::playbackSliderDidEndDraggingThumbWithNewPosition(
    ORVPlaybackSlider&, double position)
{
    const KeepAlive keepAlive(*this);
    const auto delegate = m_delegate.lock();
    if (!delegate)
        return;
    delegate->recordTableViewCellRequestsSeekPlaybackToPositionFraction(*this, position);
    if (m_wasPlayingBeforeSeeking)
        delegate->recordTableViewCellRequestsPlayback(*this);
}

void ORVRecordTableViewCell::playbackSliderDidTapOnPosition(ORVPlaybackSlider&, double position)
{
    m_playbackButton->progressView()->setProgress(position);
    sendMessage(*this, m_delegate,
        &ORVRecordTableViewCellDelegate::recordTableViewCellRequestsSeekPlaybackToPositionFraction, *this,
        position);
}
