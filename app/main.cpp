// The entry of the process: hands over to the platform's loop, which makes the delegate by its class.
#include "app/ORVAppDelegate.h"
#include "platform/application/UIApplicationMain.h"

int main(int argc, char** argv)
{
    return UIApplicationMain(argc, argv, NSString(), make<ORVAppDelegate>()->className());
}
