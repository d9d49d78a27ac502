// The list in its states as text, so that a change of the layout is seen in a difference.
#include "platform/views/ViewDump.h"
#include "tests/list/RecordsListFixture.h"
#include "tests/support/TextComparison.h"

namespace {

class ListDumpTest : public RecordsListFixture {
protected:
    void openFewRows()
    {
        UIScreen::mainScreen()->setGeometry({ { 390, 300 }, 2, {} });
        open();
        scheduler.advance(1);
    }
    NSString dump() const { return ViewDump::tree(*controller->view()); }
};

TEST_F(ListDumpTest, AtRest)
{
    openFewRows();
    EXPECT_TRUE(matchesFile(dump(), "tests/list/dumps/at_rest.txt"));
}

TEST_F(ListDumpTest, WithAnOpenRow)
{
    openFewRows();
    tapRow(1);
    scheduler.advance(1);
    EXPECT_TRUE(matchesFile(dump(), "tests/list/dumps/open_row.txt"));
}

TEST_F(ListDumpTest, Preparing)
{
    openFewRows();
    touch.tap(centerOf(*cellAt(0)->playbackButton()));
    EXPECT_TRUE(matchesFile(dump(), "tests/list/dumps/preparing.txt"));
}

TEST_F(ListDumpTest, Paused)
{
    openFewRows();
    tapButton(0);
    scheduler.advance(2);
    tapButton(0);
    scheduler.advance(1);
    EXPECT_TRUE(matchesFile(dump(), "tests/list/dumps/paused.txt"));
}

TEST_F(ListDumpTest, Turned)
{
    openFewRows();
    tapRow(1);
    scheduler.advance(1);
    UIScreen::mainScreen()->setGeometry({ { 590, 250 }, 2, {} });
    scheduler.advance(1);
    EXPECT_TRUE(matchesFile(dump(), "tests/list/dumps/turned.txt"));
}

} // namespace
