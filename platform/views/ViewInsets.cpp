#include "platform/views/ViewInsets.h"

#include "platform/foundation/Messages.h"
#include "platform/layout/UILayoutGuide.h"
#include "platform/views/UIWindow.h"

#include <algorithm>

namespace {

// Those that exist; few, so that a view which moves has little to look through.
std::vector<ViewInsets*>& followed()
{
    static std::vector<ViewInsets*> insets;
    return insets;
}

// The screen and its safe part, as seen from the top left corner of a view.
struct Surroundings {
    CGRect screen;
    CGRect safe;
};

// A rectangle as seen from the corner of the superview, seen from that of the view.
CGRect seenFrom(const UIView& view, const CGRect& rect)
{
    const CGPoint origin = view.superview()->bounds().topLeft();
    if (view.transform().isIdentity()) // exact, however far the superview is scrolled
        return rect.translated(origin - view.frame().topLeft());
    const CGRect inView = view.convertRectFromView(rect.translated(origin), view.superview());
    return inView.translated(-view.bounds().topLeft());
}

Surroundings surroundingsOf(const UIView& view)
{
    if (&view == view.window()) {
        const CGRect screen(CGPoint(), view.bounds().size());
        return { screen, UIEdgeInsetsInsetRect(screen, UIScreen::mainScreen()->safeAreaInsets()) };
    }
    const Surroundings outer = surroundingsOf(*view.superview());
    return { seenFrom(view, outer.screen), seenFrom(view, outer.safe) };
}

UIEdgeInsets sum(const UIEdgeInsets& first, const UIEdgeInsets& second)
{
    return { first.top + second.top, first.left + second.left, first.bottom + second.bottom,
        first.right + second.right };
}

} // namespace

UIEdgeInsets ViewInsets::safeAreaOf(const UIView& view)
{
    if (!view.window())
        return {};
    const auto [screen, safe] = surroundingsOf(view);
    const auto [width, height] = std::pair(view.bounds().width(), view.bounds().height());
    // `beyond` is how far the edge of the screen reaches into the view: all through one that lies beyond it.
    const auto inset = [](double reach, double beyond, double length) {
        return length <= 0 || beyond >= length ? 0 : std::clamp(reach, 0.0, length);
    };
    return { inset(safe.top(), screen.top(), height), inset(safe.left(), screen.left(), width),
        inset(height - safe.bottom(), height - screen.bottom(), height),
        inset(width - safe.right(), width - screen.right(), width) };
}

UIEdgeInsets ViewInsets::marginsOf(const UIView& view, const UIEdgeInsets& ownMargins)
{
    const UIEdgeInsets own = sum(ownMargins, safeAreaOf(view));
    if (!view.preservesSuperviewLayoutMargins() || !view.superview())
        return own;
    const CGRect around = view.superview()->bounds();
    const CGRect frame = view.frame();
    const UIEdgeInsets outer = view.superview()->layoutMargins();
    return { std::max(own.top, outer.top - (frame.top() - around.top())),
        std::max(own.left, outer.left - (frame.left() - around.left())),
        std::max(own.bottom, outer.bottom - (around.bottom() - frame.bottom())),
        std::max(own.right, outer.right - (around.right() - frame.right())) };
}

// --- Following ---------------------------------------------------------------------------------------

ViewInsets::ViewInsets(UIView& view)
    : m_view(view)
    , m_safeArea(safeAreaOf(view))
{
    followed().push_back(this);
}

ViewInsets::~ViewInsets() { std::erase(followed(), this); }

std::shared_ptr<UILayoutGuide> ViewInsets::makeGuide(const UIEdgeInsets& insets, const char* identifier)
{
    auto guide = make<UILayoutGuide>(insets);
    guide->setIdentifier(QString::fromLatin1(identifier));
    m_view.addLayoutGuide(guide);
    return guide;
}

UILayoutGuide& ViewInsets::safeAreaGuide()
{
    if (!m_safeAreaGuide)
        m_safeAreaGuide = makeGuide(safeAreaOf(m_view), "safeAreaLayoutGuide");
    return *m_safeAreaGuide;
}

UILayoutGuide& ViewInsets::marginsGuide()
{
    if (!m_marginsGuide)
        m_marginsGuide = makeGuide(m_view.layoutMargins(), "layoutMarginsGuide");
    return *m_marginsGuide;
}

void ViewInsets::refresh()
{
    const KeepAlive keepAlive(m_view);
    const UIEdgeInsets safeArea = safeAreaOf(m_view);
    if (m_safeAreaGuide)
        m_safeAreaGuide->setInsets(safeArea);
    if (m_marginsGuide)
        m_marginsGuide->setInsets(m_view.layoutMargins());
    if (std::exchange(m_safeArea, safeArea) != safeArea)
        m_view.safeAreaInsetsDidChange();
}

void ViewInsets::refreshAll()
{
    std::vector<std::weak_ptr<UIView>> views;
    for (const ViewInsets* insets : followed())
        views.push_back(std::static_pointer_cast<UIView>(insets->m_view.weak_from_this().lock()));
    for (const auto& view : views)
        if (const auto living = view.lock())
            living->refreshInsets();
}

void ViewInsets::refreshInside(const UIView& moved)
{
    if (followed().empty())
        return;
    std::vector<std::weak_ptr<UIView>> views; // told one by one, of which each may do anything
    for (const ViewInsets* insets : followed())
        if (moved.containsView(insets->m_view))
            views.push_back(std::static_pointer_cast<UIView>(insets->m_view.weak_from_this().lock()));
    for (const auto& view : views)
        if (const auto living = view.lock())
            living->refreshInsets();
}
