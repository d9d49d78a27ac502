// Reads the XML form of property lists: <plist version="1.0"> around one value.
//
// Written here rather than left to the property list library, which says neither what is wrong nor where,
// knows no encoding, and makes something of whatever it meets: -99999999999999999999 was 1 and "1,5" was 1.
// A list that is wrong anywhere is refused as a whole.
#pragma once

#include "platform/foundation/NSPropertyList.h"

#include <QXmlStreamReader>

#include <optional>

class XMLPropertyList {
public:
    XMLPropertyList(const NSString& text, int maximumDepth);

    // nil where there is a problem. Called once.
    NSPropertyList read();

    int problemLine() const { return m_problemLine; }
    const NSString& problem() const { return m_problem; }

private:
    // An array or a dictionary whose end has not come yet.
    struct Container {
        bool isDictionary = false;
        NSPropertyList::Array items;
        NSPropertyList::Dictionary entries;
        std::optional<NSString> key; // whose value comes next
    };

    bool readToken();
    bool beginElement();
    bool endElement();
    bool readKey();
    bool readScalar(QStringView element);
    bool add(NSPropertyList); // to the innermost container
    bool fail(const NSString& problem);
    bool failToRead(const NSString& text, const char* kind);

    QXmlStreamReader m_reader;
    const int m_maximumDepth;
    std::vector<Container> m_path; // from the outermost container to the innermost
    bool m_isInList = false; // inside <plist>
    std::optional<NSPropertyList> m_list;
    int m_problemLine = 0;
    NSString m_problem;
};
