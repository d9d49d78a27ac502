#include "platform/views/GestureArena.h"

#include "platform/foundation/Messages.h"
#include "platform/views/UIView.h"

#include <algorithm>

struct GestureArena::Contender {
    const std::shared_ptr<UIGestureRecognizer> recognizer;
    Stage stage = Stage::Watching;
    UIGestureRecognizerState wanted = UIGestureRecognizerState::Possible; // when it need not wait any more
    bool isAsking = false; // whom it has to wait for
    Contenders waitsFor {};
    std::uint64_t untoldBeginning = 0; // the change, until its actions are being sent
    UITouches gone {}; // of its touches, that have left while it waited
};

namespace {

bool mayGoOnTogether(UIGestureRecognizer& first, UIGestureRecognizer& second)
{
    const auto allows = [](UIGestureRecognizer& asked, UIGestureRecognizer& other) {
        const auto delegate = asked.delegate();
        return delegate && delegate->gestureRecognizerShouldRecognizeSimultaneously(asked, other);
    };
    return allows(first, second) || allows(second, first);
}

} // namespace

GestureArena::GestureArena() = default;

GestureArena::~GestureArena() = default;

GestureArena::ContenderPointer GestureArena::find(const UIGestureRecognizer& recognizer) const
{
    const auto found = std::ranges::find_if(
        m_contenders, [&](const auto& contender) { return contender->recognizer.get() == &recognizer; });
    return found == m_contenders.end() ? nullptr : *found;
}

bool GestureArena::isIn(const ContenderPointer& contender) const
{
    return std::ranges::find(m_contenders, contender) != m_contenders.end();
}

bool GestureArena::isUnderWay(const std::shared_ptr<UITouch>& touch) const
{
    return std::ranges::find(m_touches, touch) != m_touches.end();
}

bool GestureArena::isUndecided(const Contender& contender)
{
    return contender.stage == Stage::Watching || contender.stage == Stage::Waiting;
}

// The others that watch one of its touches.
GestureArena::Contenders GestureArena::rivalsOf(const Contender& contender) const
{
    const UITouches& touches = contender.recognizer->touches();
    Contenders rivals;
    std::ranges::copy_if(m_contenders, std::back_inserter(rivals), [&](const auto& other) {
        return other.get() != &contender && std::ranges::any_of(touches, [&](const auto& touch) {
            return other->recognizer->watches(*touch);
        });
    });
    return rivals;
}

// --- Touches -----------------------------------------------------------------------------------------

void GestureArena::touchBegan(const std::shared_ptr<UITouch>& touch, UIEvent& event)
{
    const KeepAlive keepAlive(*this);
    m_touches.push_back(touch);
    UIGestureRecognizers invited;
    const auto touched = touch->view();
    for (const UIView* view = touched.get(); view; view = view->superview()) {
        const auto& own = view->gestureRecognizers();
        invited.insert(invited.end(), own.begin(), own.end());
    }
    std::erase_if(invited, [&](const auto& recognizer) { return !recognizer->shouldReceive({}, *touch); });
    if (!isUnderWay(touch))
        return; // cancelled by one of those who were asked
    touch->setGestureRecognizers({}, invited);
    for (const auto& recognizer : invited)
        join(recognizer, touch);
    tell(touch, event);
}

// All who take part are in before the first of them sees the touch: those who come later count already.
void GestureArena::join(
    const std::shared_ptr<UIGestureRecognizer>& recognizer, const std::shared_ptr<UITouch>& touch)
{
    const UIView* const view = recognizer->view();
    if (!recognizer->isEnabled() || !view || !view->isTouchable())
        return;
    ContenderPointer contender = find(*recognizer);
    if (contender && (contender->stage == Stage::Waiting || contender->stage == Stage::Over))
        return;
    if (!contender) {
        contender = std::make_shared<Contender>(Contender { recognizer });
        m_contenders.push_back(contender);
    }
    recognizer->watch({}, touch, weak_from_this());
}

void GestureArena::touchChanged(const std::shared_ptr<UITouch>& touch, UIEvent& event)
{
    const KeepAlive keepAlive(*this);
    tell(touch, event);
}

void GestureArena::tell(const std::shared_ptr<UITouch>& touch, UIEvent& event)
{
    for (const auto& recognizer : touch->gestureRecognizers()) {
        if (!isUnderWay(touch))
            return; // cancelled by one of those before
        const auto contender = find(*recognizer);
        if (!contender)
            continue;
        recognizer->receive({}, touch, event);
        leaveIfFree(contender); // it may have ignored the touch
    }
}

