// A rectangle that takes part in a container's layout without being a view: its margins, its safe area, a
// gap.
#pragma once

#include "platform/foundation/NSObject.h"
#include "platform/layout/AnchoredLayoutItem.h"

#include <optional>

class UILayoutGuide : public NSObject, public AnchoredLayoutItem {
public:
    UILayoutGuide() = default;
    // One whose edges follow the container's, at these distances, instead of being found by constraints.
    explicit UILayoutGuide(const UIEdgeInsets& insets);

    ~UILayoutGuide() override;

    // The container that the guide was added to; null when there is none.
    LayoutItem* owningView() const { return m_owner; }
    // Where it is in the owner's coordinates; empty without an owner.
    CGRect frame() const { return layoutFrame(); }
    // From then on the edges follow the container's. Distances that are not finite are a programming error
    // and change nothing.
    void setInsets(const UIEdgeInsets& insets);
    const NSString& identifier() const { return m_identifier; }
    void setIdentifier(const NSString& identifier) { m_identifier = identifier; }

    LayoutItem* layoutContainer() const override { return m_owner; }
    std::shared_ptr<LayoutItem> layoutReference() override { return strongSelf(this); }
    NSString layoutName() const override;
    bool hasGivenFrame() const override { return m_insets.has_value(); }
    CGRect layoutFrame() const override;
    void setLayoutFrame(const CGRect& frame) override { m_frame = frame; }
    const UIEdgeInsets* layoutInsets() const override { return m_insets ? &*m_insets : nullptr; }

    // For the container that the guide is added to, or taken from.
    class Key {
        friend class LayoutContainer;
        Key() = default;
    };
    void setOwner(Key, LayoutItem* owner);

private:
    LayoutItem* m_owner = nullptr;
    std::optional<UIEdgeInsets> m_insets;
    CGRect m_frame;
    NSString m_identifier;
};
