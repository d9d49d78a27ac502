#include "platform/host/DeviceSimulation.h"

#include <gtest/gtest.h>

namespace {

using Geometry = UIScreen::Geometry;

TEST(DeviceSimulationTest, IsAsDenseAsTheRealScreenUnlessAskedOtherwise)
{
    HostOptions options;
    EXPECT_EQ(DeviceSimulation(options, 1.5).geometry().scale, 1.5);
    options.scale = 3;
    EXPECT_EQ(DeviceSimulation(options, 1.5).geometry().scale, 3);
}

TEST(DeviceSimulationTest, TurnsAPhoneOnItsSideAndBack)
{
    DeviceSimulation device({}, 2);
    const Geometry upright { .size = { 390, 844 }, .scale = 2, .safeAreaInsets = { 47, 0, 34, 0 } };
    EXPECT_EQ(device.geometry(), upright);
    device.rotate();
    EXPECT_EQ(device.geometry(),
        (Geometry { .size = { 844, 390 }, .scale = 2, .safeAreaInsets = { 0, 47, 21, 47 } }));
    device.rotate();
    EXPECT_EQ(device.geometry(), upright);
}

TEST(DeviceSimulationTest, TurnsATabletWithItsBarsAlongTheEdges)
{
    HostOptions options;
    options.device = HostOptions::Device::Tablet;
    DeviceSimulation device(options, 1);
    device.rotate();
    EXPECT_EQ(device.geometry(),
        (Geometry { .size = { 820, 1180 }, .scale = 1, .safeAreaInsets = { 24, 0, 20, 0 } }));
}

} // namespace
