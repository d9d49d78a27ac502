// How long something took, many times over.
//
// Others use the machine meanwhile, so what counts is the shortest and the median; a mean is not told.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

class Timings {
public:
    using Clock = std::chrono::steady_clock;

    static double secondsSince(Clock::time_point start)
    {
        return std::chrono::duration<double>(Clock::now() - start).count();
    }

    void add(double seconds)
    {
        m_seconds.insert(std::upper_bound(m_seconds.begin(), m_seconds.end(), seconds), seconds);
    }

    // Does the work once and adds the time that it took.
    template <typename Work> void measure(Work work)
    {
        const auto start = Clock::now();
        work();
        add(secondsSince(start));
    }

    std::size_t count() const { return m_seconds.size(); }
    // The time, in seconds, that this fraction of all stays at or below; 0 when there are none.
    double at(double fraction) const
    {
        return m_seconds.empty() ? 0 : m_seconds[std::size_t(fraction * double(count() - 1))];
    }
    double shortest() const { return at(0); }
    double median() const { return at(0.5); }

    static void printHeading()
    {
        std::printf("%-34s %7s %10s %10s %10s %10s\n", "milliseconds", "times", "shortest", "median", "99 %",
            "longest");
    }

    void print(const char* name) const
    {
        if (count() > 0)
            std::printf("%-34s %7zu %10.4f %10.4f %10.4f %10.4f\n", name, count(), shortest() * 1000,
                median() * 1000, at(0.99) * 1000, at(1) * 1000);
    }

private:
    std::vector<double> m_seconds; // in order
};
