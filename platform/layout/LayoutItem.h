// What constraints speak of: a view or a guide, a rectangle in the coordinates of the container around it.
//
// The frame of an item is either given from outside, and then constraints only read it, or found by
// constraints. What constraints do not say about an item's frame stays as it is.
#pragma once

#include "platform/foundation/FoundationTypes.h"
#include "platform/graphics/Geometry.h"
#include "platform/layout/LayoutTypes.h"
#include "platform/layout/NSLayoutAnchor.h"

#include <memory>

class LayoutContainer;
class LayoutNode;

class LayoutItem {
public:
    LayoutItem(const LayoutItem&) = delete;
    LayoutItem& operator=(const LayoutItem&) = delete;

    NSLayoutXAxisAnchor leftAnchor() { return { *this, NSLayoutAttribute::Left }; }
    NSLayoutXAxisAnchor rightAnchor() { return { *this, NSLayoutAttribute::Right }; }
    NSLayoutXAxisAnchor leadingAnchor() { return { *this, NSLayoutAttribute::Leading }; }
    NSLayoutXAxisAnchor trailingAnchor() { return { *this, NSLayoutAttribute::Trailing }; }
    NSLayoutXAxisAnchor centerXAnchor() { return { *this, NSLayoutAttribute::CenterX }; }
    NSLayoutYAxisAnchor topAnchor() { return { *this, NSLayoutAttribute::Top }; }
    NSLayoutYAxisAnchor bottomAnchor() { return { *this, NSLayoutAttribute::Bottom }; }
    NSLayoutYAxisAnchor centerYAnchor() { return { *this, NSLayoutAttribute::CenterY }; }
    NSLayoutYAxisAnchor firstBaselineAnchor() { return { *this, NSLayoutAttribute::FirstBaseline }; }
    NSLayoutYAxisAnchor lastBaselineAnchor() { return { *this, NSLayoutAttribute::LastBaseline }; }
    NSLayoutDimension widthAnchor() { return { *this, NSLayoutAttribute::Width }; }
    NSLayoutDimension heightAnchor() { return { *this, NSLayoutAttribute::Height }; }

    // The container that the frame is in; null for one that stands alone.
    virtual LayoutContainer* layoutContainer() const = 0;
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

    // The item that margin attributes of this one speak of.
    virtual LayoutItem& layoutMarginsItem() { return *this; }

    // The size that the content has by itself; UIViewNoIntrinsicMetric where it has none.
    virtual CGSize layoutContentSize() const;
    virtual UILayoutPriority contentHuggingPriority(UILayoutConstraintAxis) const;
    virtual UILayoutPriority contentCompressionResistancePriority(UILayoutConstraintAxis) const;
    // By default the top and the bottom edge.
    virtual LayoutBaseline firstBaselinePlace() const { return { 0, 0 }; }
    virtual LayoutBaseline lastBaselinePlace() const { return { 1, 0 }; }

    // What the engine keeps for the item; null while no constraint mentions it.
    LayoutNode* layoutNode() const { return m_node.get(); }
    LayoutNode& ensureLayoutNode();

protected:
    LayoutItem();
    ~LayoutItem(); // its constraints are out of force then

    // To be called after a change of what the engine asks above. They cost nothing without constraints.
    void layoutFrameDidChange(); // of a given frame, or of the insets
    void layoutContentDidChange(); // the content's size, its priorities or its baselines
    void layoutRoleDidChange(); // whether the frame is given
    void dropLayoutNode();

private:
    std::unique_ptr<LayoutNode> m_node;
};

// An intrinsic width or height that an item does not have.
inline constexpr double UIViewNoIntrinsicMetric = -1;
