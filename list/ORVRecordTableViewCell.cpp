#include "list/ORVRecordTableViewCell.h"

#include "platform/graphics/MainScreenScale.h"
#include "theme/UIColor+ORVTheme.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double sideMargin = 16;
constexpr double gap = 12;
constexpr double portraitSize = 44;
constexpr double iconSize = 24;
constexpr double nameFontSize = 16;
constexpr double detailFontSize = 13;
constexpr double firstLineTop = 12;
constexpr double firstLineHeight = 21;
constexpr double secondLineTop = 34;
constexpr double secondLineHeight = 17;

std::shared_ptr<UILabel> makeLabel(const std::shared_ptr<UIFont>& font, const std::shared_ptr<UIColor>& color)
{
    auto label = make<UILabel>();
    label->setFont(font);
    label->setTextColor(color);
    return label;
}

double widthOf(const UILabel& label) { return std::ceil(label.intrinsicContentSize().width()); }

// One line of the row: a short text at the end, the rest of the width for the text before it, and one
// baseline under both.
void layoutLine(UILabel& leading, UILabel& trailing, double top, double height, double left, double right)
{
    const double trailingWidth = std::min(widthOf(trailing), right - left);
    const double separation = trailingWidth > 0 ? gap : 0;
    trailing.setFrame({ right - trailingWidth, top, trailingWidth, height });
    leading.setFrame({ left, top, std::max(right - trailingWidth - separation - left, 0.0), height });
    const double drop = MainScreenScale::roundToPixel(leading.firstBaseline() - trailing.firstBaseline());
    trailing.setFrame(trailing.frame().translated(0, drop));
}

} // namespace

void ORVRecordTableViewCell::init()
{
    UITableViewCell::init();
    auto selectedBackground = make<UIView>();
    selectedBackground->setBackgroundColor(orv_oruvaneSelectedCellBackgroundColor());
    setSelectedBackgroundView(selectedBackground);

    m_infoView = make<UIView>();
    contentView()->addSubview(m_infoView);

    m_portraitView = make<UIImageView>();
    m_portraitView->setClipsToBounds(true);
    m_portraitView->layer()->setCornerRadius(portraitSize / 2);
    m_authorNameLabel
        = makeLabel(UIFont::systemFontOfSize(nameFontSize, UIFontWeight::Semibold), UIColor::labelColor());
    m_timestampLabel = makeLabel(UIFont::systemFontOfSize(detailFontSize), UIColor::secondaryLabelColor());
    m_locationNameLabel = makeLabel(UIFont::systemFontOfSize(detailFontSize), UIColor::secondaryLabelColor());
    m_positionLabel
        = makeLabel(UIFont::systemFontOfSize(detailFontSize, UIFontWeight::Medium), orv_oruvaneMainColor());
    m_playbackIcon = make<UIImageView>();
    m_playbackIcon->setTreatsAutomaticAsTemplate(true);
    m_playbackIcon->setContentMode(UIViewContentMode::Center);
    for (const std::shared_ptr<UIView>& view :
        { std::shared_ptr<UIView>(m_portraitView), std::shared_ptr<UIView>(m_authorNameLabel),
            std::shared_ptr<UIView>(m_timestampLabel), std::shared_ptr<UIView>(m_locationNameLabel),
            std::shared_ptr<UIView>(m_positionLabel), std::shared_ptr<UIView>(m_playbackIcon) })
        m_infoView->addSubview(view);

    m_customSeparator = make<UIView>();
    m_customSeparator->setBackgroundColor(UIColor::systemFillColor());
    contentView()->addSubview(m_customSeparator);
}

void ORVRecordTableViewCell::layoutSubviews()
{
    UITableViewCell::layoutSubviews();
    const double width = bounds().width();
    m_infoView->setFrame({ 0, 0, width, preferredHeight });
    m_portraitView->setFrame(
        { sideMargin, (preferredHeight - portraitSize) / 2, portraitSize, portraitSize });
    m_playbackIcon->setFrame(
        { width - sideMargin - iconSize, (preferredHeight - iconSize) / 2, iconSize, iconSize });

    const double textLeft = sideMargin + portraitSize + gap;
    const double textRight = width - sideMargin - iconSize - gap;
    layoutLine(*m_authorNameLabel, *m_timestampLabel, firstLineTop, firstLineHeight, textLeft, textRight);
    layoutLine(*m_locationNameLabel, *m_positionLabel, secondLineTop, secondLineHeight, textLeft, textRight);

    const double hairline = 1 / MainScreenScale::get();
    m_customSeparator->setFrame({ textLeft, bounds().height() - hairline, width - textLeft, hairline });
}
