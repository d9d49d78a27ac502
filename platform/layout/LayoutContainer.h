// An item with items inside it, which holds the constraints between them: a view, as layout sees it.
#pragma once

#include "platform/layout/UILayoutGuide.h"

#include <array>
#include <functional>
#include <span>
#include <vector>

class LayoutContainer : public AnchoredLayoutItem, public NSLayoutConstraintHolder {
public:
    // Whether the view's frame is given: set by code, and resized with the superview. Switched on at first;
    // when it is switched off, constraints find the frame.
    bool translatesAutoresizingMaskIntoConstraints() const { return m_translatesAutoresizingMask; }
    void setTranslatesAutoresizingMaskIntoConstraints(bool translates);
    // Without a container no constraint can find the frame: it is given, too.
    bool hasGivenFrame() const override { return m_translatesAutoresizingMask || !layoutContainer(); }

    // The constraints that this container holds, in the order in which they became active.
    const std::vector<std::shared_ptr<NSLayoutConstraint>>& constraints() const { return m_constraints; }
    // addConstraint: — makes it active, held here. Both items must be this container or inside it; anything
    // else is a programming error and changes nothing.
    void addConstraint(const std::shared_ptr<NSLayoutConstraint>& constraint);
    void addConstraints(std::span<const std::shared_ptr<NSLayoutConstraint>> constraints);
    // Does nothing to a constraint that this container does not hold.
    void removeConstraint(NSLayoutConstraint& constraint);
    void removeConstraints(std::span<const std::shared_ptr<NSLayoutConstraint>> constraints);

    // How strongly the view refuses to be larger, and smaller, than its content.
    UILayoutPriority contentHuggingPriority(UILayoutConstraintAxis axis) const override;
    void setContentHuggingPriority(UILayoutPriority priority, UILayoutConstraintAxis axis);
    UILayoutPriority contentCompressionResistancePriority(UILayoutConstraintAxis axis) const override;
    void setContentCompressionResistancePriority(UILayoutPriority priority, UILayoutConstraintAxis axis);

    // A guide is an item without a view. The container holds its guides.
    void addLayoutGuide(const std::shared_ptr<UILayoutGuide>& guide);
    void removeLayoutGuide(UILayoutGuide& guide);
    const std::vector<std::shared_ptr<UILayoutGuide>>& layoutGuides() const { return m_guides; }

    LayoutContainer* layoutContainer() const override = 0;
    NSLayoutConstraintHolder* constraintHolder() override { return this; }
    void layoutInsideDidChange() override = 0;

protected:
    LayoutContainer() = default;
    ~LayoutContainer();

    // Solves what waits and gives the item the frame that constraints have found for it.
    static void placeItem(LayoutItem& item);
    void placeGuides();
    // Puts out of force what ties this item, or something inside it, to the outside.
    void dropOutsideConstraints();
    // Ends every part in layouts: to be called while the object is still whole.
    void leaveLayout();
    virtual void visitSubcontainers(const std::function<void(LayoutContainer&)>& visit) const = 0;

private:
    void hold(const std::shared_ptr<NSLayoutConstraint>& constraint) override;
    void release(NSLayoutConstraint& constraint) override;
    LayoutItem& holdingItem() override { return *this; }
    void collectOutsideConstraints(
        const LayoutContainer& inside, std::vector<std::shared_ptr<NSLayoutConstraint>>& found);

    bool m_translatesAutoresizingMask = true;
    std::array<UILayoutPriority, 2> m_hugging { UILayoutPriorityDefaultLow, UILayoutPriorityDefaultLow };
    std::array<UILayoutPriority, 2> m_compressionResistance { UILayoutPriorityDefaultHigh,
        UILayoutPriorityDefaultHigh };
    std::vector<std::shared_ptr<NSLayoutConstraint>> m_constraints;
    std::vector<std::shared_ptr<UILayoutGuide>> m_guides;
};
