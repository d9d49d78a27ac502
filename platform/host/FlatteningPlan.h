// Decides which subtrees of a frame are drawn as one picture each.
//
// Some must be: what fades as one thing, and what rounded corners or a turned clip cut. The others are
// flattened because they move and nothing in them changes: a row of a scrolling list is then one picture
// to move instead of ten. Such a picture is kept when the motion stops, until something in it changes.
// When much begins to move at once, only as much is flattened in each frame as leaves it short.
// Only the topmost such subtrees count; what lies in a picture is not asked about.
// Where only some items have changed, only those, what holds them and what has moved are planned anew.
#pragma once

#include "platform/host/FrameDifference.h"

#include <cstdint>

class FlatteningPlan {
public:
    enum class Way : std::uint8_t {
        Nodes, // each of the layer's drawings is a node of its own
        Picture, // the subtree is one picture
        CutPictures, // the subtree is the visible parts of its pictures
        Nothing, // not drawn by itself: wholly transparent, or part of what a layer above it shows
    };

    // With No, only what must be one picture is flattened: the plain form that the other is measured against.
    enum class FlattensMoving : bool { No, Yes };
    explicit FlatteningPlan(FlattensMoving flattensMoving = FlattensMoving::Yes)
        : m_flattensMoving(flattensMoving == FlattensMoving::Yes)
    {
    }

    // Plans the next frame; the difference is that of the list to the one planned before.
    void plan(const FrameList& list, const FrameDifference& difference);

    Way way(int index) const { return m_states[std::size_t(index)].way; }
    // The items that were planned anew, and whether one of all the items is drawn another way than before.
    const std::vector<int>& plannedItems() const { return m_plannedItems; }
    bool hasOtherWays() const { return m_hasOtherWays; }
    // Whether the picture of the subtree in the frame before shows this frame's subtree, too.
    bool keepsPicture(int index) const { return m_states[std::size_t(index)].keepsPicture; }

private:
    struct State {
        Way way = Way::Nothing;
        bool keepsPicture = false;
        bool flattenedByMotion = false;
        bool changed = false; // was not as in the frame before it
        int drawingsBefore = 0; // things drawn by the items before this one
    };

    // Which items below one are planned anew.
    enum class Extent : std::uint8_t { TouchedItems, AllItems };

    void planAll();
    void planTouched();
    void touch(int index);
    void touchChanges();
    bool drawsAsMuchAsBefore() const;
    void planSubtree(int index, const CGAffineTransform& parentTransform, Extent extent);
    bool beginPlanning(int index, Extent extent);
    void forgetWaysBelow(int index);
    void findFlattenedChildren();
    bool mustBePicture(int index, const CGAffineTransform& screenTransform) const;
    bool shouldBePicture(int index) const;
    bool arrivesAmongFlattened(int index) const;
    bool mayBePainted(int index) const;
    double screensCovered(int index) const;
    int drawings(int index) const;
    const State* previousState(int index) const;

    bool m_flattensMoving;
    const FrameList* m_list = nullptr; // only while planning
    const FrameDifference* m_difference = nullptr;
    double m_screensPainted = 0; // for what moves, in this frame
    std::vector<State> m_states; // one more than the list has, for the last sum
    std::vector<State> m_previousStates; // where only touched items are planned: of those
    std::vector<bool> m_hasFlattenedChild; // by index in the list planned before, then in this one
    std::vector<int> m_plannedItems;
    std::vector<bool>
        m_isTouched; // by index: changed, moved, or holding what has changed, now or just before
    std::vector<int> m_touchedItems; // in this frame
    std::vector<int> m_touchedBefore; // in the frame before: what was new then is settled now
    bool m_isSettled = false; // all that was not touched in the frame before
    bool m_plansAll = false;
    bool m_hasOtherWays = false;
};
