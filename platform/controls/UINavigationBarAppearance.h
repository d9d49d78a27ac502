// The looks of a navigation bar, as one object. Bars take a copy: changing it afterwards changes no bar.
#pragma once

#include "platform/graphics/TextAttributes.h"
#include "platform/graphics/UIColor.h"

class UINavigationBarAppearance final : public NSObject {
public:
    // An opaque bar in the system's background colour.
    void configureWithOpaqueBackground() { m_backgroundColor = UIColor::systemBackgroundColor(); }
    // Null shows what lies behind the bar.
    const std::shared_ptr<UIColor>& backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(std::shared_ptr<UIColor> color) { m_backgroundColor = std::move(color); }
    const NSTextAttributes& titleTextAttributes() const { return m_titleTextAttributes; }
    void setTitleTextAttributes(NSTextAttributes attributes)
    {
        m_titleTextAttributes = std::move(attributes);
    }

    std::shared_ptr<UINavigationBarAppearance> copy() const
    {
        auto copied = make<UINavigationBarAppearance>();
        copied->m_backgroundColor = m_backgroundColor;
        copied->m_titleTextAttributes = m_titleTextAttributes;
        return copied;
    }

private:
    std::shared_ptr<UIColor> m_backgroundColor;
    NSTextAttributes m_titleTextAttributes;
};
