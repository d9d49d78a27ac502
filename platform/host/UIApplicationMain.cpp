#include "platform/application/UIApplicationMain.h"

#include "platform/foundation/NSLocale.h"
#include "platform/host/HostApplication.h"
#include "platform/host/HostEnvironment.h"
#include "platform/host/HostOptions.h"
#include "platform/host/ToolkitMessages.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QLocale>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int wrongArgument = 2;

NSString programName(char** argv)
{
    return argv && argv[0] ? QFileInfo(NSString::fromLocal8Bit(argv[0])).fileName() : NSString();
}

int runApplication(const HostOptions& options, char** argv, const NSString& principalClassName,
    const NSString& delegateClassName)
{
    if (!options.language.isNull()) {
        NSLocale::setPreferredLanguages({ options.language });
        QLocale::setDefault(QLocale(options.language));
    }
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        std::fputs("no display found: drawing into memory only\n", stderr);
    HostApplication application(options);
    QObject::connect(&application.window(), &QQuickWindow::sceneGraphError,
        [argv](QQuickWindow::SceneGraphError, const QString& message) {
            std::fprintf(stderr, "%s\n", qUtf8Printable(message));
            HostEnvironment::restartWithSoftwareRenderer(argv);
            std::exit(1);
        });
    return application.run(principalClassName, delegateClassName);
}

} // namespace

int UIApplicationMain(
    int argc, char** argv, const NSString& principalClassName, const NSString& delegateClassName)
{
    std::vector<NSString> arguments;
    for (int i = 1; i < argc; ++i)
        arguments.push_back(NSString::fromLocal8Bit(argv[i]));
    const auto parsed = HostOptions::parse(arguments);
    if (const auto* problem = std::get_if<NSString>(&parsed)) {
        std::fprintf(
            stderr, "%s: %s\nTry --help.\n", qUtf8Printable(programName(argv)), qUtf8Printable(*problem));
        return wrongArgument;
    }
    const HostOptions& options = std::get<HostOptions>(parsed);
    if (options.wantsHelp) {
        std::fputs(qUtf8Printable(HostOptions::helpText(programName(argv))), stdout);
        return 0;
    }
    HostEnvironment::apply(HostEnvironment::settingsFor(HostSurroundings::ofThisMachine()));
    ToolkitMessages::dropSearchesForFonts();
    QGuiApplication application(argc, argv);
    return runApplication(options, argv, principalClassName, delegateClassName);
}
