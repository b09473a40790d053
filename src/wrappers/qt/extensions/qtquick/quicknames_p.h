#pragma once

#include "wrappers/qt/namegenerator.h"
#include "wrappers/qt/windownames.h"

namespace Vantle::QtWrapper {

/// Names items by type, QML id, object name or, for want of both, by the text
/// that a user reads on them, below their window. Extensions may have other
/// properties and another container; asking them runs scripts.
class QuickItemNameSource final : public NameSource
{
public:
    /// \p object must be a QQuickItem.
    ObjectName objectName(QObject *object) const override;
    /// For an item that stands in no container: the name that tells it from all
    /// others that don't.
    QString realName(QObject *object) const override;
    /// The name that tells \p object from all others below its container.
    QString scriptName(QObject *object) const override;
    /// The text that lookup compares, an extension's included.
    bool propertyValue(QObject *object, const QString &key, QString *value) const override;
};

/// Names Quick windows like all windows, and knows their QML ids.
class QuickWindowNameSource final : public WindowNameSource
{
protected:
    QString idOf(QWindow *window) const override;
};

} // namespace Vantle::QtWrapper
