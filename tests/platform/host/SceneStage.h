// A window on the offscreen platform that shows frame lists, and what it really shows.
#pragma once

#include "platform/host/FramePainter.h"
#include "platform/host/SceneItem.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QScreen>
#include <QTimer>

#include <gtest/gtest.h>

class SceneStage {
public:
    // In device pixels.
    explicit SceneStage(const QSize& size,
        FlatteningPlan::FlattensMoving flattensMoving = FlatteningPlan::FlattensMoving::Yes)
        : m_scene(m_window.contentItem(), flattensMoving)
    {
        QGuiApplication::setQuitOnLastWindowClosed(false); // it would end the loop of the next test
        QObject::connect(&m_window, &QQuickWindow::frameSwapped, [this] { ++m_framesDrawn; });
        m_window.setColor(Qt::black);
        m_window.resize(size);
        m_scene.setSize(size);
        m_window.show();
        waitForFrame(0);
    }

    // Shows the list and waits until it is drawn; answers false when there was nothing to draw.
    bool show(const FrameList& list)
    {
        const int before = m_framesDrawn;
        if (!m_scene.setFrameList(list))
            return false;
        waitForFrame(before);
        return true;
    }

    // What has been flushed to the screen, damage by damage.
    QImage shown() { return m_window.screen()->grabWindow(m_window.winId()).toImage(); }
    // What a plain painter makes of the list.
    QImage painted() const { return FramePainter(m_scene.frameList()).paintScreen(); }

    SceneItem& scene() { return m_scene; }
    QQuickWindow& window() { return m_window; }
    int framesDrawn() const { return m_framesDrawn; }

    // Until more frames than that have been drawn.
    void waitForFrame(int framesBefore)
    {
        if (m_framesDrawn == framesBefore) {
            QEventLoop loop;
            QObject::connect(&m_window, &QQuickWindow::frameSwapped, &loop, &QEventLoop::quit);
            QTimer::singleShot(5000, &loop, &QEventLoop::quit);
            loop.exec();
        }
        EXPECT_GT(m_framesDrawn, framesBefore) << "nothing was drawn";
    }

private:
    QQuickWindow m_window;
    SceneItem m_scene;
    int m_framesDrawn = 0;
};
