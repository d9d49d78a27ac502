// Measures the object graph of a binary property list without building it.
//
// The format: numbered objects, a table of their offsets, a trailer that says where the table is. A container
// lists the numbers of what it holds.
#pragma once

#include "platform/foundation/FoundationTypes.h"

#include <cstdint>
#include <vector>

class BinaryPropertyListScan {
public:
    explicit BinaryPropertyListScan(const NSData&);

    // Whether everything reachable from the top object lies within the data, without circles, nested at
    // most so deep and at most so many bytes large when every reference is written out, with keys that are
    // texts without zero characters (the library ends the process at others).
    bool isWithin(int maximumDepth, std::uint64_t maximumSize);

private:
    enum class Visit : std::uint8_t { NotYet, Running, Done };
    struct Object {
        Visit visit = Visit::NotYet;
        int depth = 1; // of what it holds, itself included
        std::uint64_t size = 0; // with all that it holds
    };
    struct Layout { // of one object's bytes
        std::uint64_t kind = 0;
        std::uint64_t content = 0; // where the characters or the references begin
        std::uint64_t count = 0; // of characters, items or pairs
        std::uint64_t referenceCount = 0; // 0 for what is no container
        std::uint64_t size = 0;
    };
    struct Step {
        std::uint64_t object;
        Layout layout;
        std::uint64_t nextReference = 0;
    };

    bool readTrailer();
    bool readNumber(std::uint64_t offset, std::uint64_t width, std::uint64_t& number) const;
    bool readLayout(std::uint64_t object, Layout&) const;
    bool isPlainText(std::uint64_t object) const;
    bool enter(std::uint64_t object);
    bool leave();

    const NSData& m_data;
    std::uint64_t m_offsetWidth = 0;
    std::uint64_t m_referenceWidth = 0;
    std::uint64_t m_topObject = 0;
    std::uint64_t m_offsetTable = 0;
    std::vector<Object> m_objects;
    std::vector<Step> m_path; // from the top object to the one in hand
    int m_maximumDepth = 0;
    std::uint64_t m_maximumSize = 0;
};
