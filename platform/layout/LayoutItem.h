// What constraints relate: a view or a guide, a rectangle in the coordinates of the container around it.
//
// The frame of an item is either given from outside, and then constraints only read it, or found by
// constraints. What constraints do not say about an item's frame stays as it is. Knows nothing of
// constraints: whoever solves them listens to the item.
#pragma once

#include "platform/foundation/FoundationTypes.h"
#include "platform/graphics/Geometry.h"
#include "platform/layout/LayoutTypes.h"

#include <memory>

// Hears from an item what constraints depend on. The item owns it.
class LayoutItemListener {
public:
    virtual ~LayoutItemListener() = default;
    virtual void givenFrameDidChange() = 0; // or the insets
    virtual void contentDidChange() = 0; // its size, its priorities or its baselines
    virtual void roleDidChange() = 0; // whether the frame is given
    virtual void itemWillLeave() = 0; // nothing may refer to the item afterwards
};

class NSLayoutConstraintHolder;

class LayoutItem {
public:
    LayoutItem(const LayoutItem&) = delete;
    LayoutItem& operator=(const LayoutItem&) = delete;

    // The item that the frame is in; null for one that stands alone.
    virtual LayoutItem* layoutContainer() const = 0;
    // This item as a reference that others may keep weakly.
    virtual std::shared_ptr<LayoutItem> layoutReference() = 0;
    // How reports call the item.
    virtual NSString layoutName() const = 0;

    // Whether the frame is given from outside.
    virtual bool hasGivenFrame() const = 0;
    // The frame as it stands, before any transform.
    virtual CGRect layoutFrame() const = 0;
    // The frame that constraints have found.
    virtual void setLayoutFrame(const CGRect& frame) = 0;
    // For an item whose edges follow its container's, at these distances; such a frame is given too.
    virtual const UIEdgeInsets* layoutInsets() const { return nullptr; }

    // The item whose edges the margin attributes of this one are.
    virtual LayoutItem& layoutMarginsItem() { return *this; }
    // This item as one that holds constraints; null for one that cannot.
    virtual NSLayoutConstraintHolder* constraintHolder() { return nullptr; }
    // For a container: something inside has another place now, a layout pass must come by.
    virtual void layoutInsideDidChange() { }

    // The size that the content has by itself; UIViewNoIntrinsicMetric where it has none.
    virtual CGSize layoutContentSize() const;
    virtual UILayoutPriority contentHuggingPriority(UILayoutConstraintAxis) const;
    virtual UILayoutPriority contentCompressionResistancePriority(UILayoutConstraintAxis) const;
    // By default the top and the bottom edge.
    virtual LayoutBaseline firstBaselinePlace() const { return { 0, 0 }; }
    virtual LayoutBaseline lastBaselinePlace() const { return { 1, 0 }; }

    // Null while no constraint mentions the item.
    LayoutItemListener* layoutListener() const { return m_listener.get(); }
    class Key {
        friend class LayoutNode;
        Key() = default;
    };
    void setLayoutListener(Key, std::unique_ptr<LayoutItemListener>);

protected:
    LayoutItem();
    ~LayoutItem(); // its constraints are out of force then

    // To be called after a change of what is asked above. They cost nothing without constraints.
    void layoutFrameDidChange(); // of a given frame, or of the insets
    void layoutContentDidChange();
    void layoutRoleDidChange(); // whether the frame is given
    // Puts every constraint that mentions the item out of force.
    void dropLayoutListener();

private:
    std::unique_ptr<LayoutItemListener> m_listener;
};

// An intrinsic width or height that an item does not have.
inline constexpr double UIViewNoIntrinsicMetric = -1;
