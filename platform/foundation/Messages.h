// Messages whose receiver may drop the sender: delegates, data sources, observers, targets.
//
// The owner of an object may let it go from inside any message that the object sends. So a sender holds
// itself for as long as it has something left to do, and holds a delegate, which it knows only weakly, for
// the length of the call.
#pragma once

#include "platform/foundation/NSObject.h"

#include <utility>

// Holds an object until the end of the enclosing block. Holds nothing while the object is being made or is
// already going: then nobody owns it who could drop it.
class [[nodiscard]] KeepAlive {
public:
    template <typename Shared>
    explicit KeepAlive(const std::enable_shared_from_this<Shared>& object)
        : m_object(object.weak_from_this().lock())
    {
    }
    // Of none it holds nothing.
    explicit KeepAlive(const NSObject* object)
        : m_object(object ? object->weak_from_this().lock() : nullptr)
    {
    }
    KeepAlive(const KeepAlive&) = delete;
    KeepAlive& operator=(const KeepAlive&) = delete;

    // Whether there is an object, and it has an owner.
    bool holds() const { return m_object != nullptr; }

private:
    const std::shared_ptr<const void> m_object;
};

// Sends one message, and keeps sender and receiver alive until it returns. Answers what the receiver answers;
// without a receiver the zero value of that type. The sender is no argument of the message by itself:
//
//     sendMessage(*this, m_delegate, &ORVRecordPlayerDelegate::recordPlayerDidEndPlayback, *this);
template <typename Receiver, typename Protocol, typename Answer, typename... Parameters,
    typename... Arguments>
Answer sendMessage(const NSObject& sender, const std::weak_ptr<Receiver>& receiver,
    Answer (Protocol::*message)(Parameters...), Arguments&&... arguments)
{
    const KeepAlive keepAlive(sender);
    const std::shared_ptr<Receiver> held = receiver.lock();
    return held ? ((*held).*message)(std::forward<Arguments>(arguments)...) : Answer();
}
