#include "platform/graphics/ImageDecoding.h"

#include "platform/graphics/ImageLimits.h"

#include <QBuffer>
#include <QImageReader>

namespace {

constexpr char jpegMarker = '\xFF';
constexpr char jpegEnd[] = "\xFF\xD9";
constexpr char jpegStartOfScan = '\xDA';

unsigned byteAt(const NSData& data, qsizetype position) { return static_cast<unsigned char>(data[position]); }

// The decoder fills what is missing of a JPEG file with grey and calls it a success. A whole file has its
// end mark after its first scan; one before it belongs to an embedded preview.
bool isWholeJPEG(const NSData& data)
{
    constexpr qsizetype segmentHeader = 4;
    qsizetype position = 2;
    while (position + segmentHeader <= data.size() && data[position] == jpegMarker) {
        if (data[position + 1] == jpegMarker) { // markers may be padded
            ++position;
            continue;
        }
        if (data[position + 1] == jpegStartOfScan)
            return data.indexOf(jpegEnd, position) >= 0;
        position += 2 + static_cast<qsizetype>(byteAt(data, position + 2) << 8 | byteAt(data, position + 3));
    }
    return false;
}

// Formats are told by the bytes, never by trying decoders: a file reaches only the one it is meant for.
NSData formatOf(const NSData& data)
{
    if (data.startsWith("\x89PNG\r\n\x1A\n"))
        return "png";
    if (data.startsWith("\xFF\xD8\xFF") && isWholeJPEG(data))
        return "jpeg";
    return {};
}

} // namespace

QImage inDrawingFormat(const QImage& image)
{
    return image.convertToFormat(
        image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
}

QImage decodedImage(const NSData& data)
{
    const NSData format = formatOf(data);
    if (format.isEmpty())
        return {};
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    if (!ImageLimits::permit(reader.size()))
        return {};
    const QImage image = reader.read();
    return image.isNull() ? QImage() : inDrawingFormat(image);
}
