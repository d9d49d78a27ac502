// A frame brought up to date is the frame computed afresh, whatever has changed in between.
#include "platform/graphics/UIUserInterfaceStyle.h"
#include "platform/layers/CAShapeLayer.h"
#include "platform/layers/FrameBuilder.h"
#include "platform/layers/LayerDump.h"
#include "tests/platform/layers/LayersFixture.h"

#include <random>

namespace {

constexpr CGSize screen(100, 100);
constexpr double scale = 2;

class FrameBuilderUpdateTest : public LayersFixture {
protected:
    FrameBuilderUpdateTest()
    {
        layer->setAnchorPoint({ 0, 0 });
        layer->setBounds({ 0, 0, 100, 100 });
        layer->setBackgroundColor(UIColor::whiteColor());
    }
    ~FrameBuilderUpdateTest() override { CurrentUserInterfaceStyle::set(UIUserInterfaceStyle::Light); }

    std::shared_ptr<CALayer> box(const CGRect& frame, const std::shared_ptr<CALayer>& parent)
    {
        const auto made = CALayer::layer();
        made->setFrame(frame);
        made->setBackgroundColor(UIColor::colorWithRed(1, 0, 0, 1));
        parent->addSublayer(made);
        return made;
    }
    const FrameList& update()
    {
        builder.update(*layer, scheduler.now(), screen, scale);
        return builder.frame().list;
    }
    CAFrame afresh() const { return FrameBuilder::buildFrame(*layer, scheduler.now(), screen, scale); }
    // What a list names as changed, where it says so at all.
    std::optional<std::vector<int>> changedBy(const std::function<void()>& change)
    {
        const std::uint64_t before = update().history.id;
        change();
        const FrameHistory& history = update().history;
        EXPECT_EQ(builder.frame().list, afresh().list);
        return history.previous == before ? std::optional(history.changedItems) : std::nullopt;
    }

    static std::optional<std::vector<int>> changes(std::vector<int> items) { return items; }
    FrameBuilder builder;
};

TEST_F(FrameBuilderUpdateTest, NamesTheItemsThatHaveChanged)
{
    const auto card = box({ 10, 10, 50, 50 }, layer);
    const auto badge = box({ 5, 5, 10, 10 }, card);
    const auto other = box({ 70, 10, 10, 10 }, layer);
    EXPECT_EQ(changedBy([] {}), changes({}));
    EXPECT_EQ(changedBy([&] { badge->setOpacity(0.5); }), changes({ 2 }));
    EXPECT_EQ(changedBy([&] { card->setPosition({ 40, 40 }); }), changes({ 1 }));
    EXPECT_EQ(changedBy([&] {
        other->setBackgroundColor(UIColor::blackColor());
        badge->setCornerRadius(2);
    }),
        changes({ 2, 3 }));
    EXPECT_EQ(changedBy([&] { badge->setNeedsFrame(); }), changes({})) << "nothing looks different";
}

TEST_F(FrameBuilderUpdateTest, NamesNothingWhereTheNestingHasChanged)
{
    const auto card = box({ 10, 10, 50, 50 }, layer);
    const auto badge = box({ 5, 5, 10, 10 }, card);
    EXPECT_EQ(changedBy([&] { badge->setHidden(true); }), std::nullopt);
    EXPECT_EQ(changedBy([&] { badge->setHidden(false); }), std::nullopt);
    EXPECT_EQ(changedBy([&] { layer->addSublayer(badge); }), std::nullopt);
    EXPECT_EQ(changedBy([&] { layer->addSublayer(card); }), std::nullopt) << "another order";
    EXPECT_EQ(changedBy([&] { CurrentUserInterfaceStyle::set(UIUserInterfaceStyle::Dark); }), std::nullopt)
        << "any colour may be another one";
}

TEST_F(FrameBuilderUpdateTest, SeesWhatIsDrawnBelowALayerThatDrewNothing)
{
    const auto empty = CALayer::layer();
    empty->setFrame({ 0, 0, 50, 50 });
    layer->addSublayer(empty);
    EXPECT_EQ(update().items.size(), 1u);
    const auto inside = box({ 5, 5, 10, 10 }, empty);
    EXPECT_EQ(update(), afresh().list);
    EXPECT_EQ(update().items.size(), 3u);
    inside->setPosition({ 200, 5 });
    empty->setMasksToBounds(true);
    EXPECT_EQ(update().items.size(), 1u);
    inside->setPosition({ 20, 20 });
    EXPECT_EQ(update(), afresh().list);
    EXPECT_EQ(update().items.size(), 3u);
}

TEST_F(FrameBuilderUpdateTest, FollowsAnimationsAndTheTimeOfTheLayersAboveThem)
{
    const auto card = box({ 10, 10, 50, 50 }, layer);
    const auto badge = box({ 5, 5, 10, 10 }, card);
    badge->addAnimation(basic("opacity", 0.0, 1.0), QStringLiteral("fade"));
    update();
    for (int frame = 0; frame < 5; ++frame) {
        scheduler.advance(0.1);
        EXPECT_EQ(changedBy([&] { scheduler.advance(0.05); }), changes({ 2 }));
    }
    card->setSpeed(0);
    update();
    EXPECT_EQ(changedBy([&] { scheduler.advance(0.1); }), changes({}));
    EXPECT_EQ(builder.frame().nextAnimationTime, infinity);
}

// One tree, changed at random.
class RandomChanges {
public:
    RandomChanges(std::shared_ptr<CALayer> root, ManualScheduler& scheduler, unsigned seed)
        : m_scheduler(scheduler)
        , m_random(seed)
        , m_layers { std::move(root) }
    {
        for (int count = 0; count < 30; ++count) {
            const auto made = below(4) == 0 ? shape() : CALayer::layer();
            made->setFrame({ number(100), number(100), number(60), number(60) });
            if (below(3) != 0)
                made->setBackgroundColor(color());
            any()->addSublayer(made);
            m_layers.push_back(made);
        }
    }

