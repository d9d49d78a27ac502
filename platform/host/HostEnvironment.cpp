#include "platform/host/HostEnvironment.h"

#include <QDir>
#include <QFileInfo>
#include <QtGlobal>

#include <unistd.h>

namespace {

constexpr const char* rendererVariable = "QT_QUICK_BACKEND";
constexpr const char* softwareRenderer = "software";

// A device file is the cheapest question: making an OpenGL context only to see it drawn by the processor
// takes longer than the whole start.
bool findGraphicsProcessor()
{
    for (const char* device : { "/dev/nvidiactl", "/dev/mali0", "/dev/kgsl-3d0" })
        if (QFileInfo::exists(QLatin1String(device)))
            return true;
    return !QDir("/dev/dri").entryList({ "renderD*" }, QDir::System).isEmpty();
}

} // namespace

HostSurroundings HostSurroundings::ofThisMachine()
{
    return { !qEnvironmentVariableIsEmpty("DISPLAY"), !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"),
        findGraphicsProcessor() };
}

HostEnvironment::Settings HostEnvironment::settingsFor(const HostSurroundings& surroundings)
{
    // Qt tries the names in turn, so a display that does not answer is no reason to fail.
    QByteArray platforms;
    if (surroundings.hasWayland)
        platforms += "wayland;";
    if (surroundings.hasX11)
        platforms += "xcb;";
    Settings settings {
        { "QT_QPA_PLATFORM", platforms + "offscreen" },
        { "QT_QPA_UPDATE_IDLE_TIME", "0" }, // else Qt waits 5 ms before each frame
    };
    if (!surroundings.hasGraphicsProcessor || !surroundings.hasDisplay()) {
        settings.emplace_back(rendererVariable, softwareRenderer);
        settings.emplace_back("QT_XCB_GL_INTEGRATION", "none"); // spares the loading of OpenGL
    }
    return settings;
}

void HostEnvironment::apply(const Settings& settings)
{
    for (const auto& [name, value] : settings)
        if (!qEnvironmentVariableIsSet(name.constData()))
            qputenv(name.constData(), value);
}

void HostEnvironment::restartWithSoftwareRenderer(char** argv)
{
    if (qgetenv(rendererVariable) == softwareRenderer)
        return;
    qputenv(rendererVariable, softwareRenderer);
    execv("/proc/self/exe", argv);
}
