// Looks that hold for all views of a class: values recorded once, and given to each view by its own setters.
//
//     UIAppearance::of<UINavigationBar>().set(&UINavigationBar::setTintColor, white);
//     UIAppearance::of<UITextField>().whenContainedIn<UISearchBar>().set(&UITextField::setTintColor, red);
//     UIAppearance::of<UIButton>().set(&UIButton::setImage, play, UIControlState::Normal);
//
// A view of the class, or of a subclass, gets the values when it enters a window, before its
// didMoveToWindow(): in the order in which they were recorded, except that what is recorded for views inside
// a container wins over what is recorded for all. A value that code has set on the view itself stays. What
// is recorded later reaches a view when it next enters a window. The setters must take part, see
// UIAppearanceNotes. Main thread only.
#pragma once

#include "platform/foundation/NSObject.h"
#include "platform/views/UIAppearanceNotes.h"

#include <functional>
#include <optional>
#include <typeindex>
#include <vector>

class UIView;

class UIAppearance {
public:
    // What is recorded for one class, in one kind of container or anywhere.
    template <typename View> class Proxy;

    // appearance
    template <typename View> static Proxy<View> of() { return Proxy<View>(); }

    // For UIView, when it has entered a window. Costs a look-up by class where nothing is recorded for it.
    static void applyTo(UIView& view);

    // For tests: nothing is recorded, until what was comes back at the end.
    class Replacement;

private:
    using KindTest = bool (*)(const NSObject&);
    struct Kind {
        std::type_index type;
        KindTest includes;

        bool operator==(const Kind& other) const { return type == other.type; }
    };
    struct Record {
        Kind view;
        std::optional<Kind> container; // what the view is in; none stands for anywhere
        UIAppearanceSetting setting;
        std::function<void(UIView&)> apply;
        UIAppearanceNotes::RecordID id = UIAppearanceNotes::byCode;

        bool replaces(const Record& other) const;
        bool reaches(const UIView& view) const;
    };
    using Records = std::vector<std::shared_ptr<const Record>>;
    struct Book;

    template <typename Class> static Kind kindOf()
    {
        return { typeid(Class), [](const NSObject& object) { return object.isKindOfClass<Class>(); } };
    }
    static std::unique_ptr<Book>& book();
    static void record(Record record);
};

template <typename View> class UIAppearance::Proxy {
public:
    // appearanceWhenContainedInInstancesOfClasses: — for views inside a view of the class, or inside the
    // view of a controller of the class.
    template <typename Container> Proxy whenContainedIn() const { return Proxy(kindOf<Container>()); }

    // The same setting recorded again takes the place of the first.
    template <typename Class, typename Value>
    const Proxy& set(void (Class::*setter)(Value), std::type_identity_t<std::decay_t<Value>> value) const
    {
        record({ kindOf<View>(), m_container, UIAppearanceSetting(setter),
            [setter, value](UIView& view) { (static_cast<View&>(view).*setter)(value); } });
        return *this;
    }
    template <typename Class, typename Value, typename Selector>
    const Proxy& set(void (Class::*setter)(Value, Selector), std::type_identity_t<std::decay_t<Value>> value,
        std::type_identity_t<std::decay_t<Selector>> selector) const
    {
        record({ kindOf<View>(), m_container, UIAppearanceSetting(setter, selector),
            [setter, value, selector](
                UIView& view) { (static_cast<View&>(view).*setter)(value, selector); } });
        return *this;
    }

private:
    friend class UIAppearance;
    explicit Proxy(std::optional<Kind> container = std::nullopt)
        : m_container(container)
    {
    }

    std::optional<Kind> m_container;
};

class UIAppearance::Replacement {
public:
    Replacement();
    ~Replacement();
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

private:
    std::unique_ptr<Book> m_replaced;
};
