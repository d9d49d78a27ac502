// The way of a damped harmonic oscillator that is let go at 0 and comes to rest at 1, over one unit of time.
#pragma once

class SpringCurve {
public:
    // Ratios that would swing (almost) for ever or crawl are taken into the range 0.01 to 100.
    explicit SpringCurve(double dampingRatio);

    double dampingRatio() const { return m_dampingRatio; }
    // In radians per unit of time: chosen so that the envelope has fallen to 0.001 at time 1.
    double frequency() const { return m_frequency; }

    // Exactly 0 up to time 0, exactly 1 from time 1 on. The velocity is that at time 0.
    double valueAt(double time, double initialVelocity) const;
    // A bound for the distance from 1 at a time, for a spring that starts at rest; it never grows.
    static double envelope(double dampingRatio, double frequency, double time);

private:
    double m_dampingRatio;
    double m_frequency;
};
