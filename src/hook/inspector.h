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

    /// Whether a call with \p arguments fits \p signature, conversions included.
    /// A null argument stands for any object that is handed over by pointer.
    bool accepts(const Signature &signature, const ObjectList &arguments) const;
    /// The overload of the global function \p name that fits \p arguments
    /// best: with the classes themselves before base classes, and these before
    /// conversions; of equals the first that was added. Null if none fits.
    const GlobalMethod *findGlobalMethod(const QString &name, const ObjectList &arguments) const;
    /// Calls the overload that findGlobalMethod() gives. A null result without
    /// an error is the function's own way to say that there is nothing.
    ///
    /// Forgets the error of earlier calls. After a failure the result is null
    /// and takeError() says why: what the function has raised, or which
    /// overloads there are. May be called from within a called function.
    SharedPtr<Object> callGlobalMethod(const QString &name, const ObjectList &arguments);

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

    QString describeMismatch(const QString &name, const ObjectList &arguments) const;

    QHash<QString, const Class *> m_classes;
    GlobalClass m_globalClass;
    QString m_error;
    SharedPtr<Object> m_voidResult;
};

} // namespace Vantle
