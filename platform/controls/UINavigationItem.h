// What a controller puts into the navigation bar while it is shown.
#pragma once

#include "platform/foundation/NSObject.h"

class UINavigationItem : public NSObject {
public:
    // Null shows no title, even when the controller has one.
    const NSString& title() const { return m_title; }
    void setTitle(const NSString& title)
    {
        const AutomaticChange change(*this, QStringLiteral("title"));
        m_title = title;
    }

private:
    NSString m_title;
};
