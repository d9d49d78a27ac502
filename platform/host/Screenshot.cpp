#include "platform/host/Screenshot.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImageWriter>
#include <QStandardPaths>

NSString Screenshot::save(const QImage& picture, const NSString& file)
{
    QImageWriter writer(file);
    if (QFileInfo(file).suffix().isEmpty())
        writer.setFormat("png");
    if (writer.write(picture))
        return {};
    return NSString("cannot save the picture to \"%1\": %2").arg(file, writer.errorString());
}

NSString Screenshot::fileForDate(const NSDate& date)
{
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::PicturesLocation));
    return folder.filePath(QCoreApplication::applicationName() + date.toString(" yyyy-MM-dd hh-mm-ss.'png'"));
}
