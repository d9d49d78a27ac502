#include "list/ORVRecordTableViewCellConfigurator.h"

#include "list/ORVRecordTableViewCell.h"
#include "model/ORVResourceCache.h"
#include "platform/foundation/Scheduler.h"
#include "playback/ORVRecordPlayer.h"

#include <cmath>
#include <limits>

namespace {

// Minutes and seconds, such as "0:07".
NSString clockText(double seconds)
{
    const int whole = static_cast<int>(seconds);
    return QStringLiteral("%1:%2").arg(whole / 60).arg(whole % 60, 2, 10, QLatin1Char('0'));
}

NSString positionText(const ORVRecordPlayer* player)
{
    if (!player || !player->isReadyForPlayback())
        return {};
    const double duration = player->recordDuration();
    if (!(duration > std::numeric_limits<double>::epsilon()))
        return clockText(0);
    return QStringLiteral("%1 / %2").arg(clockText(player->timePosition()), clockText(std::ceil(duration)));
}

std::shared_ptr<UIImage> playbackImage(ORVPlaybackControlsState state)
{
    // Held for the length of the process: every cell shows one of the two.
    static const auto play = UIImage::imageNamed(QStringLiteral("ov_icon_play"));
    static const auto pause = UIImage::imageNamed(QStringLiteral("ov_icon_pause"));
    return state == ORVPlaybackControlsState::Playing ? pause : play;
}

} // namespace

void ORVRecordTableViewCellConfigurator::init()
{
    NSObject::init();
    m_dateFormatter = make<NSDateComponentsFormatter>();
    m_dateFormatter->setAllowedUnits(NSCalendarUnitMonth | NSCalendarUnitWeekOfMonth | NSCalendarUnitDay
        | NSCalendarUnitHour | NSCalendarUnitMinute);
    m_dateFormatter->setFormattingContext(NSFormattingContext::ListItem);
    m_dateFormatter->setMaximumUnitCount(1);
    m_dateFormatter->setUnitsStyle(NSDateComponentsFormatterUnitsStyle::Short);
}

void ORVRecordTableViewCellConfigurator::configureCell(ORVRecordTableViewCell* cell, const ORVRecord& record)
{
    if (!cell)
        return;
    const auto& author = record.author();
    const NSURL portraitURL = author ? author->smallPortraitFileURL() : NSURL();
    // The tint is the application's; a photo keeps its own colours.
    cell->portraitView()->setImage(UIImage::imageWithRenderingMode(
        ORVResourceCache::sharedInstance()->imageFromURL(portraitURL), UIImageRenderingMode::AlwaysOriginal));
    cell->authorNameLabel()->setText(author ? author->fullName() : NSString());
    cell->timestampLabel()->setText(
        m_dateFormatter->stringFromDate(record.timestamp(), Scheduler::current().currentDate()));
    cell->locationNameLabel()->setText(record.locationName());
    cell->setNeedsLayout();
}

ORVPlaybackControlsState ORVRecordTableViewCellConfigurator::playbackControlsState(
    const ORVRecordPlayer* player)
{
    if (!player)
        return ORVPlaybackControlsState::None;
    if (!player->isReadyForPlayback())
        return ORVPlaybackControlsState::Preparing;
    return player->isPaused() ? ORVPlaybackControlsState::Paused : ORVPlaybackControlsState::Playing;
}

void ORVRecordTableViewCellConfigurator::configurePlaybackControlsInCell(
    ORVRecordTableViewCell* cell, const ORVRecordPlayer* player)
{
    if (!cell)
        return;
    cell->playbackIcon()->setImage(playbackImage(playbackControlsState(player)));
    const NSString text = positionText(player);
    if (cell->positionLabel()->text() == text)
        return;
    cell->positionLabel()->setText(text);
    cell->setNeedsLayout();
}
