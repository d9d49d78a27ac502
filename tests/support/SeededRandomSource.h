// The same random numbers in every run. In force from construction to destruction.
#pragma once

#include "platform/foundation/RandomSource.h"

#include <random>

class SeededRandomSource final : public RandomSource {
public:
    explicit SeededRandomSource(std::uint32_t seed = 1)
        : m_generator(seed)
    {
    }

    std::uint32_t value() override { return static_cast<std::uint32_t>(m_generator()); }

private:
    std::mt19937 m_generator;
    Replacement m_replacement { *this };
};
