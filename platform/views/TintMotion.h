// A tint that changes inside an animation block: while this is in force, whatever takes a new colour from it
// shifts with the block.
//
// The colours of a view's own layer are animated by every block. Those of other layers would shift in their
// own time, and a text would be drawn anew at once: here layers take the block's motion for their colours,
// and labels ask isUnderWay(). Nothing else about layers' own actions changes. Outside of a block it does
// nothing.
#pragma once

#include "platform/layers/CATransaction.h"

#include <optional>

class [[nodiscard]] TintMotion {
public:
    TintMotion();
    ~TintMotion();
    TintMotion(const TintMotion&) = delete;
    TintMotion& operator=(const TintMotion&) = delete;

    static bool isUnderWay();

private:
    const bool m_outer;
    std::optional<CATransaction::Guard> m_transaction;
};
