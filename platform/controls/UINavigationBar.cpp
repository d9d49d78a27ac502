#include "platform/controls/UINavigationBar.h"

#include "platform/controls/UILabel.h"

namespace {

constexpr double titleSideMargin = 16;
constexpr double titleFontSize = 17;
constexpr double translucentAlpha = 0.92;

const char titleContext = 0; // its address tells this class's observation from a subclass's

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

void UINavigationBar::setTopItem(std::shared_ptr<UINavigationItem> item)
{
    stopObservingItem();
    m_topItem = std::move(item);
    if (m_topItem)
        m_topItem->addObserver(*this, QStringLiteral("title"), &titleContext);
    updateTitle();
}

void UINavigationBar::stopObservingItem()
{
    if (m_topItem)
        m_topItem->removeObserver(*this, QStringLiteral("title"), &titleContext);
}

void UINavigationBar::observeValueForKeyPath(const NSString& keyPath, NSObject& object, const void* context)
{
    if (context == &titleContext)
        updateTitle();
    else
        UIView::observeValueForKeyPath(keyPath, object, context);
}

void UINavigationBar::updateTitle() { m_titleLabel->setText(m_topItem ? m_topItem->title() : NSString()); }

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
    m_barTintColor = std::move(color);
    updateLooks();
}

void UINavigationBar::setTitleTextAttributes(NSTextAttributes attributes)
{
    m_titleTextAttributes = std::move(attributes);
    updateLooks();
}

void UINavigationBar::setStandardAppearance(std::shared_ptr<UINavigationBarAppearance> appearance)
{
    m_standardAppearance = std::move(appearance);
    updateLooks();
}

void UINavigationBar::setScrollEdgeAppearance(std::shared_ptr<UINavigationBarAppearance> appearance)
{
    m_scrollEdgeAppearance = std::move(appearance);
    updateLooks();
}

void UINavigationBar::updateLooks()
{
    auto background
        = m_barStyle == UIBarStyle::Black ? UIColor::blackColor() : UIColor::systemBackgroundColor();
    if (m_standardAppearance)
        background = m_standardAppearance->backgroundColor();
    if (m_barTintColor)
        background = m_barTintColor;
    const bool shinesThrough = m_translucent && !m_standardAppearance;
    m_background->setBackgroundColor(
        background && shinesThrough ? background->colorWithAlphaComponent(translucentAlpha) : background);

    const NSTextAttributes& attributes
        = m_standardAppearance ? m_standardAppearance->titleTextAttributes() : m_titleTextAttributes;
    const auto font = fontOfAttributes(attributes);
    const auto color = foregroundColorOfAttributes(attributes);
    const auto styleColor = m_barStyle == UIBarStyle::Black ? UIColor::whiteColor() : UIColor::labelColor();
    m_titleLabel->setFont(font ? font : UIFont::systemFontOfSize(titleFontSize, UIFontWeight::Semibold));
    m_titleLabel->setTextColor(color ? color : styleColor);
}

void UINavigationBar::layoutSubviews()
{
    UIView::layoutSubviews();
    const double coveredAbove = safeAreaInsets().top;
    m_background->setFrame(bounds().adjusted(0, -coveredAbove, 0, 0));
    m_titleLabel->setFrame(bounds().adjusted(titleSideMargin, 0, -titleSideMargin, 0));
}
