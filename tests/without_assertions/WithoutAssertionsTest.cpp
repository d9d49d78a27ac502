// What the application does where a check fails in a build that has no assertions: nobody is told, and the
// code after the check finds its way.
#include "platform/graphics/UIGraphics.h"
#include "tests/list/RecordsListFixture.h"
#include "theme/UIColor+ORVTintAdjustment.h"

namespace {

TEST(WithoutAssertionsTest, AColourThatCannotBeDimmedStaysAsItIs)
{
    const AssertionRecorder assertions;
    UIGraphicsBeginImageContextWithOptions({ 2, 2 }, true, 1);
    const auto pattern = UIColor::colorWithPatternImage(UIGraphicsGetImageFromCurrentImageContext());
    UIGraphicsEndImageContext();
    EXPECT_EQ(colorWithTintAdjustment(pattern, UIViewTintAdjustmentMode::Dimmed), pattern);
    EXPECT_TRUE(assertions.failures().empty());
}

class PlainRows final : public NSObject, public UITableViewDataSource {
public:
    int tableViewNumberOfRowsInSection(UITableView&, int) override { return 30; }
    std::shared_ptr<UITableViewCell> tableViewCellForRowAtIndexPath(UITableView&, NSIndexPath) override
    {
        return make<UITableViewCell>();
    }
};

class ListWithoutAssertionsTest : public RecordsListFixture { };

TEST_F(ListWithoutAssertionsTest, ACellThatIsNoRecordCellIsNotFound)
{
    open();
    const auto foreign = make<PlainRows>();
    controller->tableView()->setDataSource(foreign);
    controller->tableView()->reloadData();
    runFrames();
    const AssertionRecorder assertions;
    EXPECT_NE(controller->tableView()->cellForRow({ 0, 0 }), nullptr);
    EXPECT_EQ(controller->cellForRecord(*controller->fetchedRecords()[0]), nullptr);
    EXPECT_TRUE(assertions.failures().empty());
}

} // namespace
