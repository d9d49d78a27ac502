// A folder that goes with the object, and files in it.
#pragma once

#include "platform/foundation/FoundationTypes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

class TemporaryFolder {
public:
    NSString path() const { return m_folder.path(); }
    NSString pathOf(const NSString& name) const { return m_folder.filePath(name); }

    // Folders on the way are made; answers the path.
    NSString write(const NSString& name, const NSData& contents = {}) const
    {
        const NSString path = pathOf(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }

private:
    QTemporaryDir m_folder;
};
