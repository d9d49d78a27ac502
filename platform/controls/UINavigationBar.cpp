#include "platform/controls/UINavigationBar.h"

#include "platform/controls/UIBarButtonItemLayout.h"
#include "platform/controls/UILabel.h"

namespace {

constexpr double titleMargin = 16; // to the bar's ends
constexpr double titleFontSize = 17;
constexpr double translucentAlpha = 0.92;

const char itemContext = 0; // its address tells this class's observation from a subclass's

const NSString observedKeys[] = { QStringLiteral("title"), QStringLiteral("leftBarButtonItems"),
    QStringLiteral("rightBarButtonItems") };

} // namespace

UINavigationBar::~UINavigationBar() { stopObservingItem(); }

void UINavigationBar::init()
{
    UIView::init();
    m_background = make<UIView>();
    m_background->setUserInteractionEnabled(false);
    addSubview(m_background);
    m_titleLabel = make<UILabel>();
    m_titleLabel->setTextAlignment(NSTextAlignment::Center);
    addSubview(m_titleLabel);
    updateLooks();
}

// --- The item ----------------------------------------------------------------------------------------

void UINavigationBar::setTopItem(std::shared_ptr<UINavigationItem> item)
{
    stopObservingItem();
    m_topItem = std::move(item);
    if (m_topItem)
        for (const NSString& key : observedKeys)
            m_topItem->addObserver(*this, key, &itemContext);
    updateContent();
}

void UINavigationBar::stopObservingItem()
{
    if (m_topItem)
        for (const NSString& key : observedKeys)
            m_topItem->removeObserver(*this, key, &itemContext);
}

void UINavigationBar::observeValueForKeyPath(const NSString& keyPath, NSObject& object, const void* context)
{
    if (context == &itemContext)
        updateContent();
    else
        UIView::observeValueForKeyPath(keyPath, object, context);
}

void UINavigationBar::updateContent()
{
    UIBarButtonItems wanted;
    if (m_topItem) {
        wanted = m_topItem->leftBarButtonItems();
        const UIBarButtonItems& right = m_topItem->rightBarButtonItems();
        wanted.insert(wanted.end(), right.begin(), right.end());
    }
    UIBarButtonItemLayout::show(*this, m_shownItems, wanted);
    m_titleLabel->setText(m_topItem ? m_topItem->title() : NSString());
    setNeedsLayout();
}

// --- Looks -------------------------------------------------------------------------------------------

void UINavigationBar::setTranslucent(bool translucent)
{
    m_translucent = translucent;
    updateLooks();
}

void UINavigationBar::setBarStyle(UIBarStyle style)
{
    m_barStyle = style;
    updateLooks();
}

void UINavigationBar::setBarTintColor(std::shared_ptr<UIColor> color)
{
    appearanceNotes().noteSetting(&UINavigationBar::setBarTintColor);
    m_barTintColor = std::move(color);
    updateLooks();
}

void UINavigationBar::setTitleTextAttributes(NSTextAttributes attributes)
{
    appearanceNotes().noteSetting(&UINavigationBar::setTitleTextAttributes);
    m_titleTextAttributes = std::move(attributes);
    updateLooks();
}

void UINavigationBar::setStandardAppearance(const std::shared_ptr<UINavigationBarAppearance>& appearance)
{
    appearanceNotes().noteSetting(&UINavigationBar::setStandardAppearance);
    m_standardAppearance = appearance ? appearance->copy() : nullptr;
    updateLooks();
}

void UINavigationBar::setScrollEdgeAppearance(const std::shared_ptr<UINavigationBarAppearance>& appearance)
{
    appearanceNotes().noteSetting(&UINavigationBar::setScrollEdgeAppearance);
    m_scrollEdgeAppearance = appearance ? appearance->copy() : nullptr;
    updateLooks();
}

void UINavigationBar::setContentUnderneath(bool underneath)
{
    m_contentUnderneath = underneath;
    updateLooks();
}

