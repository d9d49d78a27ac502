#include "platform/foundation/BinaryPropertyListScan.h"

namespace {

constexpr std::uint64_t trailerSize = 32;
constexpr std::uint64_t nodeSize = 64; // about what the library spends on an empty object

// The upper half of the byte that each object begins with.
enum Kind : std::uint64_t {
    Integer = 0x1,
    Data = 0x4, // the first kind with a count in the lower half
    Text = 0x5,
    WideText = 0x6,
    Identifier = 0x8,
    Array = 0xA, // the first kind of container
    Dictionary = 0xD,
};

} // namespace

BinaryPropertyListScan::BinaryPropertyListScan(const NSData& data)
    : m_data(data)
{
}

bool BinaryPropertyListScan::isWithin(int maximumDepth, std::uint64_t maximumSize)
{
    m_maximumDepth = maximumDepth;
    m_maximumSize = maximumSize;
    if (!readTrailer() || !enter(m_topObject))
        return false;
    while (!m_path.empty()) {
        Step& step = m_path.back();
        if (step.nextReference == step.layout.referenceCount) {
            if (!leave())
                return false;
            continue;
        }
        const std::uint64_t reference = step.nextReference++;
        const bool isKey = step.layout.kind == Dictionary && reference < step.layout.count; // keys come first
        std::uint64_t child = 0;
        if (!readNumber(step.layout.content + reference * m_referenceWidth, m_referenceWidth, child)
            || !enter(child) || (isKey && !isPlainText(child)))
            return false;
    }
    return true;
}

bool BinaryPropertyListScan::readTrailer()
{
    const auto size = static_cast<std::uint64_t>(m_data.size());
    if (size < trailerSize)
        return false;
    const std::uint64_t trailer = size - trailerSize;
    std::uint64_t objectCount = 0;
    const bool isRead = readNumber(trailer + 6, 1, m_offsetWidth)
        && readNumber(trailer + 7, 1, m_referenceWidth) && readNumber(trailer + 8, 8, objectCount)
        && readNumber(trailer + 16, 8, m_topObject) && readNumber(trailer + 24, 8, m_offsetTable);
    if (!isRead || objectCount > size) // each object takes a byte at least
        return false;
    m_objects.resize(objectCount);
    return true;
}

bool BinaryPropertyListScan::readNumber(
    std::uint64_t offset, std::uint64_t width, std::uint64_t& number) const
{
    const auto size = static_cast<std::uint64_t>(m_data.size());
    if (width < 1 || width > 8 || offset > size || size - offset < width)
        return false;
    number = 0;
    for (std::uint64_t index = offset; index < offset + width; ++index)
        number = number << 8 | static_cast<unsigned char>(m_data.at(static_cast<qsizetype>(index)));
    return true;
}

// A marker byte: the kind in its upper half, a count in its lower. A count of 15 says that the true one
// follows as an integer object.
bool BinaryPropertyListScan::readLayout(std::uint64_t object, Layout& layout) const
{
    std::uint64_t offset = 0;
    std::uint64_t marker = 0;
    // The object's number is below the data's size, and so is the table's offset once a read succeeded.
    if (m_offsetTable > static_cast<std::uint64_t>(m_data.size())
        || !readNumber(m_offsetTable + object * m_offsetWidth, m_offsetWidth, offset)
        || !readNumber(offset, 1, marker))
        return false;
    layout.kind = marker >> 4;
    layout.content = offset + 1;
    layout.count = layout.kind >= Data && layout.kind != Identifier ? marker & 0x0F : 0;
    if (layout.count == 0x0F) {
        std::uint64_t countMarker = 0;
        if (!readNumber(layout.content, 1, countMarker) || countMarker >> 4 != Integer)
            return false;
        const std::uint64_t width = std::uint64_t { 1 } << (countMarker & 0x0F);
        if (!readNumber(layout.content + 1, width, layout.count))
            return false;
        layout.content += 1 + width;
    }
    if (layout.count > static_cast<std::uint64_t>(m_data.size()))
        return false;
    const bool isContainer = layout.kind >= Array;
    if (isContainer)
        layout.referenceCount = layout.kind == Dictionary ? 2 * layout.count : layout.count;
    layout.size = nodeSize + (isContainer ? 0 : 2 * layout.count); // a character takes up to two bytes
    return true;
}

bool BinaryPropertyListScan::isPlainText(std::uint64_t object) const
{
    Layout layout;
    if (!readLayout(object, layout) || (layout.kind != Text && layout.kind != WideText))
        return false;
    const std::uint64_t width = layout.kind == WideText ? 2 : 1;
    for (std::uint64_t index = 0; index < layout.count; ++index) {
        std::uint64_t character = 0;
        if (!readNumber(layout.content + index * width, width, character) || character == 0)
            return false;
    }
    return true;
}

bool BinaryPropertyListScan::enter(std::uint64_t number)
{
    if (number >= m_objects.size())
        return false;
    Object& object = m_objects[number];
    if (object.visit == Visit::Running)
        return false; // it holds itself
    if (object.visit == Visit::NotYet) {
        Layout layout;
        if (!readLayout(number, layout) || m_path.size() >= static_cast<std::size_t>(m_maximumDepth))
            return false;
        object.visit = Visit::Running;
        object.size = layout.size;
        m_path.push_back({ number, layout });
        return true;
    }
    // Known already: only what it adds to its new holder counts.
    Object& holder = m_objects[m_path.back().object];
    holder.size += object.size;
    holder.depth = std::max(holder.depth, object.depth + 1);
    return holder.size <= m_maximumSize && holder.depth <= m_maximumDepth;
}

bool BinaryPropertyListScan::leave()
{
    const std::uint64_t number = m_path.back().object;
    m_path.pop_back();
    m_objects[number].visit = Visit::Done;
    if (m_path.empty())
        return m_objects[number].size <= m_maximumSize;
    return enter(number); // adds it to its holder
}
