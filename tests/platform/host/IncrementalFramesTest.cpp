// A frame that names what has changed in it is shown as one that names nothing, on random sequences of
// frames.
#include "platform/host/FlatteningPlan.h"
#include "tests/platform/host/SceneStage.h"
#include "tests/support/FrameListMaker.h"
#include "tests/support/PictureComparison.h"

#include <algorithm>
#include <random>

namespace {

// What is painted into a picture first, or in tiles, is rounded in another order.
constexpr PictureTolerance softEdges { .channel = 3 };

const QImage& stripes()
{
    static const QImage image = [] {
        QImage made(90, 20, QImage::Format_ARGB32_Premultiplied);
        for (int y = 0; y < made.height(); ++y)
            for (int x = 0; x < made.width(); ++x)
                made.setPixelColor(x, y, x % 5 < 3 ? QColor(20 + x, y * 10, 90) : QColor(Qt::transparent));
        return made;
    }();
    return image;
}

// A screen of cards, each with a picture that two halves show, a ring and a badge.
class RandomFrames {
public:
    // Where the cards go, and how the badges on them are turned.
    enum class Places { OnPixels, Anywhere };
    explicit RandomFrames(unsigned seed, Places places = Places::OnPixels)
        : m_random(seed)
        , m_placesAnywhere(places == Places::Anywhere)
        , m_screen(layer(1).at(0, 0, 120, 120).fill(Qt::gray))
    {
        std::vector<LayerSketch> cards;
        for (std::uint64_t card = 0; card < 3; ++card)
            cards.push_back(makeCard(100 * (card + 1), double(card) * 40));
        m_screen.with(std::move(cards));
    }

    // The next frame, which follows the last one where the layers are the same.
    FrameList next()
    {
        for (std::size_t count = below(3); count > 0; --count)
            change(m_screen.sublayers()[below(m_screen.sublayers().size())]);
        FrameList list = makeFrameList({ 120, 120 }, 1, m_screen);
        list.history.id = m_last.history.id + 1;
        const bool isSame = std::equal(list.items.begin(), list.items.end(), m_last.items.begin(),
            m_last.items.end(), [](const FrameItem& a, const FrameItem& b) {
                return a.layer == b.layer && a.subtreeEnd == b.subtreeEnd;
            });
        if (isSame) {
            list.history.previous = m_last.history.id;
            for (std::size_t index = 0; index < list.items.size(); ++index)
                if (!(list.items[index] == m_last.items[index]))
                    list.history.changedItems.push_back(int(index));
        }
        return m_last = list;
    }

private:
    std::size_t below(std::size_t end)
    {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(m_random);
    }
    double number(std::size_t end) { return double(below(2 * end)) / 2; }

    double place(std::size_t end)
    {
        return m_placesAnywhere ? double(below(30 * end)) / 30 : double(below(end));
    }
    CGAffineTransform turned(CGAffineTransform transform)
    {
        if (!m_placesAnywhere)
            return transform.rotate(below(2) ? 0 : 90);
        return transform.rotate(double(below(8)) * 15);
    }

    FrameShape ring(double start, double end)
    {
        static const auto path = [] {
            auto circle = std::make_shared<QPainterPath>();
            circle->addEllipse(CGPoint(16, 16), 14, 14);
            return circle;
        }();
        return { path, {}, Qt::red, 3, Qt::RoundCap, start, end };
    }
    static LayerSketch half(std::uint64_t id, double from, double to)
    {
        return layer(id)
            .at(from, 0, to - from, 20)
            .clip()
            .with({
                layer(id + 1).at(-from, 0, 90, 20).image(stripes(), id % 100 == 4 ? Qt::blue : QColor()),
            });
    }
    LayerSketch makeCard(std::uint64_t id, double y)
    {
        return layer(id)
            .at(0, y, 120, 38)
            .fill(Qt::white)
            .with({
                layer(id + 1).at(4, 4, 90, 20).with({ half(id + 2, 0, 40), half(id + 4, 40, 90) }),
                layer(id + 6).at(80, 2, 32, 32).content(ring(0, 0.3)),
                layer(id + 7)
                    .at(40, 20, 20, 10)
                    .fill(Qt::green)
                    .with({
                        layer(id + 8).at(5, 2, 5, 5).fill(Qt::black),
                    }),
            });
    }

    void change(LayerSketch& card)
    {
        auto& parts = card.sublayers();
        switch (below(10)) {
        case 0:
        case 1: { // the thumb between the halves
            const double middle = double(below(271)) / 3;
            const std::uint64_t id = std::uint64_t(parts[0].item().layer);
            parts[0].with({ half(id + 1, 0, middle), half(id + 3, middle, 90) });
            return;
        }
        case 2:
            m_end = std::min(m_end + 0.04, 1.0);
            parts[1].content(ring(0, m_end));
            return;
        case 3:
            m_end = double(below(12)) / 20;
            parts[1].content(ring(m_end / 3, m_end));
            return;
        case 4:
            card.at(place(10), place(80), 120, 38);
            return;
        case 5:
            parts[2].opacity(double(below(3)) / 2);
            return;
        case 6:
            parts[2].fill(below(2) ? QColor(Qt::green) : QColor());
            return;
        case 7:
            parts[2].transform(turned(CGAffineTransform::fromTranslate(50, 20)));
            return;
        case 8:
            parts[0].sublayers()[below(2)].opacity(below(2) ? 1 : 0.5);
            return;
        default:
            if (below(3) == 0)
                std::rotate(m_screen.sublayers().begin(), m_screen.sublayers().begin() + 1,
                    m_screen.sublayers().end());
        }
    }

