// The application's entry into its loop.
#pragma once

#include "platform/foundation/FoundationTypes.h"

// Makes the application and its delegate by their class names and runs until the window is closed.
// Answers the process's exit code. The arguments are the platform's own: --help tells them.
int UIApplicationMain(
    int argc, char** argv, const NSString& principalClassName, const NSString& delegateClassName);
