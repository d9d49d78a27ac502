#include "platform/views/DepartedView.h"

#include "platform/views/UIView.h"

namespace {

std::vector<const DepartedView*> departedViews; // the latest last

CGAffineTransform transformToWindow(const UIView& view)
{
    const CGPoint origin = view.convertPointToView({}, nullptr);
    const CGPoint x = view.convertPointToView({ 1, 0 }, nullptr) - origin;
    const CGPoint y = view.convertPointToView({ 0, 1 }, nullptr) - origin;
    return { x.x(), x.y(), y.x(), y.y(), origin.x(), origin.y() };
}

const UIView& rootOf(const UIView& view)
{
    const UIView* root = &view;
    while (root->superview())
        root = root->superview();
    return *root;
}

} // namespace

DepartedView::DepartedView(UIView& view)
    : m_view(view)
    , m_superview(std::static_pointer_cast<UIView>(
          view.superview() ? view.superview()->weak_from_this().lock() : nullptr))
    , m_toWindow(transformToWindow(view))
{
    departedViews.push_back(this);
}

DepartedView::~DepartedView() { std::erase(departedViews, this); }

const DepartedView* DepartedView::find(const UIView& root)
{
    const auto found = std::find_if(departedViews.rbegin(), departedViews.rend(),
        [&](const DepartedView* departed) { return &departed->m_view == &root; });
    return found == departedViews.rend() ? nullptr : *found;
}

CGPoint DepartedView::pointFromWindow(const CGPoint& point, const UIView* view)
{
    if (!view)
        return point;
    const UIView& root = rootOf(*view);
    const DepartedView* const departed = find(root);
    if (!departed)
        return view->convertPointFromView(point, nullptr);
    return view->convertPointFromView(departed->m_toWindow.inverted().map(point), &root);
}

CGPoint DepartedView::pointToWindow(const CGPoint& point, const UIView* view)
{
    if (!view)
        return point;
    const UIView& root = rootOf(*view);
    const DepartedView* const departed = find(root);
    if (!departed)
        return view->convertPointToView(point, nullptr);
    return departed->m_toWindow.map(view->convertPointToView(point, &root));
}

UIView* DepartedView::superviewOf(const UIView& view)
{
    if (view.superview())
        return view.superview();
    const DepartedView* const departed = find(view);
    return departed ? departed->m_superview.lock().get() : nullptr;
}
