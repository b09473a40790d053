#pragma once

#include "hook/object.h"

#include <QtCore/QString>
#include <QtCore/QTime>

namespace Vantle {

class Method;

/// One recorded statement: a call of \p method on the object that has the
/// given name, with further arguments. The object itself is not kept.
class VANTLEHOOK_EXPORT EventData
{
public:
    /// \p method lives as long as the process. \p arguments are those behind the object's name.
    EventData(const Method *method, const QString &objectName, const ObjectList &arguments);
    EventData(const EventData &);
    EventData &operator=(const EventData &);
    ~EventData();

    const Method *method() const noexcept { return m_method; }
    const QString &objectName() const noexcept { return m_objectName; }
    const ObjectList &arguments() const noexcept { return m_arguments; }

private:
    const Method *m_method;
    QString m_objectName;
    ObjectList m_arguments;

public:
    /// Local time of day at which the user acted; invalid until it is set.
    QTime time;
};

} // namespace Vantle
