#include "platform/foundation/NSUUID.h"

#include "platform/foundation/RandomSource.h"

#include <array>

NSUUID::NSUUID()
{
    std::array<std::uint32_t, 4> words {};
    for (std::uint32_t& word : words)
        word = RandomSource::current().value();
    QByteArray bytes(reinterpret_cast<const char*>(words.data()), sizeof(words));
    // Version 4, and the variant of the standard that defines it.
    bytes[6] = static_cast<char>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<char>((bytes[8] & 0x3F) | 0x80);
    m_uuid = QUuid::fromRfc4122(bytes);
}

NSString NSUUID::uuidString() const { return m_uuid.toString(QUuid::WithoutBraces).toUpper(); }
