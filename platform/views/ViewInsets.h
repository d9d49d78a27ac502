// What reaches into a view from outside, the safe area, and the margins on top of it; and who follows them.
//
// Only a view whose insets somebody follows has one of these: it has been asked for a guide, or wants to be
// told. What it knows is brought up to date whenever the view or one around it gets another place or size.
#pragma once

#include "platform/graphics/Geometry.h"

#include <memory>

class UILayoutGuide;
class UIView;

class ViewInsets {
public:
    explicit ViewInsets(UIView& view);
    ~ViewInsets();
    ViewInsets(const ViewInsets&) = delete;
    ViewInsets& operator=(const ViewInsets&) = delete;

    // How far notches and home indicators reach into a view. No inset is negative or larger than the view,
    // and a view that lies wholly beyond an edge of the screen has none on that side.
    static UIEdgeInsets safeAreaOf(const UIView& view);
    // The distances of content from the edges, the safe area included.
    static UIEdgeInsets marginsOf(const UIView& view, const UIEdgeInsets& ownMargins);

    UILayoutGuide& safeAreaGuide();
    UILayoutGuide& marginsGuide();
    // Brings the guides up to date, and tells the view where the safe area is another one.
    void refresh();
    // The same for all views that somebody follows, and for those of them that are in a view that has moved.
    static void refreshAll();
    static void refreshInside(const UIView& moved);

private:
    std::shared_ptr<UILayoutGuide> makeGuide(const UIEdgeInsets& insets, const char* identifier);

    UIView& m_view; // owns this
    UIEdgeInsets m_safeArea; // when the view was last told
    std::shared_ptr<UILayoutGuide> m_safeAreaGuide; // null until asked for
    std::shared_ptr<UILayoutGuide> m_marginsGuide; // null until asked for
};