const UINavigationBarAppearance* UINavigationBar::appearance() const
{
    const bool atEdge = !m_contentUnderneath && m_scrollEdgeAppearance;
    return atEdge ? m_scrollEdgeAppearance.get() : m_standardAppearance.get();
}

void UINavigationBar::updateLooks()
{
    const bool isBlack = m_barStyle == UIBarStyle::Black;
    const UINavigationBarAppearance* const looks = appearance();

    auto background = isBlack ? UIColor::blackColor() : UIColor::systemBackgroundColor();
    if (m_barTintColor)
        background = m_barTintColor;
    else if (looks)
        background = looks->backgroundColor();
    if (background && m_translucent && !looks)
        background = background->colorWithAlphaComponent(translucentAlpha);
    m_background->setBackgroundColor(background);

    const NSTextAttributes& attributes = looks ? looks->titleTextAttributes() : m_titleTextAttributes;
    const auto font = fontOfAttributes(attributes);
    const auto color = foregroundColorOfAttributes(attributes);
    m_titleLabel->setFont(font ? font : UIFont::systemFontOfSize(titleFontSize, UIFontWeight::Semibold));
    m_titleLabel->setTextColor(color ? color : isBlack ? UIColor::whiteColor() : UIColor::labelColor());
    setNeedsLayout();
}

// --- Layout ------------------------------------------------------------------------------------------

void UINavigationBar::layoutSubviews()
{
    UIView::layoutSubviews();
    m_background->setFrame(bounds().adjusted(0, -heightCoveredAbove(), 0, 0));

    const UIEdgeInsets safeArea = safeAreaInsets();
    const CGRect area = bounds().adjusted(safeArea.left, 0, -safeArea.right, 0);
    CGRect itemsArea
        = area.adjusted(UIBarButtonItemLayout::sideMargin, 0, -UIBarButtonItemLayout::sideMargin, 0);
    double titleLeft = area.left() + titleMargin;
    double titleRight = area.right() - titleMargin;

    UIBarButtonItems left = m_topItem ? m_topItem->leftBarButtonItems() : UIBarButtonItems();
    std::erase(left, nullptr);
    if (!left.empty()) {
        const double width = std::min(UIBarButtonItemLayout::preferredWidth(left), itemsArea.width());
        UIBarButtonItemLayout::place(left, { itemsArea.left(), area.top(), width, area.height() });
        titleLeft = itemsArea.left() + width + UIBarButtonItemLayout::spacing;
        itemsArea.setLeft(std::min(titleLeft, itemsArea.right()));
    }
    UIBarButtonItems right = m_topItem ? m_topItem->rightBarButtonItems() : UIBarButtonItems();
    std::erase(right, nullptr);
    std::reverse(right.begin(), right.end());
    if (!right.empty()) {
        const double width = std::min(UIBarButtonItemLayout::preferredWidth(right), itemsArea.width());
        const double begin = itemsArea.right() - width;
        UIBarButtonItemLayout::place(right, { begin, area.top(), width, area.height() });
        titleRight = begin - UIBarButtonItemLayout::spacing;
    }
    placeTitle(titleLeft, titleRight);
}

// Up to the superview's top edge, where only the unsafe area is in between.
double UINavigationBar::heightCoveredAbove() const
{
    if (!superview())
        return 0;
    const double distance = frame().top() - superview()->bounds().top();
    return distance <= superview()->safeAreaInsets().top ? std::max(distance, 0.0) : 0;
}

// In the middle of the bar, as far as the room between the items allows.
void UINavigationBar::placeTitle(double left, double right)
{
    const double room = std::max(right - left, 0.0);
    const double width = std::min(m_titleLabel->sizeThatFits(bounds().size()).width(), room);
    const double centred = bounds().center().x() - width / 2;
    const double begin = std::max(std::min(centred, right - width), left);
    m_titleLabel->setFrame({ begin, bounds().top(), width, bounds().height() });
}
