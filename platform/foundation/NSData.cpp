#include "platform/foundation/NSData.h"

#include <QFile>
#include <QFileInfo>

NSData dataWithContentsOfURL(const NSURL& url)
{
    const NSString path = url.toLocalFile();
    QFile file(path);
    // Only plain files: to open a pipe would wait for its other end.
    if (path.isEmpty() || !QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    const NSData data = file.readAll();
    return data.isNull() ? NSData("") : data;
}
