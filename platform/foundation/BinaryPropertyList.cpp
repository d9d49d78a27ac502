#include "platform/foundation/BinaryPropertyList.h"

#include "platform/foundation/BinaryPropertyListScan.h"

#include <plist/plist.h>

#include <cstdlib>

namespace {

struct NodeFree {
    void operator()(void* node) const { plist_free(node); }
};
using OwnedNode = std::unique_ptr<void, NodeFree>;

struct MallocFree {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename Type> using Malloced = std::unique_ptr<Type, MallocFree>;

NSPropertyList convert(plist_t node);

// The library tells 64 bits but not whether they have a sign; its XML form does.
bool isNegativeInteger(plist_t node)
{
    char* xml = nullptr;
    uint32_t length = 0;
    plist_to_xml(node, &xml, &length);
    const bool isNegative = xml && QByteArrayView(xml, length).contains("<integer>-");
    plist_to_xml_free(xml);
    return isNegative;
}

NSNumber integerFrom(plist_t node)
{
    uint64_t bits = 0;
    plist_get_uint_val(node, &bits);
    const auto asSigned = static_cast<std::int64_t>(bits);
    return asSigned < 0 && isNegativeInteger(node) ? NSNumber(asSigned) : NSNumber(bits);
}

NSDate dateFrom(plist_t node)
{
    constexpr qint64 secondsTo2001 = 978307200; // the library counts from the start of that year
    int32_t seconds = 0;
    int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    return NSDate::fromMSecsSinceEpoch((secondsTo2001 + seconds) * 1000 + microseconds / 1000, Qt::UTC);
}

NSPropertyList arrayFrom(plist_t node)
{
    plist_array_iter start = nullptr;
    plist_array_new_iter(node, &start);
    const Malloced<void> iterator(start);
    NSPropertyList::Array array;
    plist_t item = nullptr;
    for (plist_array_next_item(node, start, &item); item; plist_array_next_item(node, start, &item))
        array.push_back(convert(item));
    return array;
}

NSPropertyList dictionaryFrom(plist_t node)
{
    plist_dict_iter start = nullptr;
    plist_dict_new_iter(node, &start);
    const Malloced<void> iterator(start);
    NSPropertyList::Dictionary dictionary;
    while (true) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(node, start, &key, &value);
        const Malloced<char> ownedKey(key);
        if (!key || !value)
            return dictionary;
        dictionary.insert_or_assign(NSString::fromUtf8(key), convert(value));
    }
}

// Recursion is safe here: the scan has bounded the depth.
NSPropertyList convert(plist_t node)
{
    uint64_t length = 0;
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return NSNumber(value != 0);
    }
    case PLIST_UINT:
        return integerFrom(node);
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return NSNumber(value);
    }
    case PLIST_STRING: {
        const char* text = plist_get_string_ptr(node, &length);
        return NSString::fromUtf8(text ? text : "", text ? static_cast<qsizetype>(length) : 0);
    }
    case PLIST_DATA: {
        const char* bytes = plist_get_data_ptr(node, &length);
        return bytes ? NSData(bytes, static_cast<qsizetype>(length)) : NSData("");
    }
    case PLIST_DATE:
        return dateFrom(node);
    case PLIST_ARRAY:
        return arrayFrom(node);
    case PLIST_DICT:
        return dictionaryFrom(node);
    default:
        return {};
    }
}

} // namespace

NSPropertyList BinaryPropertyList::read(const NSData& data, int maximumDepth)
{
    constexpr std::uint64_t maximumSize = std::uint64_t { 256 } * 1024 * 1024;
    if (!BinaryPropertyListScan(data).isWithin(maximumDepth, maximumSize))
        return {};
    plist_t root = nullptr;
    plist_from_bin(data.constData(), static_cast<uint32_t>(data.size()), &root);
    const OwnedNode owned(root);
    return root ? convert(root) : NSPropertyList();
}
