#include "platform/foundation/RandomSource.h"

#include <QRandomGenerator>

#include <atomic>

namespace {

class SystemRandomSource final : public RandomSource {
public:
    std::uint32_t value() override { return QRandomGenerator::system()->generate(); }
};

RandomSource& systemSource()
{
    static SystemRandomSource source;
    return source;
}

std::atomic<RandomSource*> sourceInForce = nullptr; // null stands for the system's

} // namespace

RandomSource::~RandomSource() = default;

RandomSource& RandomSource::current()
{
    RandomSource* source = sourceInForce;
    return source ? *source : systemSource();
}

std::uint32_t RandomSource::uniform(std::uint32_t upperBound)
{
    if (upperBound < 2)
        return 0;
    // 2^32 is no multiple of most bounds: the first 2^32 mod bound values would be drawn too often.
    const std::uint32_t surplus = (0 - upperBound) % upperBound;
    std::uint32_t drawn = value();
    while (drawn < surplus)
        drawn = value();
    return drawn % upperBound;
}

RandomSource::Replacement::Replacement(RandomSource& source)
    : m_previous(sourceInForce.exchange(&source))
{
}

RandomSource::Replacement::~Replacement() { sourceInForce = m_previous; }
