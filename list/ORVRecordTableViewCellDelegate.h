// Hears what a row of the records list is asked for. Every message is optional; its default does nothing.
#pragma once

class ORVRecordTableViewCell;

class ORVRecordTableViewCellDelegate {
public:
    virtual void recordTableViewCellDidTapPortrait(ORVRecordTableViewCell&) { }
    virtual void recordTableViewCellRequestsPlayback(ORVRecordTableViewCell&) { }
    // recordTableViewCell:requestsPauseInterim: — an interim pause lasts as long as a finger chooses a place.
    virtual void recordTableViewCellRequestsPauseInterim(ORVRecordTableViewCell&, bool /*interim*/) { }
    // recordTableViewCell:requestsSeekPlaybackToPositionFraction: — of the record's length, from 0 to 1.
    virtual void recordTableViewCellRequestsSeekPlaybackToPositionFraction(
        ORVRecordTableViewCell&, double /*fraction*/)
    {
    }

protected:
    ~ORVRecordTableViewCellDelegate() = default; // nobody owns a delegate through this type
};
