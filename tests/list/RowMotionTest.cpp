// Rows that open and close while they are still on the way: nothing on the screen jumps.
#include "tests/list/RecordsListFixture.h"

#include <array>
#include <cmath>
#include <map>

namespace {

class RowMotionTest : public RecordsListFixture {
protected:
    // How a layer is shown on the screen.
    struct Place {
        CGPoint origin;
        CGSize size;
    };
    using Places = std::map<LayerID, Place>;

    Places placesOnScreen() const
    {
        Places places;
        std::vector<std::pair<int, CGAffineTransform>> open; // one past the last item, to the screen
        for (int index = 0; index < static_cast<int>(frame.items.size()); ++index) {
            const FrameItem& item = frame.items[static_cast<std::size_t>(index)];
            while (!open.empty() && open.back().first <= index)
                open.pop_back();
            const CGAffineTransform toScreen
                = open.empty() ? item.transform : item.transform * open.back().second;
            open.emplace_back(item.subtreeEnd, toScreen);
            places[item.layer] = { toScreen.map(item.bounds.topLeft()), item.bounds.size() };
        }
        return places;
    }
    // Lets the time pass frame by frame, and looks for what has moved farther than it can in one.
    void expectSmoothFor(double seconds, const char* when)
    {
        const double farthest = 9; // points: 44 in 0.3 s, twice as fast in the middle, is 5 a frame
        for (double passed = 0; passed < seconds; passed += scheduler.frameInterval()) {
            const Places before = placesOnScreen();
            scheduler.advance(scheduler.frameInterval());
            for (const auto& [layer, place] : placesOnScreen()) {
                const auto earlier = before.find(layer);
                if (earlier == before.end())
                    continue;
                const CGPoint way = place.origin - earlier->second.origin;
                EXPECT_LT(std::abs(way.y()), farthest) << when << " after " << passed;
                EXPECT_LT(std::abs(place.size.height() - earlier->second.size.height()), farthest)
                    << when << " after " << passed;
            }
        }
    }
    // How much of a row's slider is to be seen; all of it, where it has never been shown.
    double shownSlider(int row) const
    {
        return cellAt(row)->playbackSlider()->layer()->presentationValues().opacity;
    }
    // Selects and deselects as a tap does, and in that moment.
    void toggle(int row)
    {
        touch.down(centerOfRow(row));
        touch.wait(0.05);
        const Places before = placesOnScreen();
        const std::array sliders { shownSlider(1), shownSlider(2) };
        touch.up();
        executor.runAll();
        EXPECT_NEAR(shownSlider(1), sliders[0], 0.01);
        EXPECT_NEAR(shownSlider(2), sliders[1], 0.01);
        window->layer()->setNeedsFrame();
        runFrames();
        for (const auto& [layer, place] : placesOnScreen()) {
            const auto earlier = before.find(layer);
            if (earlier == before.end())
                continue;
            EXPECT_LT(std::abs(place.origin.y() - earlier->second.origin.y()), 1)
                << "in the moment of the tap";
        }
    }
};

TEST_F(RowMotionTest, OpenedAndClosedTwiceWithin300MillisecondsNoRowJumps)
{
    open();
    scheduler.advance(1);
    const Places atRest = placesOnScreen();
    toggle(1);
    expectSmoothFor(0.09, "opening");
    toggle(2);
    expectSmoothFor(0.09, "opening another");
    toggle(1);
    expectSmoothFor(0.09, "opening the first again");
    toggle(2);
    expectSmoothFor(1, "coming to rest");
    EXPECT_NE(placesOnScreen().size(), 0U);
    EXPECT_TRUE(showsSlider(2));
    EXPECT_FALSE(showsSlider(1));
}

} // namespace
