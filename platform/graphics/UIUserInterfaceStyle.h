// Light or dark: the appearance in force, which dynamic colours follow.
//
// The host sets it as the desktop is set; it may be read on any thread. Observers are
// told on the thread that sets it, which is the main thread.
#pragma once

#include "platform/foundation/ObserverList.h"

#include <atomic>

enum class UIUserInterfaceStyle { Light = 1, Dark = 2 };

// Hears that the appearance in force has changed; colours already resolved are to be resolved again.
class UserInterfaceStyleObserver {
public:
    virtual void userInterfaceStyleDidChange(UIUserInterfaceStyle) = 0;

protected:
    ~UserInterfaceStyleObserver() = default; // nobody owns an observer through this type
};

class CurrentUserInterfaceStyle {
public:
    static UIUserInterfaceStyle get() { return s_style; }
    // Tells the observers; setting the style that is in force already tells nobody.
    static void set(UIUserInterfaceStyle);

    // Held weakly.
    static void addObserver(std::weak_ptr<UserInterfaceStyleObserver>);
    static void removeObserver(const UserInterfaceStyleObserver&);

private:
    static std::atomic<UIUserInterfaceStyle> s_style;
};
