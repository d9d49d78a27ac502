// The path to an animatable property of a layer, or to a part of one: "position.x", "transform.scale.xy".
//
// The text is read once; reading and writing values by a path then compares no strings. The view's word
// "center" stands for the position.
#pragma once

#include "platform/foundation/FoundationTypes.h"
#include "platform/layers/CALayerValues.h"
#include "platform/layers/CAValue.h"

enum class CAProperty {
    None,
    Bounds,
    Position,
    AnchorPoint,
    Transform,
    Opacity,
    CornerRadius,
    BackgroundColor,
    ContentsTintColor,
    StrokeStart,
    StrokeEnd,
    LineWidth,
    StrokeColor,
    FillColor,
    Path,
};

class CAKeyPath {
public:
    // Names nothing: reads as a missing value, writes nothing.
    CAKeyPath() = default;
    // A text that names no property of a layer makes a path that names nothing.
    explicit CAKeyPath(const NSString& text);

    bool isValid() const { return m_property != CAProperty::None; }
    CAProperty property() const { return m_property; }

    CAValue value(const CALayerValues&) const;
    // A value of the wrong kind is not written.
    void setValue(CALayerValues&, const CAValue&) const;

    // The key that actions and implicit animations of a property go by: "position", "opacity" …
    static const NSString& key(CAProperty);

    enum class Part {
        Whole,
        X,
        Y,
        Origin,
        OriginX,
        OriginY,
        Size,
        Width,
        Height,
        Scale, // both factors; reads as their mean
        ScaleX,
        ScaleY,
        Rotation,
        Translation,
        TranslationX,
        TranslationY,
    };

private:
    CAProperty m_property = CAProperty::None;
    Part m_part = Part::Whole;
};
