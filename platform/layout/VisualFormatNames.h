// What the names in a visual format stand for: numbers and views that came along with it.
#pragma once

#include "platform/layout/NSLayoutConstraint.h"
#include "platform/layout/VisualFormat.h"
#include "platform/layout/VisualFormatError.h"

class VisualFormatNames {
public:
    using Value = VisualFormat::Value;

    // What it is given must outlive it.
    VisualFormatNames(const NSLayoutConstraint::Metrics& metrics, const NSLayoutConstraint::Views& views,
        VisualFormatError& error)
        : m_metrics(metrics)
        , m_views(views)
        , m_error(error)
    {
    }

    // Null after an error: an unknown name is reported as no such kind.
    LayoutItem* view(QStringView name, VisualFormat::Position position, const char* kind = "view");
    // Null where there is no metric of the name. This one, and those below, are false after an error.
    bool findMetric(QStringView name, VisualFormat::Position position, const double*& metric);
    bool findNumber(const Value& value, double& number);
    bool findPriority(const std::optional<Value>& value, UILayoutPriority& priority); // required if unsaid

private:
    bool fail(VisualFormat::Position position, const NSString& message);

    const NSLayoutConstraint::Metrics& m_metrics;
    const NSLayoutConstraint::Views& m_views;
    VisualFormatError& m_error;
};
