#include "platform/host/DeviceSimulation.h"

namespace {

// A phone on its side has its notch there; the far side keeps the same distance, so that nothing jumps
// when it is turned the other way round.
constexpr UIEdgeInsets turnedPhoneInsets { 0, 47, 21, 47 };

} // namespace

DeviceSimulation::DeviceSimulation(const HostOptions& options, double displayScale)
    : m_options(options)
    , m_scale(options.scale ? *options.scale : displayScale)
{
}

UIScreen::Geometry DeviceSimulation::geometry() const
{
    if (!m_isTurned)
        return { m_options.screenSize(), m_scale, m_options.safeAreaInsets() };
    const bool isPhone = m_options.device == HostOptions::Device::Phone;
    return { m_options.screenSize().transposed(), m_scale,
        isPhone ? turnedPhoneInsets : m_options.safeAreaInsets() };
}
