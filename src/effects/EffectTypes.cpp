#include "effects/EffectTypes.h"

#include "effects/EffectWorkerOptions.h"

#include <QMetaType>

namespace {

template <typename... Classes>
void registerPointers()
{
    (qRegisterMetaType<Classes*>(), ...);
}

} // namespace

void registerEffectTypes()
{
    qRegisterMetaType<EffectWorkerOptions>("EffectWorkerOptions");
    registerPointers<>();
}
