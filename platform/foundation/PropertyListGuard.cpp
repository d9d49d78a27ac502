#include "platform/foundation/PropertyListGuard.h"

#include "platform/foundation/BinaryPropertyListScan.h"

#include <QXmlStreamReader>

bool PropertyListGuard::admits(const NSData& data, int maximumDepth)
{
    return isBinary(data) ? admitsBinary(data, maximumDepth) : admitsXML(data, maximumDepth);
}

bool PropertyListGuard::admitsXML(const NSData& data, int maximumDepth)
{
    // As text, so that an encoding named inside cannot make this reader see another document than the
    // library.
    QXmlStreamReader reader(NSString::fromUtf8(data));
    int depth = 0;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            if (++depth > maximumDepth + 1) // the list's own element stands around its content
                return false;
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        case QXmlStreamReader::DTD:
            // No list declares anything of its own; what looks like tags in there is an attack.
            if (reader.text().contains(u'[') || reader.text().count(u'<') > 1)
                return false;
            break;
        default:
            break;
        }
    }
    return !reader.hasError();
}

bool PropertyListGuard::admitsBinary(const NSData& data, int maximumDepth)
{
    constexpr std::uint64_t maximumSize = std::uint64_t { 256 } * 1024 * 1024;
    return BinaryPropertyListScan(data).isWithin(maximumDepth, maximumSize);
}
