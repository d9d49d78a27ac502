// Moves one property from a value to another.
//
// Any of the three values may be missing:
//   from, to       from → to                  from           from → the model value of each moment
//   from, by       from → from + by           to             the shown value → to
//   by, to         to − by → to               by             the shown value → the shown value + by
//   from, to, by   from → to                  none           changes nothing
// The shown value is what would be seen at that moment without this animation.
// An additive animation starts from nothing instead of the model or the shown value, and what it makes is
// added to the shown value.
#pragma once

#include "platform/layers/CAAnimation.h"

class CABasicAnimation : public CAAnimation {
public:
    static std::shared_ptr<CABasicAnimation> animationWithKeyPath(const NSString& keyPath);

    explicit CABasicAnimation(const NSString& keyPath);
    CABasicAnimation(const CABasicAnimation&) = default;

    const NSString& keyPath() const { return m_keyPath; }
    void setKeyPath(const NSString& keyPath);

    const CAValue& fromValue() const { return m_fromValue; }
    void setFromValue(CAValue value) { m_fromValue = std::move(value); }
    const CAValue& toValue() const { return m_toValue; }
    void setToValue(CAValue value) { m_toValue = std::move(value); }
    const CAValue& byValue() const { return m_byValue; }
    void setByValue(CAValue value) { m_byValue = std::move(value); }
    bool hasFromValue() const { return !CAValues::isMissing(m_fromValue); }
    bool hasToValue() const { return !CAValues::isMissing(m_toValue); }
    bool hasByValue() const { return !CAValues::isMissing(m_byValue); }

    bool isAdditive() const { return m_additive; }
    void setAdditive(bool additive) { m_additive = additive; }

    std::shared_ptr<CAAnimation> copy() const override;
    bool animates(CAProperty property) const override { return m_path.property() == property; }

protected:
    void applyProgress(CALayerValues& shown, const CALayerValues& model, double progress) const override;
    // The fraction of the way at a fraction of the run.
    virtual double fractionAt(double progress) const { return paced(progress); }

private:
    struct Ends {
        CAValue from;
        CAValue to;
    };
    Ends ends(const CAValue& shown, const CAValue& model) const;

    NSString m_keyPath;
    CAKeyPath m_path;
    CAValue m_fromValue;
    CAValue m_toValue;
    CAValue m_byValue;
    bool m_additive = false;
};
