#include "wrappers/qt/extensions/qtquick/inputhelper_p.h"

#include "wrappers/qt/extensions/qtquick/hostmodule.h"
#include "wrappers/qt/extensions/qtquick/inputdelivery.h"

namespace Vantle::QtWrapper {

bool InputHelper::passesOver(QQuickItem *item) const
{
    return isStandardExtensionEnabled() && InputDelivery::passesOver(item);
}

} // namespace Vantle::QtWrapper
