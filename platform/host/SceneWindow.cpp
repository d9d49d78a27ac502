#include "platform/host/SceneWindow.h"

#include "platform/host/ProcessFigures.h"

#include <QScreen>

#include <utility>

SceneWindow::SceneWindow(HostScheduler& scheduler)
    : m_scheduler(scheduler)
    , m_scene(contentItem())
{
    setColor(Qt::black);
    if (const QScreen* const display = screen(); display && display->refreshRate() > 0)
        m_scheduler.setRefreshInterval(1 / display->refreshRate());
    m_scheduler.setPacedByDisplay(isPacedByDisplay());
    m_scheduler.setFrameHandler([this] { makeFrame(); });
    m_scheduler.setFrameRequester([this] { requestDisplay(); });
    connect(
        this, &QQuickWindow::beforeSynchronizing, this,
        [this] { m_drawnFrame = std::exchange(m_madeFrame, std::nullopt); }, Qt::DirectConnection);
    connect(
        this, &QQuickWindow::frameSwapped, this, [this] { frameWasDrawn(); }, Qt::DirectConnection);
}

SceneWindow::~SceneWindow()
{
    m_scheduler.setFrameHandler({});
    m_scheduler.setFrameRequester({});
}

void SceneWindow::setScreen(const CGSize& size, double scale)
{
    m_scale = scale;
    const CGSize inside = size * (scale / devicePixelRatio());
    const QSize whole(qCeil(inside.width()), qCeil(inside.height()));
    setMinimumSize(whole);
    setMaximumSize(whole);
    resize(whole);
    m_scene.setSize(inside);
}

CGPoint SceneWindow::pointFromWindow(const CGPoint& position) const
{
    return position * (devicePixelRatio() / m_scale);
}

FrameStatistics SceneWindow::statistics() const
{
    FrameStatistics statistics = m_statistics;
    statistics.setTexturesUploaded(m_scene.uploadCount());
    statistics.setPeakMemory(ProcessFigures::peakMemory());
    return statistics;
}

bool SceneWindow::event(QEvent* event)
{
    // Where the display keeps the pace, its wake-up is when a frame begins.
    if (event->type() == QEvent::UpdateRequest && isPacedByDisplay())
        m_scheduler.displayFrame();
    if (m_eventHandler && m_eventHandler(*event))
        return true;
    return QQuickWindow::event(event);
}

void SceneWindow::makeFrame()
{
    if (!m_frameMaker)
        return;
    const Frame frame { m_scheduler.lastFrameDueTime(), m_scheduler.runningTime() };
    if (m_scene.setFrameList(m_frameMaker()))
        m_madeFrame = frame;
}

void SceneWindow::requestDisplay()
{
    if (isPacedByDisplay())
        requestUpdate();
    else
        m_scheduler.displayFrame();
}

// In the scene graph's thread, which may not be the main one.
void SceneWindow::frameWasDrawn()
{
    if (!m_drawnFrame)
        return; // drawn again because the window was uncovered
    const double endTime = m_scheduler.runningTime();
    const double age = ProcessFigures::age();
    QMetaObject::invokeMethod(this, [this, frame = *std::exchange(m_drawnFrame, std::nullopt), endTime, age] {
        if (m_statistics.framesDrawn() == 0)
            m_statistics.setTimeToFirstFrame(age);
        m_statistics.addFrame(frame.dueTime, frame.beginTime, endTime, m_scheduler.refreshInterval());
    });
}

// The software renderer does not wait for the display; everything else does.
bool SceneWindow::isPacedByDisplay() const { return graphicsApi() != QSGRendererInterface::Software; }
