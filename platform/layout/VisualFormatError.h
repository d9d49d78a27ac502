// Why a visual format gives no constraints, and at which character.
#pragma once

#include "platform/foundation/FoundationTypes.h"

#include <QStringView>

struct VisualFormatError {
    qsizetype position = 0; // in the format; its length for what is missing at the end
    NSString message;

    // The message, on the next line the format, and on the third a caret under the character:
    //
    //     Cannot use the visual format: expected "(" or "]"
    //     H:|-8-[title
    //                 ^
    NSString pointingInto(QStringView format) const;
};
