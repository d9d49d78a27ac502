// What one frame costs before anything is drawn: a list of thirty rows in sight is scrolled, and a frame
// list is computed from its layers; the same with a ring that spins in each row.
#include "platform/foundation/Scheduler.h"
#include "platform/graphics/UIColor.h"
#include "platform/graphics/UIImage.h"
#include "platform/layers/CABasicAnimation.h"
#include "platform/layers/CALayerTree.h"
#include "platform/layers/CAShapeLayer.h"

#include <benchmark/benchmark.h>

#include <numbers>

namespace {

class StillScheduler final : public Scheduler {
public:
    StillScheduler() { setCurrent(this); }
    NSDate currentDate() const override { return NSDate::fromSecsSinceEpoch(0); }

protected:
    double clockNow() const override { return 0; }
    void wakeAt(double) override { }
    void wakeForFrame() override { }
};

// A phone's screen: a root, a list that clips, ten rows of nine layers; about a hundred in all.
class Screen {
public:
    explicit Screen(bool spinning)
        : m_list(CALayer::layer())
        , m_tree(CALayer::layer())
    {
        m_tree.root()->setFrame(screen);
        m_list->setFrame(screen);
        m_list->setMasksToBounds(true);
        m_list->setBackgroundColor(UIColor::systemBackgroundColor());
        m_tree.root()->addSublayer(m_list);
        const auto picture = UIImage::imageWithQImage(QImage(80, 40, QImage::Format_ARGB32_Premultiplied), 2);
        const double rowHeight = screen.height() / 10;
        for (int index = 0; index < 11; ++index) {
            const auto row = CALayer::layer();
            row->setFrame({ 0, index * rowHeight, screen.width(), rowHeight });
            row->setBackgroundColor(UIColor::systemBackgroundColor());
            for (int part = 0; part < 7; ++part) {
                const auto label = CALayer::layer();
                label->setFrame({ 40.0 * part, 10, 40, 20 });
                label->setContents(picture);
                row->addSublayer(label);
            }
            row->addSublayer(ring(spinning));
            m_list->addSublayer(row);
        }
    }

    void scrollTo(double y) { m_list->setBounds({ 0, y, screen.width(), screen.height() }); }
    const FrameList& frame() { return m_tree.makeFrame(screen.size(), 2); }

private:
    static std::shared_ptr<CALayer> ring(bool spinning)
    {
        const auto shape = CAShapeLayer::layer();
        shape->setFrame({ 300, 10, 40, 40 });
        shape->setFillColor(nullptr);
        shape->setStrokeColor(UIColor::systemBlueColor());
        shape->setPath(UIBezierPath::bezierPathWithArcCenter(
            { 20, 20 }, 19, 1.5 * std::numbers::pi, 3.5 * std::numbers::pi, true));
        if (spinning) {
            const auto spin = CABasicAnimation::animationWithKeyPath(QStringLiteral("transform.rotation.z"));
            spin->setFromValue(0.0);
            spin->setToValue(2 * std::numbers::pi);
            spin->setDuration(0.6);
            spin->setRepeatCount(3.4028235e38);
            shape->addAnimation(spin, QStringLiteral("spin"));
        }
        return shape;
    }

    static constexpr CGRect screen { 0, 0, 390, 844 };
    StillScheduler m_scheduler;
    std::shared_ptr<CALayer> m_list;
    CALayerTree m_tree;
};

void scrollFrames(benchmark::State& state, bool spinning)
{
    Screen screen(spinning);
    double y = 0;
    std::size_t items = 0;
    for (auto _ : state) {
        y = y < 80 ? y + 1 : 0;
        screen.scrollTo(y);
        const FrameList list = screen.frame();
        items = list.items.size();
        benchmark::DoNotOptimize(list.items.data());
    }
    state.counters["items"] = static_cast<double>(items);
}

const bool isSpinning = true;
BENCHMARK_CAPTURE(scrollFrames, still, !isSpinning);
BENCHMARK_CAPTURE(scrollFrames, spinning, isSpinning);

} // namespace

BENCHMARK_MAIN();