void GestureArena::touchLeft(const std::shared_ptr<UITouch>& touch)
{
    const KeepAlive keepAlive(*this);
    std::erase(m_touches, touch);
    for (const auto& recognizer : touch->gestureRecognizers()) {
        const auto contender = find(*recognizer);
        if (!contender || !recognizer->watches(*touch))
            continue;
        if (contender->stage == Stage::Waiting) {
            contender->gone.push_back(touch);
            continue;
        }
        recognizer->stopWatching({}, *touch);
        leaveIfFree(contender);
    }
}

bool GestureArena::holdsBack(const UITouch& touch) const
{
    const auto recognizers = touch.gestureRecognizers();
    return std::ranges::any_of(recognizers, [this](const auto& recognizer) {
        const auto contender = recognizer->delaysTouchesBegan() ? find(*recognizer) : nullptr;
        return contender && isUndecided(*contender);
    });
}

// --- Reports -----------------------------------------------------------------------------------------

void GestureArena::gestureReports(UIGestureRecognizer& recognizer, UIGestureRecognizerState state)
{
    const KeepAlive keepAlive(*this);
    const auto contender = find(recognizer);
    if (!contender || contender->stage == Stage::Over)
        return;
    if (contender->stage == Stage::Ahead)
        proceed(contender, state);
    else if (state == UIGestureRecognizerState::Failed)
        decide(contender, state);
    else if (contender->stage == Stage::Waiting)
        contender->wanted = state;
    else
        wait(contender, state);
}

// With nobody to wait for it goes ahead at once.
void GestureArena::wait(const ContenderPointer& contender, UIGestureRecognizerState wanted)
{
    contender->stage = Stage::Waiting;
    contender->wanted = wanted;
    contender->isAsking = true;
    for (const auto& other : possibleRequirementsOf(*contender)) {
        const bool waits = isIn(other) && isUndecided(*other) && !waitsFor(*other, contender)
            && mustWaitFor(*contender, *other);
        if (contender->stage != Stage::Waiting)
            return; // stopped by one of those who were asked
        if (waits && isIn(other) && isUndecided(*other))
            contender->waitsFor.push_back(other);
    }
    contender->isAsking = false;
    if (contender->waitsFor.empty())
        goAhead(contender);
}

GestureArena::Contenders GestureArena::possibleRequirementsOf(const Contender& contender) const
{
    UIGestureRecognizers recognizers = contender.recognizer->requirements();
    for (const auto& touch : contender.recognizer->touches())
        for (const auto& other : touch->gestureRecognizers())
            recognizers.push_back(other);
    Contenders possible;
    for (const auto& recognizer : recognizers) {
        const auto other = find(*recognizer);
        if (other && other.get() != &contender && std::ranges::find(possible, other) == possible.end())
            possible.push_back(other);
    }
    return possible;
}

bool GestureArena::mustWaitFor(Contender& contender, Contender& other)
{
    UIGestureRecognizer& first = *contender.recognizer;
    UIGestureRecognizer& second = *other.recognizer;
    const auto required = first.requirements();
    if (std::ranges::find(required, other.recognizer) != required.end())
        return true;
    const auto own = first.delegate();
    if (own && own->gestureRecognizerShouldRequireFailure(first, second))
        return true;
    const auto others = second.delegate();
    return others && others->gestureRecognizerShouldBeRequiredToFail(second, first);
}

// Also by way of others.
bool GestureArena::waitsFor(const Contender& contender, const ContenderPointer& other)
{
    return std::ranges::any_of(contender.waitsFor,
        [&](const auto& waitedFor) { return waitedFor == other || waitsFor(*waitedFor, other); });
}

void GestureArena::goAhead(const ContenderPointer& contender)
{
    const bool may = mayBegin(*contender);
    if (contender->stage == Stage::Waiting) // still, after all who were asked
        decide(contender, may ? contender->wanted : UIGestureRecognizerState::Failed);
}

bool GestureArena::mayBegin(const Contender& contender) const
{
    UIGestureRecognizer& recognizer = *contender.recognizer;
    const auto required = recognizer.requirements();
    if (std::ranges::any_of(required, [](const auto& other) { return other->isRecognized(); }))
        return false;
    if (!recognizer.mayBegin({}))
        return false;
    const auto rivals = rivalsOf(contender);
    return std::ranges::all_of(rivals, [&](const auto& rival) {
        return !rival->recognizer->isRecognized() || mayGoOnTogether(recognizer, *rival->recognizer);
    });
}

// --- Decisions ---------------------------------------------------------------------------------------