    std::mt19937 m_random;
    const bool m_placesAnywhere;
    LayerSketch m_screen;
    FrameList m_last { {}, 1, {}, {} };
    double m_end = 0.3;
};

// A plan, and the difference that it goes by, over one frame after the other.
struct Planning {
    void show(const FrameList& list)
    {
        difference.compare(shown, list);
        plan.plan(list, difference);
        shown = list;
    }

    FrameList shown;
    FrameDifference difference;
    FlatteningPlan plan;
};

TEST(IncrementalFramesTest, ArePlannedAsIfNothingWereKnownOfWhatHasChanged)
{
    int partialPlans = 0;
    for (unsigned seed = 1; seed <= 30; ++seed) {
        RandomFrames frames(seed);
        Planning informed;
        Planning uninformed;
        for (int step = 0; step < 200; ++step) {
            FrameList list = frames.next();
            informed.show(list);
            list.history = {};
            uninformed.show(list);
            partialPlans += int(informed.plan.plannedItems().size() < list.items.size() / 2);
            for (int index = 0; index < int(list.items.size()); ++index) {
                ASSERT_EQ(informed.plan.way(index), uninformed.plan.way(index))
                    << "seed " << seed << ", step " << step << ", item " << index;
                const bool isPicture = informed.plan.way(index) == FlatteningPlan::Way::Picture;
                ASSERT_EQ(isPicture && informed.plan.keepsPicture(index),
                    isPicture && uninformed.plan.keepsPicture(index))
                    << "seed " << seed << ", step " << step << ", item " << index;
                ASSERT_EQ(
                    informed.difference.isSubtreeSteady(index), uninformed.difference.isSubtreeSteady(index));
                ASSERT_EQ(
                    informed.difference.isContentEqual(index), uninformed.difference.isContentEqual(index));
                ASSERT_EQ(informed.difference.hasMoved(index), uninformed.difference.hasMoved(index));
            }
        }
    }
    EXPECT_GT(partialPlans, 1000) << "most frames change little";
}

TEST(IncrementalFramesTest, LookAsAPlainPainterPaintsThem)
{
    for (unsigned seed = 1; seed <= 4; ++seed) {
        RandomFrames frames(seed);
        SceneStage stage({ 120, 120 });
        for (int step = 0; step < 120; ++step) {
            const FrameList list = frames.next();
            stage.show(list);
            ASSERT_TRUE(picturesMatch(stage.shown(), stage.painted(), softEdges))
                << "seed " << seed << ", step " << step;
            if (step % 10 != 0)
                continue;
            SceneStage fromScratch({ 120, 120 });
            fromScratch.show(list);
            ASSERT_TRUE(picturesMatch(stage.shown(), fromScratch.shown(), softEdges))
                << "seed " << seed << ", step " << step;
        }
    }
}

// The renderer draws only what it takes for changed; a screen that was never another one shows all. Moving
// things are not flattened, since which ones are depends on the frames before.
TEST(IncrementalFramesTest, LeaveNoPixelsOfWhatHasMovedOrGone)
{
    // A turned edge that meets the middle of a pixel falls to either side of it.
    constexpr PictureTolerance turnedEdges { .channel = 4, .pixels = 2 };
    constexpr auto no = FlatteningPlan::FlattensMoving::No;
    for (unsigned seed = 1; seed <= 12; ++seed) {
        RandomFrames frames(seed, RandomFrames::Places::Anywhere);
        SceneStage stage({ 120, 120 }, no);
        for (int step = 0; step < 60; ++step) {
            const FrameList list = frames.next();
            if (!stage.show(list))
                continue;
            SceneStage fromScratch({ 120, 120 }, no);
            fromScratch.show(list);
            EXPECT_TRUE(picturesMatch(stage.shown(), fromScratch.shown(), turnedEdges))
                << "seed " << seed << ", step " << step;
        }
    }
}

TEST(IncrementalFramesTest, MayFollowEachOtherWithoutBeingDrawn)
{
    RandomFrames frames(9);
    SceneStage stage({ 120, 120 });
    for (int step = 0; step < 60; ++step) {
        const int drawn = stage.framesDrawn();
        bool hasChanged = false;
        FrameList last;
        for (int count = step % 4; count >= 0; --count) {
            last = frames.next();
            hasChanged = stage.scene().setFrameList(last) || hasChanged;
        }
        if (hasChanged)
            stage.waitForFrame(drawn);
        EXPECT_EQ(stage.scene().frameList(), last);
        ASSERT_TRUE(picturesMatch(stage.shown(), stage.painted(), softEdges)) << "step " << step;
    }
}

} // namespace
