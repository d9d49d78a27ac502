// What the renderer of this run makes of frame lists, held against a plain painter.
//
// In an ordinary run it is Qt's software renderer, which must draw the same but for the order in which soft
// edges are rounded. With ORUVANE_RENDERER=opengl in the environment the program needs a display and draws by
// OpenGL.
#pragma once

#include "platform/host/SceneItem.h"

#include <QQuickWindow>

#include <gtest/gtest.h>

class RendererWindow {
public:
    // One for the whole program: to make one with OpenGL takes longer than all its pictures.
    static RendererWindow& shared();

    // Shows the list as the next frame.
    QImage show(const FrameList& list);
    // The same, and whether that is right but for what is left out, in points. The name tells the pictures
    // apart that are left when they differ.
    testing::AssertionResult draws(
        const FrameList& list, const std::string& name = {}, const CGRect& leftOut = {});

private:
    RendererWindow();

    QQuickWindow m_window;
    SceneItem m_scene;
};
