#include "platform/views/TintMotion.h"

#include "platform/layers/CALayer.h"
#include "platform/views/UIViewAnimationBlock.h"

namespace {

bool motionUnderWay = false;

bool isColor(const NSString& key)
{
    switch (CAKeyPath(key).property()) {
    case CAProperty::BackgroundColor:
    case CAProperty::ContentsTintColor:
    case CAProperty::StrokeColor:
    case CAProperty::FillColor:
        return true;
    default:
        return false;
    }
}

} // namespace

TintMotion::TintMotion()
    : m_outer(std::exchange(motionUnderWay, UIViewAnimationBlock::current() != nullptr))
{
    if (!motionUnderWay || m_outer)
        return;
    m_transaction.emplace();
    CATransaction::setActionMaker([](const CALayer& layer, const NSString& key) -> CAActionAnswer {
        const auto block = UIViewAnimationBlock::current();
        if (!block || !isColor(key))
            return std::nullopt;
        return block->isAnimating(layer, key) ? nullptr : block->makeAnimation(layer, key, nullptr);
    });
}

TintMotion::~TintMotion() { motionUnderWay = m_outer; }

bool TintMotion::isUnderWay() { return motionUnderWay && UIViewAnimationBlock::current(); }
