// A random universally unique identifier.
#pragma once

#include "platform/foundation/FoundationTypes.h"

#include <QUuid>

class NSUUID {
public:
    // A new random identity (version 4), drawn from the random source in force.
    NSUUID();

    // UUIDString — 36 characters, 8-4-4-4-12 upper-case hexadecimal digits with hyphens.
    NSString uuidString() const;
    bool operator==(const NSUUID&) const = default;

private:
    QUuid m_uuid;
};
