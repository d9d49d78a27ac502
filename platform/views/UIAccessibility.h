// What a view, a bar item or another element tells to those who do not see the screen.
//
// Everything is read at the moment of use, so an override may answer from the state of that moment.
#pragma once

#include "platform/foundation/FoundationTypes.h"

#include <memory>

class UIBezierPath;
class UIView;

class UIAccessibility {
public:
    virtual bool isAccessibilityElement() const { return m_isElement; }
    virtual void setIsAccessibilityElement(bool is) { m_isElement = is; }
    // What it is, in a word; null where nothing was said.
    virtual NSString accessibilityLabel() const { return m_label; }
    virtual void setAccessibilityLabel(const NSString& label) { m_label = label; }
    // What happens when it is used.
    virtual NSString accessibilityHint() const { return m_hint; }
    virtual void setAccessibilityHint(const NSString& hint) { m_hint = hint; }
    // Its value now: a slider's position, a switch's state.
    virtual NSString accessibilityValue() const { return m_value; }
    virtual void setAccessibilityValue(const NSString& value) { m_value = value; }
    // The outline on the screen; null for the element's frame.
    virtual std::shared_ptr<const UIBezierPath> accessibilityPath() const { return m_path; }
    virtual void setAccessibilityPath(std::shared_ptr<const UIBezierPath> path) { m_path = std::move(path); }
    // Whether everything beside the view is out of reach while it is shown.
    virtual bool accessibilityViewIsModal() const { return m_isModal; }
    virtual void setAccessibilityViewIsModal(bool modal) { m_isModal = modal; }
    // The gesture that leaves: answers whether something was left.
    virtual bool accessibilityPerformEscape() { return false; }

protected:
    ~UIAccessibility() = default; // nobody owns an element through this type

private:
    NSString m_label;
    NSString m_hint;
    NSString m_value;
    std::shared_ptr<const UIBezierPath> m_path;
    bool m_isElement = false;
    bool m_isModal = false;
};

// The path, given in the view's coordinates, in those of the screen.
std::shared_ptr<const UIBezierPath> UIAccessibilityConvertPathToScreenCoordinates(
    const UIBezierPath& path, const UIView& view);
