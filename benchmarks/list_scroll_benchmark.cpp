// What a frame of the application's own list costs while it scrolls, from the finger to the picture.
//
// Runs the real application in a real window, offscreen, and drags the list up and down with a finger, one
// step a frame: the list as it is, then its rows repeated to 60 and to 100,000. Tells the frames apart in
// which the drag begins, in which a row comes in, and the others, which only move what is there.
//     list_scroll_benchmark [frames of each]
#include "app/ORVAppDelegate.h"
#include "benchmarks/InstructionCount.h"
#include "benchmarks/ListOnTheScreen.h"
#include "benchmarks/Timings.h"
#include "platform/host/HostApplication.h"
#include "platform/host/HostEnvironment.h"

#include <QGuiApplication>

#include <array>
#include <cstdlib>
#include <string>

namespace {

constexpr double step = 7; // points a frame: a brisk drag
constexpr double top = 200;
constexpr double bottom = 780;
constexpr TouchID finger { 1 };
constexpr int longListRows = 100'000;
constexpr int shortListRows = 60;

// The application's rows, over and over, as many as are wanted; knows how many were asked for.
class RepeatedRows final : public UITableViewDataSource {
public:
    RepeatedRows(std::shared_ptr<UITableViewDataSource> rows, UITableView& table)
        : m_rows(std::move(rows))
        , m_repeatedCount(m_rows->tableViewNumberOfRowsInSection(table, 0))
        , m_count(m_repeatedCount)
    {
    }

    void setCount(int count) { m_count = count; }
    int cellsMade() const { return m_cellsMade; }

    int tableViewNumberOfRowsInSection(UITableView&, int) override { return m_count; }
    std::shared_ptr<UITableViewCell> tableViewCellForRowAtIndexPath(
        UITableView& table, NSIndexPath indexPath) override
    {
        ++m_cellsMade;
        return m_rows->tableViewCellForRowAtIndexPath(table, { 0, indexPath.row % m_repeatedCount });
    }

private:
    std::shared_ptr<UITableViewDataSource> m_rows;
    int m_repeatedCount;
    int m_count;
    int m_cellsMade = 0;
};

// Drags by one step for each frame that is drawn, turning round at both ends.
class Drag {
public:
    enum Kind { Beginning, RowComesIn, RowsMove, KindCount };

    Drag(TouchDispatcher& touches, const RepeatedRows& rows, std::string name)
        : m_touches(touches)
        , m_rows(rows)
        , m_name(std::move(name))
    {
    }

    void moveOn()
    {
        m_cellsMade = m_rows.cellsMade();
        InstructionCount::begin();
        m_start = Timings::Clock::now();
        if (m_frames++ == 0) {
            m_touches.touchBegan(finger, { 100, m_y });
            m_touches.touchMoved(finger, { 100, m_y -= 20 }); // beyond what could still be a tap
            return;
        }
        if (m_y + m_step < top || m_y + m_step > bottom)
            m_step = -m_step;
        m_touches.touchMoved(finger, { 100, m_y += m_step });
    }

    void frameWasDrawn()
    {
        const double seconds = Timings::secondsSince(m_start);
        const Kind kind = m_frames <= beginningFrames ? Beginning
            : m_rows.cellsMade() > m_cellsMade        ? RowComesIn
                                                      : RowsMove;
        InstructionCount::end(nameOf(kind).c_str());
        m_times[kind].add(seconds);
    }

    int frames() const { return m_frames; }
    double median(Kind kind) const { return m_times[kind].median(); }

    void finish()
    {
        m_touches.touchCancelled(finger);
        for (const Kind kind : { Beginning, RowComesIn, RowsMove })
            m_times[kind].print(nameOf(kind).c_str());
    }

private:
    static constexpr int beginningFrames = 8; // in which rows become pictures

    std::string nameOf(Kind kind) const
    {
        return m_name + std::array { ", drag begins", ", row comes in", ", rows move" }[kind];
    }

    TouchDispatcher& m_touches;
    const RepeatedRows& m_rows;
    std::string m_name;
    Timings m_times[KindCount];
    Timings::Clock::time_point m_start;
    int m_frames = 0;
    int m_cellsMade = 0;
    double m_y = bottom;
    double m_step = -step;
};

// One list after the other.
class Benchmark {
public:
    Benchmark(HostApplication& application, int framesOfEach)
        : m_framesOfEach(framesOfEach)
    {
        QObject::connect(&application.window(), &QQuickWindow::frameSwapped, [this] { frameWasDrawn(); });
        Scheduler::current().schedule(launchTime, [this] { begin(); });
    }

private:
    void begin()
    {
        const auto list = listOnTheScreen();
        m_table = list->tableView();
        m_rows = std::make_shared<RepeatedRows>(list, *m_table);
        m_table->setDataSource(m_rows);
        showNextList();
    }

    void showNextList()
    {
        switch (m_drags.size()) {
        case 0:
            return showList("own rows");
        case 1:
            m_rows->setCount(shortListRows);
            return showList("60 rows");
        case 2:
            m_rows->setCount(longListRows);
            return showList("100,000 rows");
        default:
            std::printf("a frame of 100,000 rows takes %.2f times that of 60\n",
                m_drags[2].median(Drag::RowsMove) / m_drags[1].median(Drag::RowsMove));
            QGuiApplication::quit();
        }
    }

    // From its middle; the drag begins when all is drawn.
    void showList(const char* name)
    {
        m_isDragging = false;
        m_drags.emplace_back(*UIApplication::sharedApplication()->touches(), *m_rows, name);
        m_table->reloadData();
        const int middle = m_rows->tableViewNumberOfRowsInSection(*m_table, 0) / 2;
        m_table->scrollToRow({ 0, middle }, UITableViewScrollPosition::Top, Animated::No);
        Scheduler::current().schedule(settlingTime, [this] {
            m_isDragging = true;
            m_drags.back().moveOn();
        });
    }

    void frameWasDrawn()
    {
        if (!m_isDragging)
            return;
        m_drags.back().frameWasDrawn();
        Scheduler::current().schedule(0, [this] {
            if (m_drags.back().frames() < m_framesOfEach)
                return m_drags.back().moveOn();
            m_drags.back().finish();
            showNextList();
        });
    }

    // Until what is loaded after the first frame has been loaded, also where each instruction is counted.
    static constexpr double launchTime = 4;
    static constexpr double settlingTime = 0.6;

    int m_framesOfEach;
    std::shared_ptr<UITableView> m_table;
    std::shared_ptr<RepeatedRows> m_rows;
    std::vector<Drag> m_drags;
    bool m_isDragging = false;
};

} // namespace

int main(int argc, char** argv)
{
    HostEnvironment::apply(HostEnvironment::settingsFor({}));
    const QGuiApplication application(argc, argv);
    HostOptions options;
    options.scale = 2;
    HostApplication host(options);
    dynamic_cast<HostScheduler&>(Scheduler::current()).setRefreshInterval(1e-6); // no waiting in between
    Timings::printHeading();
    Benchmark benchmark(host, argc > 1 ? std::max(std::atoi(argv[1]), 10) : 600);
    return host.run(NSString(), "ORVAppDelegate");
}
