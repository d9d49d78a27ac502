#include "platform/layers/CALayerTree.h"

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/layers/CALayer.h"

#include <cmath>

CALayerTree::CALayerTree(std::shared_ptr<CALayer> root)
    : m_root(std::move(root))
{
    NSParameterAssert(m_root && !m_root->superlayer() && !m_root->tree(), "CALayerTree",
        "root && !root.superlayer && !root.tree");
    m_root->setTree(this, {});
    setNeedsFrame();
}

CALayerTree::~CALayerTree()
{
    m_root->setTree(nullptr, {});
    if (m_wakeUp != Scheduler::TimerID::None && Scheduler::hasCurrent())
        Scheduler::current().cancel(m_wakeUp);
}

void CALayerTree::setNeedsFrame()
{
    m_needsFrame = true;
    if (!m_preparing && Scheduler::hasCurrent())
        Scheduler::current().requestFrame();
}

void CALayerTree::layoutIfNeeded() { m_root->layoutIfNeeded(); }

void CALayerTree::displayIfNeeded() { m_root->displaySubtreeIfNeeded(); }

const FrameList& CALayerTree::makeFrame(const CGSize& size, double scale)
{
    const double now = Scheduler::current().now();
    m_needsFrame = false;
    m_preparing = false;
    m_builder.update(*m_root, now, size, scale);
    wakeForAnimation(m_builder.frame().nextAnimationTime);
    if (m_root->hasPendingLayout())
        setNeedsFrame();
    return m_builder.frame().list;
}

void CALayerTree::wakeForAnimation(double time)
{
    Scheduler& scheduler = Scheduler::current();
    scheduler.cancel(std::exchange(m_wakeUp, Scheduler::TimerID::None));
    const double delay = time - scheduler.now();
    if (delay <= 0)
        setNeedsFrame();
    else if (std::isfinite(delay))
        m_wakeUp = scheduler.schedule(delay, [this] {
            m_wakeUp = Scheduler::TimerID::None;
            setNeedsFrame();
        });
}
