// A scene whose constraint conflicts are caught, with the words that layout tests use over and over.
#pragma once

#include "platform/layout/NSLayoutConstraint.h"
#include "platform/layout/UILayoutGuide.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/SceneFixture.h"

using enum NSLayoutAttribute;

// A view whose content has a size of its own.
class ContentView : public UIView {
public:
    using UIView::UIView;

    void setContentSize(const CGSize& size)
    {
        m_contentSize = size;
        invalidateIntrinsicContentSize();
    }
    CGSize intrinsicContentSize() const override
    {
        ++asked;
        return m_contentSize;
    }

    mutable int asked = 0;

private:
    CGSize m_contentSize { UIViewNoIntrinsicMetric, UIViewNoIntrinsicMetric };
};

class LayoutFixture : public SceneFixture {
protected:
    using Conflicts = std::vector<NSLayoutConstraint::Conflict>;

    // A view inside another one whose frame constraints are to find.
    template <typename View = UIView> static std::shared_ptr<View> addTo(UIView& container)
    {
        auto view = make<View>();
        view->setTranslatesAutoresizingMaskIntoConstraints(false);
        container.addSubview(view);
        return view;
    }
    static std::shared_ptr<NSLayoutConstraint> activate(std::shared_ptr<NSLayoutConstraint> constraint)
    {
        constraint->setActive(true);
        return constraint;
    }
    static std::shared_ptr<NSLayoutConstraint> activate(
        std::shared_ptr<NSLayoutConstraint> constraint, UILayoutPriority priority)
    {
        constraint->setPriority(priority);
        return activate(std::move(constraint));
    }
    // All four numbers at once, from the container's top left corner.
    static void place(UIView& view, UIView& container, const CGRect& frame)
    {
        activate(view.leftAnchor().constraintEqualToAnchor(container.leftAnchor(), frame.x()));
        activate(view.topAnchor().constraintEqualToAnchor(container.topAnchor(), frame.y()));
        activate(view.widthAnchor().constraintEqualToConstant(frame.width()));
        activate(view.heightAnchor().constraintEqualToConstant(frame.height()));
    }

    std::shared_ptr<UIView> container = addView({ 0, 0, 300, 200 });
    Conflicts conflicts;
    NSLayoutConstraint::ConflictReplacement recorder { [this](const NSLayoutConstraint::Conflict& conflict) {
        conflicts.push_back(conflict);
    } };
};
