// A property list, read from XML or binary form: a tree of dictionaries, arrays and plain values.
//
// Reading it never fails: a missing key, an index out of range or a value of another kind gives nil,
// and nil gives nil, 0 and empty collections in turn, so one can ask down a path without checks.
// Values are immutable and cheap to copy.
#pragma once

#include "platform/foundation/NSNumber.h"

#include <map>
#include <memory>
#include <variant>
#include <vector>

class NSPropertyList {
public:
    using Array = std::vector<NSPropertyList>;
    using Dictionary = std::map<NSString, NSPropertyList>;

    // Larger files are not read, nor lists with values in values deeper than this.
    static constexpr qint64 maximumFileSize = 64 * 1024 * 1024;
    static constexpr int maximumDepth = 256;

    NSPropertyList() = default; // nil
    NSPropertyList(const NSNumber& number)
        : m_value(number)
    {
    }
    NSPropertyList(const NSString&);
    NSPropertyList(const NSDate&);
    NSPropertyList(const NSData&);
    NSPropertyList(Array);
    NSPropertyList(Dictionary);

    // nil when the data is no property list.
    static NSPropertyList propertyListWithData(const NSData&);
    // dictionaryWithContentsOfFile: — nil when the file is missing or holds another kind. Why a file cannot
    // be read is told on standard error, with its line; about a nil path there is nothing to tell.
    static NSPropertyList dictionaryWithContentsOfFile(const NSString& path);
    // arrayWithContentsOfFile: — likewise.
    static NSPropertyList arrayWithContentsOfFile(const NSString& path);

    bool isNil() const { return std::holds_alternative<std::monostate>(m_value); }
    bool isDictionary() const { return std::holds_alternative<SharedDictionary>(m_value); }
    bool isArray() const { return std::holds_alternative<SharedArray>(m_value); }
    bool isString() const { return std::holds_alternative<NSString>(m_value); }
    bool isNumber() const { return std::holds_alternative<NSNumber>(m_value); }

    // objectForKey:
    const NSPropertyList& operator[](const NSString& key) const;
    const NSPropertyList& operator[](std::size_t index) const;
    std::size_t count() const;
    const Array& array() const;
    const Dictionary& dictionary() const;

    NSString stringValue() const; // nil unless it is a string
    NSDate dateValue() const;
    NSData dataValue() const;
    // Numbers, and strings that begin with one ("12.5 m" is 12.5); 0 for everything else.
    double doubleValue() const;
    // As NSNumber converts: a negative number gives 0, one too large the largest.
    std::uint64_t unsignedIntegerValue() const;
    std::int64_t integerValue() const;

private:
    using SharedArray = std::shared_ptr<const Array>;
    using SharedDictionary = std::shared_ptr<const Dictionary>;

    enum class Kind : std::uint8_t { Array, Dictionary };

    static NSPropertyList withContentsOfFile(const NSString& path, Kind);
    NSNumber numberValue() const;

    std::variant<std::monostate, NSNumber, NSString, NSDate, NSData, SharedArray, SharedDictionary> m_value;
};
