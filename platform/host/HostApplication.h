// One run of an application in a window: makes what it runs on, starts it, and drives it.
//
// Qt's application object exists before this and outlives it.
#pragma once

#include "platform/application/UIApplication.h"
#include "platform/host/DeviceSimulation.h"
#include "platform/host/HostExecutor.h"
#include "platform/host/HostInput.h"
#include "platform/host/HostOptions.h"
#include "platform/host/HostScheduler.h"
#include "platform/host/MemoryPressureMonitor.h"
#include "platform/host/QuitSignals.h"
#include "platform/host/SceneWindow.h"
#include "platform/host/SettledWindow.h"

#include <optional>

class QKeyEvent;

class HostApplication {
public:
    explicit HostApplication(const HostOptions& options);
    ~HostApplication();
    HostApplication(const HostApplication&) = delete;
    HostApplication& operator=(const HostApplication&) = delete;

    // Starts the application and runs until its window is closed; answers the exit code.
    int run(const NSString& principalClassName, const NSString& delegateClassName);

    SceneWindow& window() { return m_window; }

private:
    const FrameList& makeFrame();
    bool handleEvent(QEvent& event);
    bool handleKey(const QKeyEvent& event);
    void applyScreen();
    void setAppearance(UIUserInterfaceStyle style);
    void setInBackground(bool inBackground);
    void takeScreenshotAndQuit();

    // In this order: what is made first serves what comes after it, and outlives it.
    HostOptions m_options;
    HostScheduler m_scheduler;
    HostExecutor m_executor;
    QuitSignals m_quitSignals;
    MemoryPressureMonitor m_memoryPressureMonitor;
    SceneWindow m_window { m_scheduler };
    DeviceSimulation m_device;
    HostInput m_input;
    std::shared_ptr<UIApplication> m_application;
    FrameList m_emptyScreen;
    std::optional<SettledWindow> m_settled;
};
