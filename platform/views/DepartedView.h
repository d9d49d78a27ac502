// A view that has just left its window, while those are told whose fingers were on it.
//
// They hear of it when the view is out of the tree, so that whatever they do to the tree is done after the
// removal and stays. Until they have been told, places of touches are still those in the views that left,
// as if they lay where they did, and the responder chain leads on to where the view was.
#pragma once

#include "platform/graphics/Geometry.h"

#include <memory>

class UIResponder;
class UIView;

class DepartedView {
public:
    // Before the view leaves.
    explicit DepartedView(UIView& view);
    ~DepartedView();
    DepartedView(const DepartedView&) = delete;
    DepartedView& operator=(const DepartedView&) = delete;

    // From the window's coordinates into those of a view that is in it or has just left it, and back. Nil
    // stands for the window.
    static CGPoint pointFromWindow(const CGPoint& point, const UIView* view);
    static CGPoint pointToWindow(const CGPoint& point, const UIView* view);
    // The superview, or the one that the view has just left; may be null.
    static UIView* superviewOf(const UIView& view);

private:
    static const DepartedView* find(const UIView& root);

    const UIView& m_view;
    const std::weak_ptr<UIView> m_superview;
    const CGAffineTransform m_toWindow;
};
