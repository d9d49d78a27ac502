// One rule of a layout: item.attribute == multiplier * otherItem.attribute + constant, or <= or >=.
//
// A constraint does something while it is active, that is, held by a container that contains both of its
// items; places are compared in that container's coordinates, whose origin is its own top left corner. It
// refers to its items weakly: an item that goes takes its constraints out of force. Required constraints that
// contradict each other are reported to the conflict handler, and the newest of them is left out until
// something changes. Main thread only.
#pragma once

#include "platform/foundation/NSObject.h"
#include "platform/layout/LayoutItem.h"

#include <functional>
#include <initializer_list>
#include <span>
#include <vector>

class NSLayoutConstraint;

// Holds constraints while they are active: an item with items inside it.
class NSLayoutConstraintHolder {
public:
    virtual void hold(const std::shared_ptr<NSLayoutConstraint>&) = 0;
    virtual void release(NSLayoutConstraint&) = 0;
    virtual LayoutItem& holdingItem() = 0;

protected:
    ~NSLayoutConstraintHolder() = default;
};

// Hears from an active constraint what changes in it.
class NSLayoutConstraintListener {
public:
    virtual void constantDidChange() = 0;
    virtual void priorityDidChange() = 0;

protected:
    ~NSLayoutConstraintListener() = default;
};

class NSLayoutConstraint final : public NSObject {
public:
    using List = std::vector<std::shared_ptr<NSLayoutConstraint>>;
    using Metrics = std::vector<std::pair<NSString, double>>;
    using Views = std::vector<std::pair<NSString, std::shared_ptr<LayoutItem>>>;

    // constraintWithItem:attribute:relatedBy:toItem:attribute:multiplier:constant: — without another item the
    // attribute is a size and the constant is what it is compared with. Attributes that cannot be compared,
    // and numbers that are not finite, are programming errors and answer null.
    static std::shared_ptr<NSLayoutConstraint> constraintWithItem(LayoutItem& item,
        NSLayoutAttribute attribute, NSLayoutRelation relation, LayoutItem* otherItem,
        NSLayoutAttribute otherAttribute, double multiplier, double constant);
    // constraintsWithVisualFormat:options:metrics:views: — "H:|-8-[title(>=50)]-gap-[button]|". A format that
    // cannot be read is a programming error, whose message points at the character, and answers none.
    static List constraintsWithVisualFormat(
        const NSString& format, NSLayoutFormatOptions options, const Metrics& metrics, const Views& views);
    // Those of several formats without options, one after the other.
    static List constraintsWithVisualFormats(
        std::initializer_list<const char*> formats, const Views& views, const Metrics& metrics = {});
    // The same, active.
    static List activateVisualFormats(
        std::initializer_list<const char*> formats, const Views& views, const Metrics& metrics = {});

    // Makes each active or inactive; null entries are passed over.
    static void activateConstraints(std::span<const std::shared_ptr<NSLayoutConstraint>> constraints);
    static void deactivateConstraints(std::span<const std::shared_ptr<NSLayoutConstraint>> constraints);

    // Null once the item is gone.
    std::shared_ptr<LayoutItem> firstItem() const { return m_first.lock(); }
    std::shared_ptr<LayoutItem> secondItem() const { return m_second.lock(); }
    NSLayoutAttribute firstAttribute() const { return m_firstAttribute; }
    NSLayoutAttribute secondAttribute() const { return m_secondAttribute; }
    NSLayoutRelation relation() const { return m_relation; }
    double multiplier() const { return m_multiplier; }
    double constant() const { return m_constant; }
    void setConstant(double constant);
    UILayoutPriority priority() const { return m_priority; }
    void setPriority(UILayoutPriority priority);
    // A name for reports.
    const NSString& identifier() const { return m_identifier; }
    void setIdentifier(const NSString& identifier) { m_identifier = identifier; }

    // Becoming active, the constraint is held by the nearest container of both items.
    bool isActive() const { return m_holder != nullptr; }
    void setActive(bool active);
    // The container that holds the constraint; null while it is inactive.
    LayoutItem* holder() const { return m_holder ? &m_holder->holdingItem() : nullptr; }

    // "ORVThumb.centerX == ORVSlider.right * 0.5 @1000"
    NSString description() const override;

    // Required constraints that cannot all hold, and the one of them that was left out.
    struct Conflict {
        std::vector<NSString> constraints;
        NSString broken;
    };
    using ConflictHandler = std::function<void(const Conflict&)>;
    // Hears of conflicts instead of the default handler, which prints them, until the guard goes; guards
    // nest.
    class [[nodiscard]] ConflictReplacement {
    public:
        explicit ConflictReplacement(ConflictHandler);
        ~ConflictReplacement();
        ConflictReplacement(const ConflictReplacement&) = delete;
        ConflictReplacement& operator=(const ConflictReplacement&) = delete;

    private:
        ConflictHandler m_previous;
    };

    // For the holder, and for the one that solves the constraint.
    class Key {
        friend class LayoutContainer;
        friend class LayoutSystem;
        Key() = default;
    };
    void setHolder(Key, NSLayoutConstraintHolder* holder) { m_holder = holder; }
    void setListener(Key, NSLayoutConstraintListener* listener) { m_listener = listener; }
    NSLayoutConstraintListener* listener() const { return m_listener; }
    static void report(Key, const Conflict&);

    // For make<>() alone.
    NSLayoutConstraint(std::weak_ptr<LayoutItem> first, NSLayoutAttribute firstAttribute,
        NSLayoutRelation relation, std::weak_ptr<LayoutItem> second, NSLayoutAttribute secondAttribute,
        double multiplier, double constant);

private:
    std::weak_ptr<LayoutItem> m_first;
    std::weak_ptr<LayoutItem> m_second;
    NSLayoutAttribute m_firstAttribute;
    NSLayoutAttribute m_secondAttribute;
    NSLayoutRelation m_relation;
    double m_multiplier;
    double m_constant;
    UILayoutPriority m_priority = UILayoutPriorityRequired;
    NSLayoutConstraintHolder* m_holder = nullptr;
    NSLayoutConstraintListener* m_listener = nullptr;
    NSString m_identifier;
};
