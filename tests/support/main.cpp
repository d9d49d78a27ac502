// The entry of every suite: a Qt application without a window system, so that fonts and pictures work, in
// the same surroundings everywhere. With ORUVANE_RENDERER=opengl it draws with OpenGL on the display instead.
#include "tests/support/Surroundings.h"

#include <QGuiApplication>

#include <gmock/gmock.h>

int main(int argc, char** argv)
{
    Surroundings::makePlain();
    if (qgetenv("ORUVANE_RENDERER") == "opengl") {
        qputenv("QT_QPA_PLATFORM", "xcb");
        qputenv("QT_QUICK_BACKEND", "rhi");
        qputenv("QSG_RHI_BACKEND", "opengl");
        qputenv("QT_XCB_GL_INTEGRATION", "xcb_glx");
        qputenv("LIBGL_ALWAYS_SOFTWARE", "1"); // the same driver everywhere
    }
    const QGuiApplication application(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
