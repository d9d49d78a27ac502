// Layouts that change at random, and are held to what every layout promises.
//
// Each view has a secret frame. Only constraints that hold between the secret frames are ever made required,
// so whatever comes and goes, there is a layout in which all of them hold: the engine must report no conflict
// and find such a one, though it need not be the secret one.
#include "platform/layout/LayoutIsland.h"
#include "tests/platform/layout/LayoutFixture.h"

#include <random>

namespace {

class LayoutRandomTest : public LayoutFixture, public ::testing::WithParamInterface<int> {
protected:
    struct Actor {
        std::shared_ptr<ContentView> view;
        CGRect secret; // in the superview's coordinates
    };
    struct Rule {
        std::shared_ptr<NSLayoutConstraint> constraint;
        std::weak_ptr<UIView> first;
        std::weak_ptr<UIView> second;
        UIView* holder;
    };

    int below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(m_random); }
    CGRect randomFrame()
    {
        return { below(200) / 2.0, below(200) / 2.0, below(200) / 2.0 + 1, below(200) / 2.0 + 1 };
    }

    static std::weak_ptr<UIView> weakOf(UIView& view)
    {
        return std::static_pointer_cast<UIView>(view.shared_from_this());
    }

    // --- The secret ------------------------------------------------------------------------------------

    const Actor* actorOf(const UIView* view) const
    {
        for (const Actor& actor : m_actors)
            if (actor.view.get() == view)
                return &actor;
        return nullptr;
    }
    static CGRect realOf(const UIView& view)
    {
        const CGSize size = view.bounds().size();
        return { view.center() - CGPoint(size.width() / 2, size.height() / 2), size };
    }
    CGRect secretOf(const UIView& view) const
    {
        const Actor* actor = actorOf(&view);
        return actor ? actor->secret : realOf(view);
    }
    // The frame in the holder's coordinates, by the secret frames or by the real ones.
    CGRect frameIn(const UIView& holder, const UIView& view, bool isSecret) const
    {
        const auto frameOf = [&](const UIView& one) { return isSecret ? secretOf(one) : realOf(one); };
        CGRect place(CGPoint(), frameOf(view).size());
        for (const UIView* outer = &view; outer != &holder; outer = outer->superview())
            place.translate(frameOf(*outer).topLeft());
        return place;
    }
    static double valueOf(const CGRect& frame, NSLayoutAttribute attribute)
    {
        switch (attribute) {
        case Left:
            return frame.left();
        case Right:
            return frame.right();
        case CenterX:
            return frame.center().x();
        case Top:
            return frame.top();
        case Bottom:
            return frame.bottom();
        case CenterY:
            return frame.center().y();
        case Width:
            return frame.width();
        default:
            return frame.height();
        }
    }
    double errorOf(const Rule& rule, const UIView& first, const UIView& second, bool isSecret) const
    {
        const auto& constraint = *rule.constraint;
        const double error = valueOf(frameIn(*rule.holder, first, isSecret), constraint.firstAttribute())
            - constraint.multiplier()
                * valueOf(frameIn(*rule.holder, second, isSecret), constraint.secondAttribute())
            - constraint.constant();
        switch (constraint.relation()) {
        case NSLayoutRelation::LessThanOrEqual:
            return std::max(error, 0.0);
        case NSLayoutRelation::GreaterThanOrEqual:
            return std::min(error, 0.0);
        default:
            return error;
        }
    }

    // --- What may happen ---------------------------------------------------------------------------------

