#include "platform/host/FlatteningPlan.h"

#include "platform/host/FrameGeometry.h"

#include <utility>

using namespace FrameGeometry;

namespace {

// How large a picture may be, in screens: what moves is worth no more memory than it covers; what cannot
// be right otherwise may be larger, but never without bound.
constexpr double largestMovingPicture = 1;
constexpr double largestNeededPicture = 4;
// A frame begins no further picture when it has painted this much, in screens: a list that starts to move
// would else begin with one long frame. The others follow in the next ones, if they still move.
constexpr double enoughPainted = 0.25;

int ownDrawings(const FrameItem& item) { return int(drawsBackground(item)) + int(drawsContent(item)); }

} // namespace

void FlatteningPlan::plan(const FrameList& list, const FrameDifference& difference)
{
    m_list = &list;
    m_difference = &difference;
    std::swap(m_states, m_previousStates);
    m_states.assign(list.items.size() + 1, State {});
    for (std::size_t index = 0; index < list.items.size(); ++index) {
        m_states[index].changed = !difference.isSubtreeSteady(int(index));
        m_states[index + 1].drawingsBefore = m_states[index].drawingsBefore + ownDrawings(list.items[index]);
    }
    m_screensPainted = 0;
    if (!list.items.empty())
        planSubtree(0, {});
    m_hasFlattenedChild.assign(list.items.size(), false);
    for (std::size_t index = 0; index < list.items.size(); ++index)
        if (m_states[index].flattenedByMotion && difference.parentIndex(int(index)) != FrameDifference::None)
            m_hasFlattenedChild[std::size_t(difference.parentIndex(int(index)))] = true;
    m_list = nullptr;
    m_difference = nullptr;
}

void FlatteningPlan::planSubtree(int index, const CGAffineTransform& parentTransform)
{
    const FrameItem& item = m_list->items[std::size_t(index)];
    if (item.opacity <= 0 || drawings(index) == 0)
        return;
    const CGAffineTransform screenTransform = deviceTransform(item, m_list->scale) * parentTransform;
    State& state = m_states[std::size_t(index)];
    state.way = Way::Picture;
    if (!mustBePicture(index, screenTransform)) {
        state.flattenedByMotion = shouldBePicture(index);
        if (!state.flattenedByMotion)
            state.way = Way::Nodes;
    }
    if (state.way == Way::Nodes) {
        forEachChild(*m_list, index, [&](int child) { planSubtree(child, screenTransform); });
        return;
    }
    const State* previous = previousState(index);
    state.keepsPicture = previous && previous->way == Way::Picture && !state.changed;
    if (state.flattenedByMotion && !state.keepsPicture)
        m_screensPainted += screensCovered(index);
}

bool FlatteningPlan::mustBePicture(int index, const CGAffineTransform& screenTransform) const
{
    const FrameItem& item = m_list->items[std::size_t(index)];
    const int drawn = drawings(index);
    const bool hasOthers = drawn > ownDrawings(item);
    const bool fadesAsGroup = item.opacity < 1 && drawn > 1;
    const bool clipsTurned = item.clipsToBounds && screenTransform.type() > QTransform::TxScale;
    if (!fadesAsGroup && !clipsTurned && !(clipsRoundedly(item) && hasOthers))
        return false;
    return screensCovered(index) <= largestNeededPicture;
}

bool FlatteningPlan::shouldBePicture(int index) const
{
    // The root is the screen itself: it does not move.
    if (!m_flattensMoving || drawings(index) < 2 || index == 0)
        return false;
    if (arrivesAmongFlattened(index))
        return mayBePainted(index);
    if (m_states[std::size_t(index)].changed)
        return false;
    const State* previous = previousState(index);
    if (previous && previous->flattenedByMotion)
        return true;
    return m_difference->hasMoved(index) && mayBePainted(index);
}

// A row that comes into a moving list, or is used again in it, will move on like the others. What keeps
// changing while it moves is cheaper as nodes.
bool FlatteningPlan::arrivesAmongFlattened(int index) const
{
    const int parent = m_difference->parentIndex(index);
    const int previousParent
        = parent == FrameDifference::None ? FrameDifference::None : m_difference->previousIndex(parent);
    if (previousParent == FrameDifference::None || !m_hasFlattenedChild[std::size_t(previousParent)])
        return false;
    const State* previous = previousState(index);
    return m_states[std::size_t(index)].changed && m_difference->hasMoved(index)
        && (!previous || !previous->changed);
}

bool FlatteningPlan::mayBePainted(int index) const
{
    return m_screensPainted < enoughPainted && screensCovered(index) <= largestMovingPicture;
}

double FlatteningPlan::screensCovered(int index) const
{
    const CGRect extent = subtreeExtent(*m_list, index);
    const CGRect screen = deviceRect({ CGPoint(), m_list->size }, m_list->scale);
    return extent.width() * extent.height() / (screen.width() * screen.height());
}

int FlatteningPlan::drawings(int index) const
{
    const int end = m_list->items[std::size_t(index)].subtreeEnd;
    return m_states[std::size_t(end)].drawingsBefore - m_states[std::size_t(index)].drawingsBefore;
}

const FlatteningPlan::State* FlatteningPlan::previousState(int index) const
{
    const int previous = m_difference->previousIndex(index);
    return previous == FrameDifference::None ? nullptr : &m_previousStates[std::size_t(previous)];
}
