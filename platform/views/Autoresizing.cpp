#include "platform/views/Autoresizing.h"

namespace {

// One axis: the margin before the view, the view, the margin after it.
struct Axis {
    double lengths[3];
    bool flexible[3];

    void grow(double difference)
    {
        double flexibleLength = 0;
        int flexibleCount = 0;
        for (int part = 0; part < 3; ++part) {
            if (!flexible[part])
                continue;
            flexibleLength += std::max(lengths[part], 0.0);
            ++flexibleCount;
        }
        for (int part = 0; part < 3; ++part) {
            if (!flexible[part])
                continue;
            const double share
                = flexibleLength > 0 ? std::max(lengths[part], 0.0) / flexibleLength : 1.0 / flexibleCount;
            lengths[part] += share * difference;
        }
    }
};

} // namespace

CGRect autoresizedFrame(const CGRect& frame, UIViewAutoresizing mask, const CGSize& oldSuperviewSize,
    const CGSize& newSuperviewSize)
{
    using enum UIViewAutoresizing;
    Axis horizontal { { frame.left(), frame.width(), oldSuperviewSize.width() - frame.right() },
        { hasBits(mask, FlexibleLeftMargin), hasBits(mask, FlexibleWidth),
            hasBits(mask, FlexibleRightMargin) } };
    Axis vertical { { frame.top(), frame.height(), oldSuperviewSize.height() - frame.bottom() },
        { hasBits(mask, FlexibleTopMargin), hasBits(mask, FlexibleHeight),
            hasBits(mask, FlexibleBottomMargin) } };
    horizontal.grow(newSuperviewSize.width() - oldSuperviewSize.width());
    vertical.grow(newSuperviewSize.height() - oldSuperviewSize.height());
    return { horizontal.lengths[0], vertical.lengths[0], std::max(horizontal.lengths[1], 0.0),
        std::max(vertical.lengths[1], 0.0) };
}
