// Uniform random numbers.
//
// Everything random asks the source in force: the system's own, unless a guard has put another one in
// its place, which is how a test gets the same numbers every time. Safe from any thread.
#pragma once

#include <cstdint>

class RandomSource {
public:
    virtual ~RandomSource();

    static RandomSource& current();

    // arc4random — every 32-bit value is equally likely.
    virtual std::uint32_t value() = 0;
    // arc4random_uniform — below the bound, without the bias of a remainder; 0 for the bounds 0 and 1.
    std::uint32_t uniform(std::uint32_t upperBound);
    // value() x 2^-32: in [0, 1).
    double fraction() { return value() * 0x1p-32; }

    // Puts a source in force until the guard goes; guards nest.
    class [[nodiscard]] Replacement {
    public:
        explicit Replacement(RandomSource&);
        ~Replacement();
        Replacement(const Replacement&) = delete;
        Replacement& operator=(const Replacement&) = delete;

    private:
        RandomSource* m_previous;
    };
};
