// The one kind of row in the records list: portrait, author, age and place of a record, and how far its
// sound has got.
//
// The cell holds no playback state of its own; the configurator writes everything into it.
#pragma once

#include "platform/controls/UIImageView.h"
#include "platform/controls/UILabel.h"
#include "platform/tables/UITableViewCell.h"

class ORVRecordTableViewCell final : public UITableViewCell {
public:
    static inline const NSString identifier = QStringLiteral("ORVRecordTableViewCell");
    static constexpr double preferredHeight = 64; // points

    using UITableViewCell::UITableViewCell;

    const std::shared_ptr<UIView>& infoView() const { return m_infoView; }
    const std::shared_ptr<UIView>& customSeparator() const { return m_customSeparator; }
    const std::shared_ptr<UIImageView>& portraitView() const { return m_portraitView; }
    const std::shared_ptr<UILabel>& authorNameLabel() const { return m_authorNameLabel; }
    const std::shared_ptr<UILabel>& timestampLabel() const { return m_timestampLabel; }
    const std::shared_ptr<UILabel>& locationNameLabel() const { return m_locationNameLabel; }
    // Shows what a tap on the row would do.
    const std::shared_ptr<UIImageView>& playbackIcon() const { return m_playbackIcon; }
    const std::shared_ptr<UILabel>& positionLabel() const { return m_positionLabel; }

    void layoutSubviews() override;

protected:
    void init() override;

private:
    std::shared_ptr<UIView> m_infoView;
    std::shared_ptr<UIView> m_customSeparator;
    std::shared_ptr<UIImageView> m_portraitView;
    std::shared_ptr<UILabel> m_authorNameLabel;
    std::shared_ptr<UILabel> m_timestampLabel;
    std::shared_ptr<UILabel> m_locationNameLabel;
    std::shared_ptr<UIImageView> m_playbackIcon;
    std::shared_ptr<UILabel> m_positionLabel;
};
