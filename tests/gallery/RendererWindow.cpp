#include "tests/gallery/RendererWindow.h"

#include "platform/host/FramePainter.h"
#include "tests/support/PictureComparison.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QPainter>
#include <QTimer>

#include <chrono>

namespace {

constexpr PictureTolerance softEdges { .channel = 3 };
constexpr PictureTolerance otherArithmetic { .channel = 24 };

// A display resizes a window in its own time.
constexpr int mostTries = 100;
constexpr std::chrono::milliseconds patience { 20 };

RendererWindow* window = nullptr;

bool usesOpenGL() { return qgetenv("ORUVANE_RENDERER") == "opengl"; }

} // namespace

RendererWindow& RendererWindow::shared()
{
    if (!window) {
        window = new RendererWindow;
        qAddPostRoutine([] { delete std::exchange(window, nullptr); }); // before the application ends
    }
    return *window;
}

RendererWindow::RendererWindow()
    : m_scene(m_window.contentItem())
{
    m_window.setColor(Qt::black);
    m_window.resize(100, 100);
    m_window.show();
}

QImage RendererWindow::show(const FrameList& list)
{
    const QSize pixels(qCeil(list.size.width() * list.scale), qCeil(list.size.height() * list.scale));
    if (m_window.size() != pixels) {
        m_window.resize(pixels);
        m_scene.setSize(pixels);
        QCoreApplication::processEvents();
    }
    m_scene.setFrameList(list);
    QImage shown = m_window.grabWindow();
    for (int tries = 0; shown.size() != pixels && tries < mostTries; ++tries) {
        QEventLoop waiting;
        QTimer::singleShot(patience, &waiting, &QEventLoop::quit);
        waiting.exec();
        shown = m_window.grabWindow();
    }
    return shown.convertToFormat(QImage::Format_RGB32);
}

testing::AssertionResult RendererWindow::draws(
    const FrameList& list, const std::string& name, const CGRect& leftOut)
{
    QImage shown = show(list);
    QImage painted = FramePainter(list).paintScreen();
    for (QImage* each : { &shown, &painted })
        QPainter(each).fillRect({ leftOut.topLeft() * list.scale, leftOut.size() * list.scale }, Qt::gray);
    const bool isOpenGL = m_window.rendererInterface()->graphicsApi() == QSGRendererInterface::OpenGL;
    if (isOpenGL != usesOpenGL())
        return testing::AssertionFailure()
            << "drawn by " << (isOpenGL ? "OpenGL" : "another renderer than OpenGL");
    return picturesMatch(shown, painted, isOpenGL ? otherArithmetic : softEdges, name);
}