    UIView& randomView()
    {
        const int index = below(int(m_actors.size()) + 1);
        return index == 0 ? *container : static_cast<UIView&>(*m_actors[std::size_t(index - 1)].view);
    }
    void addActor()
    {
        UIView& superview = randomView();
        Actor actor { addTo<ContentView>(superview), randomFrame() };
        if (below(4) == 0) {
            actor.view->setTranslatesAutoresizingMaskIntoConstraints(true);
            actor.view->setFrame(actor.secret);
        }
        m_actors.push_back(actor);
    }
    void addRule()
    {
        static constexpr NSLayoutAttribute horizontal[] = { Left, Right, CenterX };
        static constexpr NSLayoutAttribute vertical[] = { Top, Bottom, CenterY };
        static constexpr NSLayoutAttribute sizes[] = { Width, Height };
        UIView& first = randomView();
        UIView& second = randomView();
        const int kind = below(3);
        const auto pick = [&] {
            return kind == 0 ? horizontal[below(3)] : kind == 1 ? vertical[below(3)] : sizes[below(2)];
        };
        const double multiplier = below(3) == 0 ? below(8) / 4.0 : 1;
        const auto relation = static_cast<NSLayoutRelation>(below(3) - 1);
        const auto constraint
            = NSLayoutConstraint::constraintWithItem(first, pick(), relation, &second, pick(), multiplier, 0);
        constraint->setActive(true);
        Rule rule { constraint, weakOf(first), weakOf(second), dynamic_cast<UIView*>(constraint->holder()) };
        makeTrue(rule, first, second);
        m_rules.push_back(rule);
        if (below(3) == 0) {
            constraint->setPriority(1 + below(999));
            constraint->setConstant(below(400) - 200);
        }
    }
    // Gives it the constant with which it holds.
    void makeTrue(Rule& rule, const UIView& first, const UIView& second)
    {
        const auto& constraint = *rule.constraint;
        const double distance = valueOf(frameIn(*rule.holder, first, true), constraint.firstAttribute())
            - constraint.multiplier()
                * valueOf(frameIn(*rule.holder, second, true), constraint.secondAttribute());
        const double room = below(3) * 5 * static_cast<int>(constraint.relation());
        rule.constraint->setConstant(distance - room);
    }
    void removeRule()
    {
        if (m_rules.empty())
            return;
        const auto index = std::size_t(below(int(m_rules.size())));
        m_rules[index].constraint->setActive(false);
        m_rules.erase(m_rules.begin() + std::ptrdiff_t(index));
    }
    void removeActor()
    {
        if (m_actors.size() < 4)
            return;
        const auto gone = m_actors[std::size_t(below(int(m_actors.size())))].view;
        gone->removeFromSuperview();
        std::erase_if(m_actors, [&](const Actor& actor) { return gone->containsView(*actor.view); });
        std::erase_if(m_rules, [&](const Rule& rule) { return isInside(*gone, rule); });
    }
    static bool isInside(const UIView& gone, const Rule& rule)
    {
        const auto first = rule.first.lock();
        const auto second = rule.second.lock();
        return !first || !second || gone.containsView(*first) || gone.containsView(*second);
    }
    void moveActor()
    {
        if (m_actors.empty())
            return;
        Actor& actor = m_actors[std::size_t(below(int(m_actors.size())))];
        UIView& to = randomView();
        if (actor.view->containsView(to) || actor.view->superview() == &to)
            return;
        to.addSubview(actor.view);
        std::erase_if(m_rules, [](const Rule& rule) { return !rule.constraint->isActive(); });
    }
    void changeContent()
    {
        if (!m_actors.empty())
            m_actors[std::size_t(below(int(m_actors.size())))].view->setContentSize(
                { double(below(100)) - 1, double(below(100)) - 1 });
    }
    // The frame is given from now on, or found: what was said about it goes.
    void changeRole()
    {
        if (m_actors.empty())
            return;
        Actor& actor = m_actors[std::size_t(below(int(m_actors.size())))];
        const bool gives = !actor.view->translatesAutoresizingMaskIntoConstraints();
        actor.view->setTranslatesAutoresizingMaskIntoConstraints(gives);
        if (gives)
            actor.view->setFrame(actor.secret);
    }
    void happen()
    {
        switch (below(16)) {
        case 0:
        case 1:
            return m_actors.size() < 14 ? addActor() : removeActor();
        case 2:
            return removeActor();
        case 3:
        case 4:
        case 5:
            return removeRule();
        case 6:
            return moveActor();
        case 7:
            return changeContent();
        case 8:
            return changeRole();
        case 9:
            return container->setNeedsLayout();
        default:
            return addRule();
        }
    }
    void expectAllToHold(int step)
    {
        window->layoutIfNeeded();
        ASSERT_TRUE(conflicts.empty()) << "step " << step << ": " << conflicts[0].broken.toStdString();
        for (const Rule& rule : m_rules) {
            ASSERT_TRUE(rule.constraint->isActive());
            if (rule.constraint->priority() < UILayoutPriorityRequired)
                continue;
            const auto first = rule.first.lock();
            const auto second = rule.second.lock();
            ASSERT_NEAR(errorOf(rule, *first, *second, false), 0, 1e-6)
                << "step " << step << ": " << rule.constraint->description().toStdString() << "\n"
                << LayoutIsland::islandOf(*rule.constraint)->description().toStdString();
        }
        for (const Actor& actor : m_actors)
            if (actor.view->translatesAutoresizingMaskIntoConstraints()) {
                ASSERT_EQ(realOf(*actor.view), actor.secret) << "step " << step;
            }
    }

    std::mt19937 m_random { static_cast<unsigned>(GetParam()) };
    std::vector<Actor> m_actors;
    std::vector<Rule> m_rules;
};

TEST_P(LayoutRandomTest, KeepsEveryRequiredConstraint)
{
    for (int step = 0; step < 400; ++step) {
        happen();
        if (below(4) != 0)
            continue;
        expectAllToHold(step);
        if (HasFatalFailure())
            return;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, LayoutRandomTest, ::testing::Range(1, 41));

} // namespace
