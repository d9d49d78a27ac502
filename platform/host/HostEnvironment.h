// Which of Qt's windows and renderers serve on this machine; decided before Qt starts.
#pragma once

#include <QByteArray>

#include <utility>
#include <vector>

// What the decision goes by.
struct HostSurroundings {
    bool hasX11 = false;
    bool hasWayland = false;
    bool hasGraphicsProcessor = false;

    static HostSurroundings ofThisMachine();
    bool hasDisplay() const { return hasX11 || hasWayland; }
};

namespace HostEnvironment {

using Settings = std::vector<std::pair<QByteArray, QByteArray>>;

// The environment variables that Qt should find.
Settings settingsFor(const HostSurroundings&);
// Sets them, except where the user has set his own.
void apply(const Settings&);
// Starts this program again, drawing without a graphics processor: Qt cannot change its renderer once it
// has chosen one. Comes back only when that is not possible, or was tried already.
void restartWithSoftwareRenderer(char** argv);

} // namespace HostEnvironment
