#include "tests/support/SourcePath.h"

QString sourcePath(const char* relative)
{
    return QStringLiteral(ORUVANE_SOURCE_DIR "/") + QString::fromUtf8(relative);
}
