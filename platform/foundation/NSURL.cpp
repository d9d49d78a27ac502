#include "platform/foundation/NSURL.h"

#include <QFileInfo>

NSString absoluteString(const NSURL& url)
{
    return url.isEmpty() ? NSString() : NSString::fromLatin1(url.toEncoded());
}

NSString lastPathComponent(const NSURL& url) { return url.fileName(); }

NSString pathExtension(const NSURL& url) { return QFileInfo(url.fileName()).suffix(); }

NSString lastPathComponentWithoutExtension(const NSURL& url)
{
    return QFileInfo(url.fileName()).completeBaseName();
}

NSURL urlByReplacingLastPathComponent(const NSURL& url, const NSString& name)
{
    NSURL replaced = url.adjusted(QUrl::RemoveFilename);
    replaced.setPath(replaced.path() + name);
    return replaced;
}
