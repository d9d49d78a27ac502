#include "platform/foundation/FileProblem.h"

#include <QSet>

#include <cstdio>
#include <mutex>

void FileProblem::tell(const NSString& path, int line, const NSString& cause)
{
    static std::mutex mutex;
    static QSet<NSString> told;
    const NSString place = line == noLine ? path : path + u':' + NSString::number(line);
    const NSString text = place + QStringLiteral(": ") + cause;
    const std::lock_guard lock(mutex);
    if (told.contains(text))
        return;
    told.insert(text);
    std::fprintf(stderr, "%s\n", text.toUtf8().constData());
}
