// The entry of every suite: a Qt application without a window system, so that fonts and pictures work, in
// the same surroundings everywhere.
#include <QGuiApplication>

#include <gmock/gmock.h>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("LC_ALL", "C.UTF-8");
    const QGuiApplication application(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
