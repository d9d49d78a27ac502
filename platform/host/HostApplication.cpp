#include "platform/host/HostApplication.h"

#include "platform/host/Screenshot.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPalette>

#include <cstdio>

namespace {

constexpr double slowAnimationSpeed = 0.1;

void complain(const NSString& sentence) { std::fprintf(stderr, "%s\n", qUtf8Printable(sentence)); }

UIUserInterfaceStyle styleFor(const HostOptions& options)
{
    if (options.appearance)
        return *options.appearance == HostOptions::Appearance::Dark ? UIUserInterfaceStyle::Dark
                                                                    : UIUserInterfaceStyle::Light;
    const QPalette palette = QGuiApplication::palette();
    const bool isDark = palette.window().color().lightness() < palette.windowText().color().lightness();
    return isDark ? UIUserInterfaceStyle::Dark : UIUserInterfaceStyle::Light;
}

} // namespace

HostApplication::HostApplication(const HostOptions& options)
    : m_options(options)
    , m_device(options, m_window.devicePixelRatio())
    , m_input([this] { return m_application ? m_application->touches() : nullptr; },
          [this](const CGPoint& position) { return m_window.pointFromWindow(position); })
{
    m_window.setTitle(QGuiApplication::applicationDisplayName());
    m_window.setFrameMaker([this]() -> const FrameList& { return makeFrame(); });
    m_window.setEventHandler([this](QEvent& event) { return handleEvent(event); });
    CurrentUserInterfaceStyle::set(styleFor(options));
    applyScreen();
}

HostApplication::~HostApplication() = default;

int HostApplication::run(const NSString& principalClassName, const NSString& delegateClassName)
{
    m_application = UIApplication::launch(principalClassName, delegateClassName);
    if (!m_application) {
        complain("the application could not be started");
        return 1;
    }
    if (const auto window = m_application->keyWindow(); window && m_options.slowsAnimations)
        window->layer()->setSpeed(slowAnimationSpeed);
    m_scheduler.displayFrame(); // so that the window opens with its contents
    m_window.show();
    if (!m_options.screenshotFile.isNull())
        m_settled.emplace(m_window, [this] { takeScreenshotAndQuit(); });
    const int exitCode = QGuiApplication::exec();
    if (m_options.reports)
        std::fputs(qUtf8Printable(m_window.statistics().report()), stdout);
    return exitCode;
}

const FrameList& HostApplication::makeFrame()
{
    if (m_application)
        return m_application->performFrame();
    m_emptyScreen.size = m_device.geometry().size;
    m_emptyScreen.scale = m_device.geometry().scale;
    return m_emptyScreen;
}

bool HostApplication::handleEvent(QEvent& event)
{
    if (event.type() == QEvent::KeyPress && handleKey(static_cast<const QKeyEvent&>(event)))
        return true;
    if (event.type() == QEvent::WindowStateChange)
        setInBackground(m_window.windowStates() & Qt::WindowMinimized);
    return m_input.handle(event);
}

bool HostApplication::handleKey(const QKeyEvent& event)
{
    if (event.modifiers() != Qt::ControlModifier || event.isAutoRepeat() || !m_application)
        return false;
    switch (event.key()) {
    case Qt::Key_R:
        m_device.rotate();
        applyScreen();
        return true;
    case Qt::Key_B:
        setInBackground(m_application->applicationState() != UIApplicationState::Background);
        return true;
    case Qt::Key_D:
        setAppearance(CurrentUserInterfaceStyle::get() == UIUserInterfaceStyle::Dark
                ? UIUserInterfaceStyle::Light
                : UIUserInterfaceStyle::Dark);
        return true;
    case Qt::Key_S: {
        const NSString file = Screenshot::newFile(Screenshot::picturesFolder(), m_scheduler.currentDate());
        const NSString problem = Screenshot::save(m_window.grabWindow(), file);
        complain(problem.isNull() ? NSString("saved \"%1\"").arg(file) : problem);
        return true;
    }
    default:
        return false;
    }
}

void HostApplication::applyScreen()
{
    if (TouchDispatcher* const touches = m_application ? m_application->touches() : nullptr)
        touches->cancelAllTouches(); // nothing is where a finger put it down
    const UIScreen::Geometry geometry = m_device.geometry();
    UIScreen::mainScreen()->setGeometry(geometry);
    m_window.setScreen(geometry.size, geometry.scale);
}

void HostApplication::setAppearance(UIUserInterfaceStyle style)
{
    m_application->setUserInterfaceStyle(style);
}

void HostApplication::setInBackground(bool inBackground)
{
    if (!m_application)
        return;
    if (inBackground)
        m_application->enterBackground();
    else
        m_application->enterForeground();
}

void HostApplication::takeScreenshotAndQuit()
{
    const NSString problem = Screenshot::save(m_window.grabWindow(), m_options.screenshotFile);
    if (!problem.isNull())
        complain(problem);
    QGuiApplication::exit(problem.isNull() ? 0 : 1);
}
