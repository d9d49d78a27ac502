#include "platform/layers/CAModelChanges.h"

#include "platform/layers/CALayer.h"
#include "platform/layers/CATransaction.h"

#include <utility>

namespace {

CAModelChanges* changesInForce = nullptr;

std::shared_ptr<CALayer> living(const std::weak_ptr<NSObject>& layer)
{
    return std::static_pointer_cast<CALayer>(layer.lock());
}

void tellDelegate(CALayer& layer, CAProperty property)
{
    const auto delegate = layer.delegate();
    if (!delegate)
        return;
    switch (property) {
    case CAProperty::Bounds:
    case CAProperty::Position:
    case CAProperty::AnchorPoint:
    case CAProperty::Transform:
        return delegate->layerGeometryWasTakenBack(layer, property);
    case CAProperty::Opacity:
        return delegate->layerVisibilityWasTakenBack(layer);
    default:
        return;
    }
}

} // namespace

CAModelChanges* CAModelChanges::recording() { return changesInForce; }

CAModelChanges::Recording::Recording(CAModelChanges* changes)
    : m_outer(std::exchange(changesInForce, changes))
{
}

CAModelChanges::Recording::~Recording() { changesInForce = m_outer; }

void CAModelChanges::note(CALayer& layer, CAProperty property, CAValue before, CAValue after)
{
    const auto weakLayer = layer.weak_from_this();
    const auto takeBack = [weakLayer, path = CAKeyPath(CAKeyPath::key(property)), before = std::move(before),
                              after = std::move(after)] {
        const auto changed = living(weakLayer);
        if (changed && CAValues::isSame(path.value(changed->modelValues()), after))
            changed->setValueForKeyPath(before, CAKeyPath::key(path.property()));
    };
    const auto tell = [weakLayer, property] {
        if (const auto changed = living(weakLayer))
            tellDelegate(*changed, property);
    };
    m_changes.push_back({ takeBack, tell });
}

void CAModelChanges::noteHidden(CALayer& layer, bool hidden)
{
    const auto weakLayer = layer.weak_from_this();
    const auto takeBack = [weakLayer, hidden] {
        const auto changed = living(weakLayer);
        if (changed && changed->isHidden() == hidden)
            changed->setHidden(!hidden);
    };
    const auto tell = [weakLayer] {
        if (const auto changed = living(weakLayer))
            tellDelegate(*changed, CAProperty::Opacity);
    };
    m_changes.push_back({ takeBack, tell });
}

void CAModelChanges::takeBack()
{
    const Recording none(nullptr);
    const auto changes = std::exchange(m_changes, {});
    {
        const CATransaction::Guard transaction;
        CATransaction::setDisableActions(true);
        for (auto change = changes.rbegin(); change != changes.rend(); ++change)
            change->takeBack();
    }
    for (auto change = changes.rbegin(); change != changes.rend(); ++change)
        if (change->tell)
            change->tell();
}
