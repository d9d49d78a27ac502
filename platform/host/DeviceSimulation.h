// A phone or a tablet on a desktop: its screen, and the keys that do to it what hands do to a real one.
#pragma once

#include "platform/host/HostOptions.h"
#include "platform/views/UIScreen.h"

class DeviceSimulation {
public:
    // displayScale: device pixels that the real screen has for a point of the desktop.
    DeviceSimulation(const HostOptions& options, double displayScale);

    UIScreen::Geometry geometry() const;
    bool isTurned() const { return m_isTurned; }
    void rotate() { m_isTurned = !m_isTurned; }

private:
    HostOptions m_options;
    double m_scale;
    bool m_isTurned = false;
};
