#include "platform/host/ProcessFigures.h"

#include <QByteArray>
#include <QFile>

#include <unistd.h>

#include <ctime>

namespace {

// Seconds from the start of the machine to that of this process.
double startTime()
{
    QFile file("/proc/self/stat");
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    // The second field is the program's name in parentheses and may hold anything; count from its end.
    const QByteArray line = file.readAll();
    const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
    constexpr int startField = 19; // the 22nd of the whole line
    if (fields.size() <= startField)
        return -1;
    return fields[startField].toDouble() / double(sysconf(_SC_CLK_TCK));
}

} // namespace

double ProcessFigures::age()
{
    timespec sinceBoot {};
    static const double start = startTime();
    if (start < 0 || clock_gettime(CLOCK_BOOTTIME, &sinceBoot) != 0)
        return 0;
    return double(sinceBoot.tv_sec) + double(sinceBoot.tv_nsec) * 1e-9 - start;
}

std::int64_t ProcessFigures::peakMemory()
{
    QFile file("/proc/self/status");
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray& line : lines)
        if (line.startsWith("VmHWM:"))
            return line.mid(6).simplified().split(' ').first().toLongLong() * 1024;
    return 0;
}
