#pragma once

#include "wrappers/qt/namegenerator.h"

class QWindow;

namespace Vantle::QtWrapper {

/// Names top-level windows: by type and the first of object name, QML id and
/// title that is not empty, and by order of creation where these leave several.
class VANTLEQTWRAPPER_EXPORT WindowNameSource : public NameSource
{
public:
    /// \p object must be a QWindow.
    ObjectName objectName(QObject *object) const override;
    bool propertyValue(QObject *object, const QString &key, QString *value) const override;

protected:
    /// The id that the window has in its QML document, empty if none.
    virtual QString idOf(QWindow *window) const;

private:
    ObjectName describe(QWindow *window) const;
    int occurrenceOf(QWindow *window, const ObjectName &name) const;
};

} // namespace Vantle::QtWrapper
