#include "list/ORVRecordTableViewCellConfigurator.h"

#include "list/ORVRecordTableViewCell.h"
#include "model/ORVResourceCache.h"
#include "platform/foundation/Scheduler.h"
#include "playback/ORVRecordPlayer.h"

#include <limits>

namespace {

ORVPlaybackControlsState playbackControlsState(const ORVRecordPlayer& player)
{
    if (!player.isReadyForPlayback())
        return ORVPlaybackControlsState::Preparing;
    return player.isPaused() ? ORVPlaybackControlsState::Paused : ORVPlaybackControlsState::Playing;
}

// 0 while the duration is unknown or 0.
double positionFraction(const ORVRecordPlayer& player)
{
    const double duration = player.recordDuration();
    return duration > std::numeric_limits<double>::epsilon() ? player.timePosition() / duration : 0;
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
    cell->playbackSlider()->setAsset(
        ORVResourceCache::sharedInstance()->soundAssetFromURL(record.soundFileURL()));
}

void ORVRecordTableViewCellConfigurator::configureCellSelectedState(
    ORVRecordTableViewCell* cell, Animated animated)
{
    if (cell)
        cell->setPlaybackSliderVisible(cell->isSelected(), animated);
}

void ORVRecordTableViewCellConfigurator::configurePlaybackControlsInCell(
    ORVRecordTableViewCell* cell, const ORVRecordPlayer* player, Animated animated)
{
    if (player)
        configurePlaybackControlsInCell(
            cell, positionFraction(*player), playbackControlsState(*player), animated);
    else
        configurePlaybackControlsInCell(cell, 0, ORVPlaybackControlsState::None, animated);
}

void ORVRecordTableViewCellConfigurator::configurePlaybackControlsInCell(
    ORVRecordTableViewCell* cell, double positionFraction, ORVPlaybackControlsState state, Animated animated)
{
    if (!cell)
        return;
    using enum ORVPlaybackControlsState;
    const auto& button = cell->playbackButton();
    const bool playing = state == Playing;
    if (playing != button->isPlaying())
        button->setPlaying(playing, animated);
    button->progressView()->setProgress(positionFraction, animated);
    button->progressView()->setIndeterminate(state == Preparing);
    cell->playbackSlider()->setThumbHidden(state == None || state == Preparing);
    // Hiding the thumb ends a drag of it, and the end of a drag leaves the finger's position in the ring.
    if (button->progressView()->progress() != positionFraction)
        button->progressView()->setProgress(positionFraction, animated);
    cell->playbackSlider()->setCurrentPosition(positionFraction, animated);
}
