#pragma once

#include "hook/class.h"
#include "hook/method.h"
#include "hook/object.h"

#include <QtCore/QHash>

namespace Vantle {

/// The registry of what scripts can see: classes and global functions.
///
/// One for the process, made at the first call of self(). Belongs to the
/// thread that owns the user interface.
class VANTLEHOOK_EXPORT Inspector
{
public:
    static Inspector *self();

    /// The class of that name, or null if none is registered.
    const Class *classByName(const QString &name) const;
    /// Adds \p type, which must live as long as the process, under its name.
    /// The first class of a name stays the one that is found by it.
    void registerClass(const Class *type);

    GlobalClass *globalClass() noexcept { return &m_globalClass; }

    SharedPtr<Object> createInteger(int value) const;
    SharedPtr<Object> createBoolean(bool value) const;
    SharedPtr<Object> createDouble(double value) const;
    /// \p text is UTF-8; null gives an empty text.
    SharedPtr<Object> createString(const char *text) const;
    SharedPtr<Object> createString(const QString &text) const;

    /// Reports a failure to the script that made the current call. The first
    /// report of a call is kept, as the later ones follow from it.
    void raiseError(const QString &message);
    /// The failure reported since the last call, which this forgets; empty if none.
    QString takeError();

    /// The result of a function that has none. Never null.
    SharedPtr<Object> voidResult() const;

private:
    Inspector();
    ~Inspector();
    Q_DISABLE_COPY_MOVE(Inspector)

    QHash<QString, const Class *> m_classes;
    GlobalClass m_globalClass;
    QString m_error;
    SharedPtr<Object> m_voidResult;
};

} // namespace Vantle
