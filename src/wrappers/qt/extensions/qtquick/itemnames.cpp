#include "wrappers/qt/extensions/qtquick/itemnames_p.h"

#include "wrappers/qt/extensions/qtquick/computedproperties_p.h"
#include "wrappers/qt/extensions/qtquick/hostmodule.h"

namespace Vantle::QtWrapper {

QVariant ItemNames::valueOf(QQuickItem *item, const QString &key) const
{
    const std::optional<QString> text = item && isStandardExtensionEnabled() ? computedProperty(item, key)
                                                                                     : std::nullopt;
    return text ? QVariant(*text) : QVariant();
}

} // namespace Vantle::QtWrapper
