// Catches failed assertions instead of ending the process. In force from construction to destruction.
#pragma once

#include "platform/foundation/NSAssertionHandler.h"

#include <vector>

class AssertionRecorder {
public:
    const std::vector<NSAssertionFailure>& failures() const { return m_failures; }
    // The messages alone, in order.
    std::vector<NSString> messages() const
    {
        std::vector<NSString> all;
        for (const NSAssertionFailure& failure : m_failures)
            all.push_back(failure.message);
        return all;
    }

private:
    std::vector<NSAssertionFailure> m_failures;
    NSAssertionHandler::Replacement m_replacement { [this](const NSAssertionFailure& failure) {
        m_failures.push_back(failure);
    } };
};
