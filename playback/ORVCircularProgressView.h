// A ring that fills with progress, or that spins while there is nothing to measure yet.
//
// A faint full circle lies under an arc in the tint colour. Only layers move: the view draws nothing, sets no
// timer, and while it spins nothing but the arc's transform changes. Observers of "progress" are told by the
// setter, also when the value stays the same. Main thread only.
#pragma once

#include "platform/controls/UIControl.h"
#include "playback/ORVProgressShapeLayer.h"

// Which way the arc grows from the top. Any other value leaves the arc as it was drawn last.
enum class ORVCircularProgressDirection : unsigned { Clockwise = 0, Counterclockwise = 1 };
inline constexpr auto ORVCircularProgressDirectionClockwise = ORVCircularProgressDirection::Clockwise;
inline constexpr auto ORVCircularProgressDirectionCounterclockwise
    = ORVCircularProgressDirection::Counterclockwise;

class ORVCircularProgressView final : public UIControl {
public:
    using UIControl::UIControl;

    // Of the full circle; a pale grey by default.
    const std::shared_ptr<UIColor>& trackTintColor() const { return m_trackTintColor; }
    void setTrackTintColor(std::shared_ptr<UIColor> color);
    // Of circle and arc, in points; both stay inside the bounds. Where it leaves no room for a circle there
    // is none. A width that is not finite is a programming error and changes nothing.
    double trackWidth() const { return m_trackWidth; }
    void setTrackWidth(double width);
    ORVCircularProgressDirection direction() const { return m_direction; }
    void setDirection(ORVCircularProgressDirection direction);

    // A fraction of the circle, kept as it is given: what lies outside of 0 to 1 is drawn as the nearer end.
    // While the ring spins it is kept and not drawn.
    double progress() const { return m_progress; }
    void setProgress(double progress) { setProgress(progress, Animated::Yes); }
    void setProgress(double progress, Animated animated);
    // Whether a short arc spins for ever instead.
    bool isIndeterminate() const { return m_indeterminate; }
    void setIndeterminate(bool indeterminate);

    // Makes both layers, and makes them anew when it is called again.
    void setupSublayers();

    void tintColorDidChange() override;
    void layoutSubviews() override;

protected:
    void init() override;
    bool automaticallyNotifiesObserversForKey(const NSString& key) const override;

private:
    void setupDefaults();
    std::shared_ptr<ORVProgressShapeLayer> makeSublayer(const std::shared_ptr<UIColor>& strokeColor) const;
    void updateSublayers();
    void updateProgress(Animated animated);
    void addIndeterminateAnimation();
    void removeIndeterminateAnimation();

    std::shared_ptr<ORVProgressShapeLayer> m_trackLayer;
    std::shared_ptr<ORVProgressShapeLayer> m_progressLayer;
    std::shared_ptr<UIColor> m_trackTintColor;
    double m_trackWidth = 2;
    double m_progress = 0;
    ORVCircularProgressDirection m_direction = ORVCircularProgressDirectionClockwise;
    bool m_indeterminate = false;
};
