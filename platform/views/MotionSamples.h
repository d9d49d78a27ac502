// Where something was in the last moments, to tell how fast it moves.
#pragma once

#include "platform/views/InteractionConstants.h"

#include <vector>

template <typename Value> class MotionSamples {
public:
    bool isEmpty() const { return m_samples.empty(); }
    void clear() { m_samples.clear(); }
    // What was too long ago is forgotten.
    void add(double time, const Value& value)
    {
        std::erase_if(m_samples, [time](const Sample& sample) {
            return sample.time < time - InteractionConstants::velocityWindow;
        });
        m_samples.push_back({ time, value });
    }
    // Forgets all but the last.
    void keepLast()
    {
        if (m_samples.size() > 1)
            m_samples.erase(m_samples.begin(), m_samples.end() - 1);
    }
    // The change in a second; none for what has not been watched for any time.
    Value velocity() const
    {
        if (m_samples.empty())
            return {};
        const double duration = m_samples.back().time - m_samples.front().time;
        if (!(duration > 0))
            return {};
        return (m_samples.back().value - m_samples.front().value) / duration;
    }

private:
    struct Sample {
        double time;
        Value value;
    };
    std::vector<Sample> m_samples;
};
