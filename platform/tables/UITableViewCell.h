// One row of a table: a content view that subclasses fill, over a background that shows the selection.
//
// Cells come back to be used for other rows; whoever configures one sets everything that differs.
#pragma once

#include "platform/views/UIView.h"

class UITableViewCell : public UIView {
public:
    using UIView::UIView;

    const std::shared_ptr<UIView>& contentView() const { return m_contentView; }
    // Lies below the content while the cell is selected or highlighted; none by default.
    std::shared_ptr<UIView> selectedBackgroundView() const { return m_selectedBackgroundView; }
    void setSelectedBackgroundView(std::shared_ptr<UIView> view);

    bool isSelected() const { return m_selected; }
    void setSelected(bool selected) { setSelected(selected, Animated::No); }
    // setSelected:animated:
    virtual void setSelected(bool selected, Animated animated);
    // Pressed by a finger, before it is known whether that selects.
    bool isHighlighted() const { return m_highlighted; }
    virtual void setHighlighted(bool highlighted, Animated animated);

    const NSString& reuseIdentifier() const { return m_reuseIdentifier; }
    void setReuseIdentifier(const NSString& identifier) { m_reuseIdentifier = identifier; }
    // Sent before the cell is used for another row.
    virtual void prepareForReuse() { }

    void layoutSubviews() override;

protected:
    void init() override;

private:
    void updateBackground(Animated animated);

    std::shared_ptr<UIView> m_contentView;
    std::shared_ptr<UIView> m_selectedBackgroundView;
    NSString m_reuseIdentifier;
    bool m_selected = false;
    bool m_highlighted = false;
};
