// Makes the constraints that a visual format states.
//
// A metric wins over a view of the same name: gaps and priorities know metrics alone, and so a name means
// one thing throughout a format. "|" is the container of the view next to it.
#pragma once

#include "platform/layout/VisualFormatNames.h"

class VisualFormatBuilder {
public:
    using List = NSLayoutConstraint::List;

    // What it is given must outlive it.
    VisualFormatBuilder(NSLayoutFormatOptions options, const NSLayoutConstraint::Metrics& metrics,
        const NSLayoutConstraint::Views& views, VisualFormatError& error)
        : m_options(options)
        , m_names(metrics, views, error)
        , m_error(error)
    {
    }

    // In the order of the text, each view's sizes after the gap before it; the alignments come last. None,
    // and the error, when the format and what was given do not fit.
    List build(const VisualFormat& format);

private:
    using Predicate = VisualFormat::Predicate;
    using Gap = VisualFormat::Gap;
    using View = VisualFormat::View;

    // Which attributes the chain runs through.
    struct Flow {
        NSLayoutAttribute start;
        NSLayoutAttribute end;
        NSLayoutAttribute startMargin;
        NSLayoutAttribute endMargin;
        NSLayoutAttribute size;
        bool isAgainstCoordinates; // what comes later in the text is further left
    };
    struct Place {
        LayoutItem* item;
        NSLayoutAttribute attribute;
    };
    struct Rule {
        NSLayoutRelation relation;
        double constant;
        UILayoutPriority priority;
    };

    // Each is false after an error.
    bool buildAll(const VisualFormat& format);
    bool chooseFlow(UILayoutConstraintAxis axis);
    bool checkAlignments(UILayoutConstraintAxis axis);
    bool findItems(const std::vector<View>& views);
    bool findContainers(const VisualFormat& format);
    bool buildStart(const VisualFormat::Pin& pin);
    bool buildEnd(const VisualFormat::Pin& pin);
    bool buildGap(const Gap& gap, Place before, Place after, double standardDistance);
    bool buildSize(LayoutItem& item, const Predicate& predicate);
    void buildAlignments();

    void relate(Place first, Place second, const Rule& rule);
    bool fail(VisualFormat::Position position, const NSString& message);

    NSLayoutFormatOptions m_options;
    VisualFormatNames m_names;
    VisualFormatError& m_error;
    Flow m_flow {};
    std::vector<LayoutItem*> m_items; // of the chain
    LayoutItem* m_startContainer = nullptr;
    LayoutItem* m_endContainer = nullptr;
    List m_constraints;
};
