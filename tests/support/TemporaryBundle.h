// A bundle made for one test: files are written first, then it takes the main bundle's place.
// The files and the replacement go with the object.
#pragma once

#include "platform/foundation/NSBundle.h"

#include <QTemporaryDir>
#include <QVariant>

#include <optional>

class TemporaryBundle {
public:
    void writeFile(const NSString& name, const NSData& contents = {});
    void writeFolder(const NSString& name);
    // A property list of maps, lists, strings, numbers and truth values, as "<name>.plist".
    void writeList(const NSString& name, const QVariant& list);
    // Puts the bundle with what has been written so far in the main bundle's place.
    void makeMain();

    NSURL urlOf(const NSString& name) const;

private:
    QTemporaryDir m_folder;
    std::optional<NSBundle::MainReplacement> m_replacement;
};
