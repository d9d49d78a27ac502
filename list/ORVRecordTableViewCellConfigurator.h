// The one place that writes a record and a playback state into a cell.
//
// Keeps no state besides its date formatter. A null cell is allowed everywhere: rows off the screen have
// none.
#pragma once

#include "platform/foundation/NSDateComponentsFormatter.h"

class ORVRecord;
class ORVRecordPlayer;
class ORVRecordTableViewCell;

enum class ORVPlaybackControlsState {
    None = 0, // the record has no player
    Preparing = 1, // its player is not ready
    Playing = 2,
    Paused = 3
};

class ORVRecordTableViewCellConfigurator final : public NSObject {
public:
    const std::shared_ptr<NSDateComponentsFormatter>& dateFormatter() const { return m_dateFormatter; }

    // configureCell:withRecord: — everything but the playback controls.
    void configureCell(ORVRecordTableViewCell* cell, const ORVRecord& record);
    // configureCellSelectedState:animated: — shows the slider in a selected cell only.
    void configureCellSelectedState(ORVRecordTableViewCell* cell, Animated animated);
    // configurePlaybackControlsInCell:withRecordPlayer:animated: — a null player is no playback.
    void configurePlaybackControlsInCell(
        ORVRecordTableViewCell* cell, const ORVRecordPlayer* player, Animated animated);
    // configurePlaybackControlsInCell:withPositionFraction:state:animated: — of the record's length.
    void configurePlaybackControlsInCell(ORVRecordTableViewCell* cell, double positionFraction,
        ORVPlaybackControlsState state, Animated animated);

protected:
    void init() override;

private:
    std::shared_ptr<NSDateComponentsFormatter> m_dateFormatter;
};
