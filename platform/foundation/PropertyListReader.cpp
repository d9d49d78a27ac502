#include "platform/foundation/PropertyListReader.h"

#include "platform/foundation/BinaryPropertyList.h"
#include "platform/foundation/XMLPropertyList.h"
#include "platform/foundation/XMLText.h"

PropertyListReader PropertyListReader::read(const NSData& data)
{
    if (data.size() > NSPropertyList::maximumFileSize)
        return { {}, 0, QStringLiteral("the property list is too large") };
    if (BinaryPropertyList::isBinary(data)) {
        NSPropertyList list = BinaryPropertyList::read(data, NSPropertyList::maximumDepth);
        if (list.isNil())
            return { {}, 0, QStringLiteral("the binary property list is damaged") };
        return { std::move(list), 0, {} };
    }
    const XMLText text = XMLText::decode(data);
    if (!text.problem.isEmpty())
        return { {}, text.problemLine, text.problem };
    XMLPropertyList reader(text.text, NSPropertyList::maximumDepth);
    NSPropertyList list = reader.read();
    return { std::move(list), reader.problemLine(), reader.problem() };
}
