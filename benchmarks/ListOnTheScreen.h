// The list that the running application shows.
#pragma once

#include "list/ORVRecordsListViewController.h"
#include "platform/application/UIApplication.h"
#include "platform/controllers/UINavigationController.h"

inline std::shared_ptr<ORVRecordsListViewController> listOnTheScreen()
{
    const auto root = UIApplication::sharedApplication()->keyWindow()->rootViewController();
    const auto navigation = std::dynamic_pointer_cast<UINavigationController>(root);
    return std::dynamic_pointer_cast<ORVRecordsListViewController>(navigation->topViewController());
}
