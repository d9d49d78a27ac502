#include "platform/media/SoundFileProbe.h"

#include "platform/foundation/FileProblem.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <array>

namespace {

// One box of an MPEG-4 file: four bytes of size, four of type, then content, often more boxes.
struct Box {
    QByteArray type;
    qint64 content = 0; // where its content begins
    qint64 end = 0;
};

constexpr int mostBoxes = 1000; // a file of thousands of empty boxes is no sound

// The box at the position; a null type where none fits before the limit.
Box boxAt(QFile& file, qint64 position, qint64 limit)
{
    if (limit - position < 8 || !file.seek(position))
        return {};
    const QByteArray head = file.read(16);
    if (head.size() < 8)
        return {};
    quint64 size = qFromBigEndian<quint32>(head.constData());
    qint64 content = position + 8;
    if (size == 1 && head.size() == 16) { // a 64-bit size follows
        size = qFromBigEndian<quint64>(head.constData() + 8);
        content += 8;
    }
    const auto room = static_cast<quint64>(limit - position);
    if (size == 0)
        size = room; // to the end of the file
    if (size < static_cast<quint64>(content - position) || size > room)
        return {};
    return { head.mid(4, 4), content, position + static_cast<qint64>(size) };
}

// Whether some box found along the path of types satisfies the test.
template <typename Test>
bool anyBox(QFile& file, qint64 begin, qint64 end, const char* const* path, int& boxesLeft, Test test)
{
    for (qint64 position = begin; position < end && boxesLeft-- > 0;) {
        const Box box = boxAt(file, position, end);
        if (box.type.isNull())
            return false;
        if (box.type == *path) {
            const bool isLast = !path[1];
            if (isLast ? test(box) : anyBox(file, box.content, box.end, path + 1, boxesLeft, test))
                return true;
        }
        position = box.end;
    }
    return false;
}

// An MPEG-4 file has a track whose handler is sound. One cut off before its table of contents has none.
bool hasSoundTrack(QFile& file)
{
    static constexpr const char* path[] = { "moov", "trak", "mdia", "hdlr", nullptr };
    int boxesLeft = mostBoxes;
    return anyBox(file, 0, file.size(), path, boxesLeft, [&](const Box& handler) {
        const qint64 kind = handler.content + 8; // after version, flags and a reserved word
        return handler.end - kind >= 4 && file.seek(kind) && file.read(4) == "soun";
    });
}

// A bare MPEG audio stream: eleven bits of synchronisation, then a version and a layer that exist.
bool beginsLikeStream(const QByteArray& head)
{
    if (head.size() < 4 || static_cast<quint8>(head[0]) != 0xFF
        || (static_cast<quint8>(head[1]) & 0xE0) != 0xE0)
        return false;
    const int version = (head[1] >> 3) & 3;
    const int layer = (head[1] >> 1) & 3;
    const bool isTransportStream = (static_cast<quint8>(head[1]) & 0xF6) == 0xF0; // AAC, whose layer is 0
    return version != 1 && (layer != 0 || isTransportStream);
}

const char* formatBeginningWith(const QByteArray& head)
{
    const QByteArray form = head.mid(8, 4);
    if (head.startsWith("RIFF"))
        return form == "WAVE" ? "wav" : nullptr;
    if (head.startsWith("FORM"))
        return form == "AIFF" || form == "AIFC" ? "aiff" : nullptr;
    if (head.startsWith("fLaC"))
        return "flac";
    if (head.startsWith("OggS"))
        return "ogg";
    if (head.startsWith("caff"))
        return "caf";
    // Tags come before streams of several kinds.
    return head.startsWith("ID3") || beginsLikeStream(head) ? SoundFileProbe::allLibavFormats : nullptr;
}

} // namespace

const char* SoundFileProbe::libavFormat(const NSURL& url)
{
    if (!url.isLocalFile() || !QFileInfo(url.toLocalFile()).isFile())
        return nullptr;
    QFile file(url.toLocalFile());
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return nullptr;
    if (file.size() > largestFile) {
        FileProblem::tell(file.fileName(), FileProblem::noLine,
            QStringLiteral("%1 bytes are more than the %2 of a sound").arg(file.size()).arg(largestFile));
        return nullptr;
    }
    const QByteArray head = file.read(12);
    if (head.mid(4, 4) == "ftyp")
        return hasSoundTrack(file) ? "mov" : nullptr;
    return formatBeginningWith(head);
}
