// A layer tree on a screen: the root layer, whether a frame is wanted, and the phases of a frame.
//
// Any change of a layer that can be seen marks the tree and asks the scheduler for a frame; so does a
// running animation after each frame. While nothing changes no frame is asked for. The owner runs the
// phases in the order below. A layer can be the root of one tree only, and has no superlayer.
#pragma once

#include "platform/foundation/Scheduler.h"
#include "platform/layers/FrameBuilder.h"

class CALayer;

class CALayerTree {
public:
    explicit CALayerTree(std::shared_ptr<CALayer> root);
    ~CALayerTree();
    CALayerTree(const CALayerTree&) = delete;
    CALayerTree& operator=(const CALayerTree&) = delete;

    const std::shared_ptr<CALayer>& root() const { return m_root; }

    void setNeedsFrame();
    // Whether something changed since the last frame was made.
    bool needsFrame() const { return m_needsFrame; }

    // From here to makeFrame() changes belong to this frame and ask for no other.
    void beginFrame() { m_preparing = true; }
    // Lays out what waits for it, parents before children, until nothing waits. Layouts that ask for one
    // another without end go on in the next frame.
    void layoutIfNeeded();
    // Fills the contents that wait for it. Hidden layers are filled when they are shown.
    void displayIfNeeded();
    // What is to be seen at the scheduler's now(); holds until the next one is made. Asks for the next frame
    // when something moves.
    const FrameList& makeFrame(const CGSize& size, double scale);

private:
    void wakeForAnimation(double time);

    std::shared_ptr<CALayer> m_root;
    bool m_needsFrame = false;
    bool m_preparing = false; // between beginFrame() and makeFrame()
    FrameBuilder m_builder;
    Scheduler::TimerID m_wakeUp = Scheduler::TimerID::None;
};
