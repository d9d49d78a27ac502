// An item with its edges, middles, baselines and sizes as anchors, from which constraints are made.
#pragma once

#include "platform/layout/NSLayoutAnchor.h"

class AnchoredLayoutItem : public LayoutItem {
public:
    NSLayoutXAxisAnchor leftAnchor() { return { *this, NSLayoutAttribute::Left }; }
    NSLayoutXAxisAnchor rightAnchor() { return { *this, NSLayoutAttribute::Right }; }
    NSLayoutXAxisAnchor leadingAnchor() { return { *this, NSLayoutAttribute::Leading }; }
    NSLayoutXAxisAnchor trailingAnchor() { return { *this, NSLayoutAttribute::Trailing }; }
    NSLayoutXAxisAnchor centerXAnchor() { return { *this, NSLayoutAttribute::CenterX }; }
    NSLayoutYAxisAnchor topAnchor() { return { *this, NSLayoutAttribute::Top }; }
    NSLayoutYAxisAnchor bottomAnchor() { return { *this, NSLayoutAttribute::Bottom }; }
    NSLayoutYAxisAnchor centerYAnchor() { return { *this, NSLayoutAttribute::CenterY }; }
    NSLayoutYAxisAnchor firstBaselineAnchor() { return { *this, NSLayoutAttribute::FirstBaseline }; }
    NSLayoutYAxisAnchor lastBaselineAnchor() { return { *this, NSLayoutAttribute::LastBaseline }; }
    NSLayoutDimension widthAnchor() { return { *this, NSLayoutAttribute::Width }; }
    NSLayoutDimension heightAnchor() { return { *this, NSLayoutAttribute::Height }; }

protected:
    AnchoredLayoutItem() = default;
    ~AnchoredLayoutItem() = default;
};
