// The part of NSPropertyList that makes it from bytes and files.

#include "platform/foundation/FileProblem.h"
#include "platform/foundation/NSData.h"
#include "platform/foundation/NSPropertyList.h"
#include "platform/foundation/PropertyListReader.h"

NSPropertyList NSPropertyList::propertyListWithData(const NSData& data)
{
    return PropertyListReader::read(data).list;
}

NSPropertyList NSPropertyList::withContentsOfFile(const NSString& path, Kind kind)
{
    if (path.isEmpty())
        return {};
    const FileContents contents = FileContents::read(path, maximumFileSize);
    if (contents.data.isNull()) {
        FileProblem::tell(path, FileProblem::noLine, contents.problem);
        return {};
    }
    PropertyListReader reader = PropertyListReader::read(contents.data);
    if (reader.list.isNil()) {
        FileProblem::tell(path, reader.problemLine, reader.problem);
        return {};
    }
    if (kind == Kind::Array ? reader.list.isArray() : reader.list.isDictionary())
        return std::move(reader.list);
    FileProblem::tell(path, FileProblem::noLine,
        kind == Kind::Array ? QStringLiteral("the property list is no array")
                            : QStringLiteral("the property list is no dictionary"));
    return {};
}

NSPropertyList NSPropertyList::dictionaryWithContentsOfFile(const NSString& path)
{
    return withContentsOfFile(path, Kind::Dictionary);
}

NSPropertyList NSPropertyList::arrayWithContentsOfFile(const NSString& path)
{
    return withContentsOfFile(path, Kind::Array);
}
