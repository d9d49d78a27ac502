// The tint of a view: what it was given, what it inherits, and what it has been told of that.
//
// A view without a colour of its own has that of its superview, one whose mode is automatic has its
// superview's mode; above the root lie the system's blue and the normal mode. A colour in the dimmed mode is
// shown as its grey.
//
// Each view keeps which tint it was last told of. So whatever is changed from inside the messages, nobody
// misses a change, and at the end everybody has been told of the tint that it has.
#pragma once

#include "platform/views/UIViewTypes.h"

#include <memory>

class UIColor;
class UIView;

class ViewTint {
public:
    explicit ViewTint(UIView& view)
        : m_view(view)
    {
    }
    ViewTint(const ViewTint&) = delete;
    ViewTint& operator=(const ViewTint&) = delete;

    // As it is shown, dimmed where the mode says so.
    std::shared_ptr<UIColor> color() const;
    // The mode in effect, never automatic.
    UIViewTintAdjustmentMode mode() const;
    // These tell everybody in the view whose tint changes. A running record of model changes can take them
    // back.
    void setColor(std::shared_ptr<UIColor> color); // null inherits
    void setMode(UIViewTintAdjustmentMode mode);

    // After a move of the view: tells it and those in it whose tint is another one than they were told of,
    // superviews first. Nobody looks below a view for which nothing has changed, unless everybody in
    // there may have missed something.
    enum class Reach { WhereItChanged, Everybody };
    void tellChanges(Reach reach);

private:
    struct Tint {
        std::shared_ptr<UIColor> color; // null is the system's blue
        UIViewTintAdjustmentMode mode = UIViewTintAdjustmentMode::Normal;

        bool isSame(const Tint& other) const;
    };

    const ViewTint* superviewTint() const;
    std::shared_ptr<UIColor> undimmedColor() const;
    Tint inherited() const;
    void tellView();
    void tellSubviews(Reach reach);

    UIView& m_view; // owns this
    std::shared_ptr<UIColor> m_color; // null inherits
    UIViewTintAdjustmentMode m_mode = UIViewTintAdjustmentMode::Automatic;
    Tint m_told;
    Tint m_toldAround; // the inherited tint then, for views that follow it though they have one of their own
};
