#include "platform/layers/CAModelChanges.h"

#include "platform/layers/CALayer.h"
#include "platform/layers/CATransaction.h"

#include <utility>

namespace {

CAModelChanges* changesInForce = nullptr;

bool isGeometry(CAProperty property)
{
    return property == CAProperty::Bounds || property == CAProperty::Position
        || property == CAProperty::AnchorPoint || property == CAProperty::Transform;
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
    note([weakLayer = layer.weak_from_this(), path = CAKeyPath(CAKeyPath::key(property)),
             before = std::move(before), after = std::move(after)] {
        const auto changed = std::static_pointer_cast<CALayer>(weakLayer.lock());
        if (!changed || !CAValues::isSame(path.value(changed->modelValues()), after))
            return;
        changed->setValueForKeyPath(before, CAKeyPath::key(path.property()));
        const auto delegate = changed->delegate();
        if (delegate && isGeometry(path.property()))
            delegate->layerGeometryWasTakenBack(*changed);
    });
}

void CAModelChanges::takeBack()
{
    const Recording none(nullptr);
    const CATransaction::Guard transaction;
    CATransaction::setDisableActions(true);
    const auto changes = std::exchange(m_changes, {});
    for (auto change = changes.rbegin(); change != changes.rend(); ++change)
        (*change)();
}
