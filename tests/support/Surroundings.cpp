#include "tests/support/Surroundings.h"

#include <QByteArrayList>

#include <unistd.h>

namespace {

// Languages and formats, the toolkit's switches, and what tells the toolkit which desktop it is on.
bool isOfTheDesktop(const QByteArray& name)
{
    for (const char* prefix : { "LC_", "QT_", "QSG_", "QML_", "QML2_", "XDG_CURRENT_", "XDG_SESSION_",
             "XDG_CONFIG_", "XDG_DATA_", "KDE_", "GTK_", "GDK_", "GNOME_", "FONTCONFIG_", "FC_" })
        if (name.startsWith(prefix))
            return true;
    return name == "LANG" || name == "LANGUAGE" || name == "DESKTOP_SESSION";
}

} // namespace

void Surroundings::makePlain()
{
    QByteArrayList names;
    for (char** variable = environ; *variable; ++variable)
        names.push_back(QByteArray(*variable).split('=').front());
    for (const QByteArray& name : std::as_const(names))
        if (isOfTheDesktop(name))
            qunsetenv(name.constData());
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    // What the user has configured at home: fonts above all.
    qputenv("XDG_CONFIG_HOME", "/nonexistent");
    qputenv("XDG_DATA_HOME", "/nonexistent");
}
