// What an application does when it starts and when it leaves or enters the foreground.
//
// Made by UIApplicationMain(), by its class name, and kept for the length of the run.
#pragma once

#include "platform/foundation/NSObject.h"

#include <map>

class UIApplication;

using UIApplicationLaunchOptions = std::map<NSString, std::shared_ptr<NSObject>>;

class UIApplicationDelegate {
public:
    virtual ~UIApplicationDelegate() = default;

    // application:didFinishLaunchingWithOptions: — answers whether the application can run.
    virtual bool applicationDidFinishLaunchingWithOptions(UIApplication&, const UIApplicationLaunchOptions&)
    {
        return true;
    }
    virtual void applicationDidEnterBackground(UIApplication&) { }
    virtual void applicationWillEnterForeground(UIApplication&) { }
};
