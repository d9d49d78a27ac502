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

NSString Screenshot::picturesFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
}

NSString Screenshot::newFile(const NSString& folder, const NSDate& date)
{
    const QDir pictures(folder);
    pictures.mkpath("."); // saving says why when that fails
    const NSString name = QCoreApplication::applicationName() + date.toString(" yyyy-MM-dd hh-mm-ss");
    NSString file = pictures.filePath(name + ".png");
    for (int number = 2; QFileInfo::exists(file); ++number)
        file = pictures.filePath(NSString("%1 %2.png").arg(name).arg(number));
    return file;
}
