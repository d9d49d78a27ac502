// The root class: identity, equality, description, and key-value observing.
//
// Objects with shared identity are made with make<T>(…), never with a naked new. make() runs the
// constructor and then init(), where virtual calls and shared_from_this() already work.
// Main thread only, unless a subclass says otherwise.
#pragma once

#include "platform/foundation/FoundationTypes.h"

#include <cstddef>
#include <memory>
#include <typeinfo>
#include <utility>

class KeyValueObservers;

class NSObject : public std::enable_shared_from_this<NSObject> {
public:
    NSObject();
    virtual ~NSObject();
    NSObject(const NSObject&) = delete;
    NSObject& operator=(const NSObject&) = delete;

    NSString className() const;
    static NSString nameOfClass(const std::type_info&);
    template <typename Class> bool isKindOfClass() const
    {
        return dynamic_cast<const Class*>(this) != nullptr;
    }
    // Exact class comparison: an instance of a subclass is no member.
    template <typename Class> bool isMemberOfClass() const { return typeid(*this) == typeid(Class); }

    virtual bool isEqual(const NSObject* other) const { return this == other; }
    virtual std::size_t hash() const;
    // "<ClassName: 0xADDRESS>"; subclasses append to it.
    virtual NSString description() const;
    virtual NSString debugDescription() const { return description(); }

    // --- Key-value observing -------------------------------------------------------------------------

    // Tells the observer about changes of this object's value until it is removed or gone. The same
    // observer may be added several times, with different contexts or the same. It must be made by make()
    // and be past its constructor.
    void addObserver(NSObject& observer, const NSString& keyPath, const void* context);
    // Removes one registration, the newest that matches. An unknown one is a programming error.
    void removeObserver(const NSObject& observer, const NSString& keyPath, const void* context);
    // observeValueForKeyPath:ofObject:change:context: — a context that an observer does not know goes on
    // to its superclass; here, at the root, it is a programming error.
    virtual void observeValueForKeyPath(const NSString& keyPath, NSObject& object, const void* context);

    // Announces a change by hand. Calls nest; the observers are told at each didChange.
    void willChangeValueForKey(const NSString& key);
    void didChangeValueForKey(const NSString& key);

protected:
    // Set-up that needs virtual calls or shared_from_this(). Subclasses call the base class first.
    virtual void init() { }

    // automaticallyNotifiesObserversOf<Key> — answer false for a key whose setter announces by hand.
    virtual bool automaticallyNotifiesObserversForKey(const NSString&) const { return true; }

    // What a setter is wrapped in: announces the change of a key unless the class does that by hand.
    class [[nodiscard]] AutomaticChange {
    public:
        AutomaticChange(NSObject& object, const NSString& key);
        ~AutomaticChange();
        AutomaticChange(const AutomaticChange&) = delete;
        AutomaticChange& operator=(const AutomaticChange&) = delete;

    private:
        const std::shared_ptr<NSObject> m_keepAlive; // an observer may drop the object inside its setter
        NSObject& m_object;
        NSString m_key;
        bool m_notifies;
    };

    // This object, typed, as the strong or weak reference that callbacks capture.
    template <typename Class> std::shared_ptr<Class> strongSelf(Class*)
    {
        return std::static_pointer_cast<Class>(shared_from_this());
    }
    template <typename Class> std::weak_ptr<Class> weakSelf(Class* self) { return strongSelf(self); }

private:
    template <typename Class, typename... Arguments>
    friend std::shared_ptr<Class> make(Arguments&&... arguments);

    std::unique_ptr<KeyValueObservers> m_observers; // made with the first observer
};

// A class whose objects have something to do at their end that needs them whole: virtual calls, an owner,
// shared_from_this(). willBeDestroyed() is sent once, when the last owner has let the object go and nothing
// of it has been taken down. Who takes hold of it inside that message keeps it for so long.
template <typename Class>
concept EndsWhole = requires(Class& object)
{
    object.willBeDestroyed();
};

// What the last owner of such an object leaves behind. Weak references from before find nothing any more.
template <EndsWhole Class> void destroyWhole(Class* object)
{
    const std::shared_ptr<Class> lastOwner(object);
    lastOwner->willBeDestroyed();
}

// The one way to make an object that is shared.
template <typename Class, typename... Arguments> std::shared_ptr<Class> make(Arguments&&... arguments)
{
    std::shared_ptr<Class> object;
    if constexpr (EndsWhole<Class>)
        object.reset(
            std::make_unique<Class>(std::forward<Arguments>(arguments)...).release(), &destroyWhole<Class>);
    else
        object = std::make_shared<Class>(std::forward<Arguments>(arguments)...);
    static_cast<NSObject&>(*object).init();
    return object;
}

// Equality that accepts nil on both sides; nil equals only nil.
bool isEqual(const NSObject* first, const NSObject* second);
