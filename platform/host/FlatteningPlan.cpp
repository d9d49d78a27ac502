#include "platform/host/FlatteningPlan.h"

#include "platform/host/CutPictures.h"
#include "platform/host/FrameGeometry.h"

#include <algorithm>
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
    m_screensPainted = 0;
    m_plannedItems.clear();
    m_touchedItems.clear();
    m_hasOtherWays = false;
    if (m_isSettled && difference.isPartial() && drawsAsMuchAsBefore())
        planTouched();
    else
        planAll();
    std::swap(m_touchedItems, m_touchedBefore);
    m_list = nullptr;
    m_difference = nullptr;
}

void FlatteningPlan::planAll()
{
    const std::size_t count = m_list->items.size();
    std::swap(m_states, m_previousStates);
    m_states.assign(count + 1, State {});
    for (std::size_t index = 0; index < count; ++index) {
        m_states[index].changed = !m_difference->isSubtreeSteady(int(index));
        m_states[index + 1].drawingsBefore
            = m_states[index].drawingsBefore + ownDrawings(m_list->items[index]);
    }
    m_plansAll = true;
    if (count > 0)
        planSubtree(0, {}, Extent::AllItems);
    m_plansAll = false;
    findFlattenedChildren();
    // What is new in a frame is settled in the next one, which plans all once more.
    m_isSettled = m_difference->isPartial() && !m_hasOtherWays;
    m_hasOtherWays = true; // nobody has looked at those that are not in the list any more
    m_isTouched.assign(count, false);
    m_touchedItems.clear();
    if (m_isSettled)
        touchChanges();
    for (const int index : m_touchedItems)
        m_isTouched[std::size_t(index)] = false;
}

void FlatteningPlan::planTouched()
{
    touchChanges();
    const std::size_t changedNow = m_touchedItems.size();
    for (const int index : m_touchedBefore)
        touch(index);
    m_previousStates.resize(m_states.size());
    for (const int index : m_touchedItems) {
        State& state = m_states[std::size_t(index)];
        m_previousStates[std::size_t(index)] = state;
        state.changed = !m_difference->isSubtreeSteady(index);
    }
    const std::vector<int> settling(
        m_touchedItems.begin() + std::ptrdiff_t(changedNow), m_touchedItems.end());
    m_touchedItems.resize(changedNow);
    if (!m_states.empty())
        planSubtree(0, {}, Extent::TouchedItems);
    if (m_hasOtherWays)
        findFlattenedChildren();
    for (const int index : m_touchedItems)
        m_isTouched[std::size_t(index)] = false;
    for (const int index : settling)
        m_isTouched[std::size_t(index)] = false;
}

void FlatteningPlan::touch(int index)
{
    if (m_isTouched[std::size_t(index)])
        return;
    m_isTouched[std::size_t(index)] = true;
    m_touchedItems.push_back(index);
}

void FlatteningPlan::touchChanges()
{
    for (const int changed : m_difference->changedItems()) {
        for (int index = changed; index != FrameDifference::None; index = m_difference->parentIndex(index))
            touch(index);
        if (!m_difference->isTransformEqual(changed))
            for (int index = changed + 1; index < m_list->items[std::size_t(changed)].subtreeEnd; ++index)
                touch(index);
    }
}

bool FlatteningPlan::drawsAsMuchAsBefore() const
{
    const auto& changed = m_difference->changedItems();
    return m_states.size() == m_list->items.size() + 1
        && std::all_of(changed.begin(), changed.end(), [this](int index) {
               return m_states[std::size_t(index) + 1].drawingsBefore
                   - m_states[std::size_t(index)].drawingsBefore
                   == ownDrawings(m_list->items[std::size_t(index)]);
           });
}

void FlatteningPlan::planSubtree(int index, const CGAffineTransform& parentTransform, Extent extent)
{
    if (!m_plansAll && !beginPlanning(index, extent))
        return;
    const FrameItem& item = m_list->items[std::size_t(index)];
    const CGAffineTransform screenTransform = deviceTransform(item, m_list->scale) * parentTransform;
    State& state = m_states[std::size_t(index)];
    if (item.opacity > 0 && drawings(index) > 0) {
        const bool mustBe = mustBePicture(index, screenTransform);
        state.flattenedByMotion = !mustBe && shouldBePicture(index);
        state.way = mustBe || state.flattenedByMotion ? Way::Picture
            : CutPictures::canShow(*m_list, index)    ? Way::CutPictures
                                                      : Way::Nodes;
        m_plannedItems.push_back(index);
    }
    const State* const previous = previousState(index);
    const Way wayBefore = previous ? previous->way : Way::Nothing;
    m_hasOtherWays = m_hasOtherWays || state.way != wayBefore
        || state.flattenedByMotion != (previous && previous->flattenedByMotion);
    if (state.way == Way::Nodes) {
        const Extent extentBelow = wayBefore == Way::Nodes ? extent : Extent::AllItems;
        forEachChild(*m_list, index, [&](int child) { planSubtree(child, screenTransform, extentBelow); });
        return;
    }
    if (!m_plansAll && wayBefore == Way::Nodes)
        forgetWaysBelow(index);
    state.keepsPicture = state.way == Way::Picture && wayBefore == Way::Picture && !state.changed;
    if (state.flattenedByMotion && !state.keepsPicture)
        m_screensPainted += screensCovered(index);
}

// Where only touched items are planned: answers whether this one is to be, and makes room for what comes out.
bool FlatteningPlan::beginPlanning(int index, Extent extent)
{
    State& state = m_states[std::size_t(index)];
    if (extent == Extent::AllItems) {
        if (!m_isTouched[std::size_t(index)])
            m_previousStates[std::size_t(index)] = state;
        m_isTouched[std::size_t(index)] = true;
        m_touchedItems.push_back(index); // it is new, and settled in the next frame
    } else if (!m_isTouched[std::size_t(index)]) {
        return false;
    }
    state.way = Way::Nothing;
    state.keepsPicture = false;
    state.flattenedByMotion = false;
    return true;
}

void FlatteningPlan::forgetWaysBelow(int index)
{
    for (int below = index + 1; below < m_list->items[std::size_t(index)].subtreeEnd; ++below) {
        State& state = m_states[std::size_t(below)];
        state.way = Way::Nothing;
        state.keepsPicture = false;
        state.flattenedByMotion = false;
    }
}

void FlatteningPlan::findFlattenedChildren()
{
    m_hasFlattenedChild.assign(m_list->items.size(), false);
    for (std::size_t index = 0; index < m_list->items.size(); ++index)
        if (m_states[index].flattenedByMotion
            && m_difference->parentIndex(int(index)) != FrameDifference::None)
            m_hasFlattenedChild[std::size_t(m_difference->parentIndex(int(index)))] = true;
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
