// A clip's packets, as they are, in a file of another form: what the decoder tests cannot find in the
// product.
#pragma once

#include "platform/foundation/FoundationTypes.h"

#include <QTemporaryDir>

class RemuxedClip {
public:
    enum class Form {
        BareStream, // AAC packets one after the other, with nothing that tells their number
        LateStart, // an MPEG-4 file whose sound begins half a second after time 0
    };
    RemuxedClip(const NSString& clip, Form);

    NSURL url() const { return QUrl::fromLocalFile(path()); }
    // Of packets that were written; each holds 1024 frames.
    int packets() const { return m_packets; }

private:
    NSString path() const { return m_folder.filePath(QStringLiteral("remuxed.m4a")); }

    const QTemporaryDir m_folder;
    int m_packets = 0;
};
