// A target and one of its methods: what controls, gesture recognisers, timers and notifications call.
//
// The target is held weakly; a target that is gone is no longer called. Two actions are equal when
// they name the same object and the same method, which is how a registration is found again.
#pragma once

#include "platform/foundation/MethodIdentity.h"
#include "platform/foundation/NSObject.h"

#include <functional>
#include <typeinfo>

class Action {
public:
    Action() = default;

    // A method without arguments, the target's own or an inherited one.
    template <typename Target, typename Class>
    Action(const std::shared_ptr<Target>& target, void (Class::*method)())
        : m_target(target)
        , m_targetIdentity(target.get())
        , m_methodType(&typeid(method))
        , m_method(method)
        , m_call([method](NSObject& object, NSObject*) { (dynamic_cast<Class&>(object).*method)(); })
    {
    }

    // A method that takes the sender; a sender of another kind is not delivered.
    template <typename Target, typename Class, typename Sender>
    Action(const std::shared_ptr<Target>& target, void (Class::*method)(Sender&))
        : m_target(target)
        , m_targetIdentity(target.get())
        , m_methodType(&typeid(method))
        , m_method(method)
        , m_call([method](NSObject& object, NSObject* sender) {
            if (auto* typed = dynamic_cast<Sender*>(sender))
                (dynamic_cast<Class&>(object).*method)(*typed);
        })
    {
    }

    bool hasTarget() const { return !m_target.expired(); }
    bool isTarget(const NSObject& object) const { return m_targetIdentity == &object; }

    // Calls the method and keeps the target alive for the length of the call.
    void perform(NSObject* sender = nullptr) const
    {
        if (const auto target = m_target.lock())
            m_call(*target, sender);
    }

    bool operator==(const Action& other) const
    {
        return m_targetIdentity == other.m_targetIdentity && *m_methodType == *other.m_methodType
            && m_method == other.m_method;
    }

private:
    std::weak_ptr<NSObject> m_target;
    const NSObject* m_targetIdentity = nullptr;
    const std::type_info* m_methodType = &typeid(void); // methods of two bases may look alike
    MethodIdentity m_method;
    std::function<void(NSObject&, NSObject*)> m_call;
};
