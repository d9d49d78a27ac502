// The list of the records nearest to the user, of which one at a time is played.
//
// A tap on a row selects it, which shows its slider; its button plays, and stops the record that plays.
// The controller owns the one player and brings the cells up to date through the configurator.
#pragma once

#include "list/ORVRecordTableViewCellConfigurator.h"
#include "list/ORVRecordTableViewCellDelegate.h"
#include "model/ORVRecordsStorage.h"
#include "platform/controllers/UIViewController.h"
#include "platform/tables/UITableView.h"
#include "playback/ORVRecordPlayer.h"

class ORVRecordTableViewCell;

class ORVRecordsListViewController final : public UIViewController,
                                           public UITableViewDataSource,
                                           public UITableViewDelegate,
                                           public ORVRecordTableViewCellDelegate,
                                           public ORVRecordPlayerDelegate {
public:
    static constexpr std::size_t maximumRecords = 30;

    const std::shared_ptr<UITableView>& tableView() const { return m_tableView; }
    void setRecordsStorage(std::shared_ptr<ORVRecordsStorage> storage)
    {
        m_recordsStorage = std::move(storage);
    }
    const std::shared_ptr<CLLocation>& userLocation() const { return m_userLocation; }
    // The centre of the query; on the screen the list follows at once.
    void setUserLocation(std::shared_ptr<CLLocation> location);

    // Fetches when the location has changed since the last time; on the screen in the background and with a
    // fade, else at once.
    void updateRecordsIfNecessary();
    const ORVRecordsStorage::Records& fetchedRecords() const { return m_fetchedRecords; }

    // None for a record that is not in the list.
    std::optional<NSIndexPath> indexPathForRecord(const ORVRecord& record) const;
    // Null for a row off the screen.
    std::shared_ptr<ORVRecordTableViewCell> cellForRecord(const ORVRecord& record) const;

    // Null for a cell that is in no row.
    std::shared_ptr<ORVRecord> recordForCell(const ORVRecordTableViewCell& cell) const;
    // selectRecord:animated: — and scrolls it into view. Nothing for a record that is not in the list.
    void selectRecord(const ORVRecord& record, Animated animated);

    const std::shared_ptr<ORVRecordPlayer>& currentPlayer() const { return m_currentPlayer; }
    void playRecord(const std::shared_ptr<ORVRecord>& record);
    void stopCurrentRecordPlayer();

    void loadView() override;
    void viewDidLoad() override;
    void viewDidAppear(Animated animated) override;

    int tableViewNumberOfRowsInSection(UITableView&, int section) override;
    std::shared_ptr<UITableViewCell> tableViewCellForRowAtIndexPath(UITableView&, NSIndexPath) override;
    std::optional<double> tableViewHeightForRowAtIndexPath(UITableView&, NSIndexPath) override;
    std::optional<NSIndexPath> tableViewWillSelectRowAtIndexPath(UITableView&, NSIndexPath) override;
    void tableViewDidSelectRowAtIndexPath(UITableView&, NSIndexPath) override;
    void tableViewDidDeselectRowAtIndexPath(UITableView&, NSIndexPath) override;
    void tableViewWillDisplayCell(UITableView&, UITableViewCell&, NSIndexPath) override;

    void recordTableViewCellRequestsPlayback(ORVRecordTableViewCell&) override;
    void recordTableViewCellRequestsPauseInterim(ORVRecordTableViewCell&, bool interim) override;
    void recordTableViewCellRequestsSeekPlaybackToPositionFraction(
        ORVRecordTableViewCell&, double fraction) override;

    void recordPlayerDidBecomeReadyForPlayback(ORVRecordPlayer&) override;
    void recordPlayerDidUpdatePlayingPosition(ORVRecordPlayer&, double) override;
    void recordPlayerDidEndPlayback(ORVRecordPlayer&) override;

protected:
    void init() override;

private:
    void updateRecordsForCenterCoordinate(
        const CLLocationCoordinate2D& coordinate, bool asynchronously, Animated animated);
    void showRecords(const ORVRecordsStorage::Records& records, Animated animated);
    bool isCurrent(const ORVRecord& record) const;
    void configureCellOfPlayer(const ORVRecordPlayer& player);
    void animateRowHeights();
    void updateSelectedStateInCellForRow(NSIndexPath indexPath, Animated animated);

    std::shared_ptr<UITableView> m_tableView;
    std::shared_ptr<ORVRecordsStorage> m_recordsStorage;
    std::shared_ptr<CLLocation> m_userLocation;
    ORVRecordsStorage::Records m_fetchedRecords;
    std::shared_ptr<ORVRecordPlayer> m_currentPlayer;
    std::shared_ptr<ORVRecordTableViewCellConfigurator> m_cellConfigurator;
    bool m_needsUpdateRecords = false;
};