void GestureArena::decide(const ContenderPointer& contender, UIGestureRecognizerState state)
{
    const bool goesAhead = state != UIGestureRecognizerState::Failed;
    const bool goesOn = goesAhead && state != UIGestureRecognizerState::Ended;
    UIGestureRecognizer& recognizer = *contender->recognizer;
    contender->stage = goesOn ? Stage::Ahead : Stage::Over;
    contender->waitsFor.clear();
    const auto change = recognizer.enter({}, state);
    contender->untoldBeginning = goesOn ? change : 0;
    if (goesAhead)
        failRivals(*contender);
    if (goesAhead && recognizer.cancelsTouchesInView())
        if (const auto observer = m_observer.lock())
            observer->gestureTakesTouches(recognizer);
    if (const auto observer = m_observer.lock())
        observer->gestureWasDecided();
    settleThoseWaitingFor(contender, goesAhead);
    contender->untoldBeginning = 0;
    if (goesAhead)
        recognizer.sendActions({}, change);
    for (const auto& touch : std::exchange(contender->gone, {}))
        recognizer.stopWatching({}, *touch);
    leaveIfFree(contender);
}

void GestureArena::failRivals(const Contender& contender)
{
    const auto rivals = rivalsOf(contender);
    for (const auto& rival : rivals)
        if (isIn(rival) && isUndecided(*rival) && !mayGoOnTogether(*contender.recognizer, *rival->recognizer)
            && isUndecided(*rival))
            decide(rival, UIGestureRecognizerState::Failed);
}

void GestureArena::settleThoseWaitingFor(const ContenderPointer& contender, bool wentAhead)
{
    Contenders waiting;
    for (const auto& other : m_contenders)
        if (std::erase(other->waitsFor, contender) > 0)
            waiting.push_back(other);
    for (const auto& other : waiting) {
        if (!isIn(other) || other->stage != Stage::Waiting)
            continue;
        if (wentAhead)
            decide(other, UIGestureRecognizerState::Failed);
        else if (other->waitsFor.empty() && !other->isAsking)
            goAhead(other);
    }
}

void GestureArena::proceed(const ContenderPointer& contender, UIGestureRecognizerState state)
{
    UIGestureRecognizer& recognizer = *contender->recognizer;
    if (contender->untoldBeginning != 0 && state == UIGestureRecognizerState::Changed)
        return; // the beginning is about to be told, with what has changed since
    if (contender->untoldBeginning != 0 && state == UIGestureRecognizerState::Ended)
        recognizer.sendActions({}, std::exchange(contender->untoldBeginning, 0)); // before the end is
    if (!isIn(contender) || contender->stage != Stage::Ahead)
        return; // stopped by one of those who were told
    contender->stage = state == UIGestureRecognizerState::Changed ? Stage::Ahead : Stage::Over;
    const auto change = recognizer.enter({}, state);
    recognizer.sendActions({}, change);
    leaveIfFree(contender);
}

// Comes to an end what has no touch any more and waits for none, and lets go what is at its end.
void GestureArena::leaveIfFree(const ContenderPointer& contender)
{
    UIGestureRecognizer& recognizer = *contender->recognizer;
    if (!isIn(contender) || !recognizer.touches().empty())
        return;
    if (contender->stage == Stage::Over) {
        std::erase(m_contenders, contender);
        recognizer.becomePossible({});
    } else if (contender->stage != Stage::Waiting && !recognizer.waitsForMore({})) {
        const bool isAhead = contender->stage == Stage::Ahead;
        gestureReports(
            recognizer, isAhead ? UIGestureRecognizerState::Cancelled : UIGestureRecognizerState::Failed);
    }
}

// --- Withdrawal --------------------------------------------------------------------------------------

UIGestureRecognizers GestureArena::recognizersIn(const UIView& root) const
{
    UIGestureRecognizers inside;
    for (const auto& contender : m_contenders)
        if (contender->recognizer->view() && root.containsView(*contender->recognizer->view()))
            inside.push_back(contender->recognizer);
    return inside;
}

void GestureArena::withdraw(UIGestureRecognizer& recognizer)
{
    const KeepAlive keepAlive(*this);
    const auto contender = find(recognizer);
    if (!contender)
        return;
    UIView::performWithoutAnimation([&] {
        if (contender->stage == Stage::Ahead)
            proceed(contender, UIGestureRecognizerState::Cancelled);
        else if (isUndecided(*contender))
            decide(contender, UIGestureRecognizerState::Failed);
    });
    if (!isIn(contender))
        return; // taken out by one of those who were told
    contender->gone.clear();
    recognizer.stopWatchingAll({});
    leaveIfFree(contender);
}

void GestureArena::withdrawAll()
{
    const auto all = m_contenders;
    for (const auto& contender : all)
        if (isIn(contender))
            withdraw(*contender->recognizer);
}
