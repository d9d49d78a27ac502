// Weakly held listeners that may be added, removed or destroyed while they are being told.
//
// A listener that is added during a notification is called from the next one on; one that is removed
// during it is not called again.
#pragma once

#include <algorithm>
#include <memory>
#include <vector>

template <typename Listener> class ObserverList {
public:
    void add(std::weak_ptr<Listener> listener) { m_listeners.push_back(std::move(listener)); }

    void remove(const Listener& listener)
    {
        std::erase_if(m_listeners, [&](const std::weak_ptr<Listener>& held) {
            const auto alive = held.lock();
            return !alive || alive.get() == &listener;
        });
    }

    bool isEmpty() const
    {
        return std::none_of(
            m_listeners.begin(), m_listeners.end(), [](const auto& held) { return !held.expired(); });
    }

    template <typename Message> void tell(Message message)
    {
        const auto told = m_listeners;
        for (const auto& held : told) {
            const auto listener = held.lock();
            if (listener && contains(*listener))
                message(*listener);
        }
        std::erase_if(m_listeners, [](const auto& held) { return held.expired(); });
    }

private:
    bool contains(const Listener& listener) const
    {
        return std::any_of(m_listeners.begin(), m_listeners.end(),
            [&](const auto& held) { return held.lock().get() == &listener; });
    }

    std::vector<std::weak_ptr<Listener>> m_listeners;
};
