#include "platform/foundation/NSData.h"

#include "platform/foundation/FileProblem.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

FileContents tooLarge(qint64 bytes, qint64 mostBytes)
{
    return { {}, QStringLiteral("%1 bytes are more than the %2 that are read").arg(bytes).arg(mostBytes) };
}

} // namespace

FileContents FileContents::read(const NSString& path, qint64 mostBytes)
{
    QFile file(path);
    // Only plain files: to open a pipe would wait for its other end.
    if (path.isEmpty() || !QFileInfo(path).isFile())
        return { {}, QStringLiteral("there is no such file"), true };
    if (!file.open(QIODevice::ReadOnly))
        return { {}, file.errorString() };
    if (file.size() > mostBytes)
        return tooLarge(file.size(), mostBytes);
    // A file may grow meanwhile, and some say that they are empty. One byte more than is wanted shows the
    // end.
    NSData data;
    NSData piece;
    do {
        piece = file.read(std::clamp<qint64>(file.size() - data.size(), 0, mostBytes - data.size()) + 1);
        data += piece;
        if (data.size() > mostBytes)
            return tooLarge(data.size(), mostBytes);
    } while (!piece.isEmpty());
    if (file.error() != QFile::NoError)
        return { {}, file.errorString() };
    return { data.isNull() ? NSData("") : std::move(data), {} };
}

NSData dataWithContentsOfURL(const NSURL& url, qint64 mostBytes)
{
    const NSString path = url.toLocalFile();
    if (path.isEmpty())
        return {};
    const FileContents contents = FileContents::read(path, mostBytes);
    if (contents.data.isNull() && !contents.isMissing)
        FileProblem::tell(path, FileProblem::noLine, contents.problem);
    return contents.data;
}