    void change()
    {
        CALayer& layer = *any();
        switch (below(14)) {
        case 0:
            return layer.setPosition({ number(140) - 20, number(140) - 20 });
        case 1:
            return layer.setBounds({ number(10), number(10), number(60), number(60) });
        case 2:
            return layer.setOpacity(double(below(3)) / 2);
        case 3:
            return layer.setHidden(below(2) == 0);
        case 4:
            return layer.setBackgroundColor(below(3) == 0 ? nullptr : color());
        case 5:
            return layer.setMasksToBounds(below(2) == 0);
        case 6:
            return move(1 + below(m_layers.size() - 1));
        case 7:
            return layer.setTransform(below(3) == 0 ? CGAffineTransform().scale(0, 1)
                                                    : CGAffineTransform().rotate(double(below(90))));
        case 8:
            return layer.addAnimation(animation("opacity", 0.0, 1.0), QStringLiteral("fade"));
        case 9:
            return layer.addAnimation(
                animation("position.x", number(50), number(100)), QStringLiteral("move"));
        case 10:
            return layer.removeAllAnimations();
        case 11:
            return layer.setSpeed(double(below(3)) / 2);
        case 12:
            return layer.setCornerRadius(number(10));
        default:
            m_scheduler.advance(0.1);
        }
    }

private:
    std::size_t below(std::size_t end)
    {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(m_random);
    }
    double number(std::size_t end) { return double(below(2 * end)) / 2; }
    const std::shared_ptr<CALayer>& any() { return m_layers[below(m_layers.size())]; }
    std::shared_ptr<UIColor> color() { return UIColor::colorWithRed(number(1), number(1), number(1), 1); }
    std::shared_ptr<CALayer> shape()
    {
        const auto made = CAShapeLayer::layer();
        made->setPath(UIBezierPath::bezierPathWithRect({ 0, 0, 10, 10 }));
        return made;
    }
    static std::shared_ptr<CABasicAnimation> animation(const char* keyPath, double from, double to)
    {
        const auto made = CABasicAnimation::animationWithKeyPath(QLatin1String(keyPath));
        made->setFromValue(from);
        made->setToValue(to);
        made->setDuration(0.7);
        return made;
    }
    // To another place in the tree, or out of it for a while.
    void move(std::size_t index)
    {
        const auto moved = m_layers[index];
        const auto& target = any();
        for (const CALayer* above = target.get(); above; above = above->superlayer())
            if (above == moved.get())
                return moved->removeFromSuperlayer();
        target->insertSublayer(moved, below(3));
    }

    ManualScheduler& m_scheduler;
    std::mt19937 m_random;
    std::vector<std::shared_ptr<CALayer>> m_layers; // the first is the root
};

TEST_F(FrameBuilderUpdateTest, IsTheFrameComputedAfreshAfterAnyChange)
{
    for (unsigned seed = 1; seed <= 40; ++seed) {
        layer = CALayer::layer();
        layer->setFrame({ 0, 0, 100, 100 });
        builder = FrameBuilder();
        RandomChanges changes(layer, scheduler, seed);
        FrameList last = update();
        for (int step = 0; step < 150; ++step) {
            for (int count = step % 3; count >= 0; --count)
                changes.change();
            const FrameList& list = update();
            const CAFrame expected = afresh();
            ASSERT_EQ(list, expected.list) << "seed " << seed << ", step " << step << ":\n"
                                           << LayerDump::frame(list).toStdString() << "instead of\n"
                                           << LayerDump::frame(expected.list).toStdString();
            ASSERT_EQ(builder.frame().nextAnimationTime, expected.nextAnimationTime);
            if (list.history.follows(last.history)) {
                for (const int index : list.history.changedItems)
                    last.items[std::size_t(index)] = list.items[std::size_t(index)];
                ASSERT_EQ(list, last) << "seed " << seed << ", step " << step << ": more has changed";
            }
            last = list;
        }
    }
}

} // namespace
