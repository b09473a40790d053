#pragma once

#include "hook/object.h"
#include "hook/objectname.h"
#include "wrappers/qt/wrapperglobal.h"

#include <QtCore/QHash>
#include <QtCore/QList>

#include <memory>

class QObject;

namespace Vantle {
class Class;
}

namespace Vantle::QtWrapper {

/// Where the names of the objects of a class come from. Lives as long as the
/// generator that it is registered with.
class VANTLEQTWRAPPER_EXPORT NameSource
{
public:
    virtual ~NameSource();

    /// The properties that name \p object, its container among them; empty for
    /// an object that should not be named. \p object is alive.
    virtual ObjectName objectName(QObject *object) const = 0;

    /// The complete name of \p object as text. By default the text of objectName().
    virtual QString realName(QObject *object) const;

    /// The name that scripts use for \p object. By default realName(); a source
    /// overrides this one where it takes the generator itself to tell.
    virtual QString scriptName(QObject *object) const;

    /// Stores the text of the property \p key of \p object in \p value. False if
    /// it has none.
    virtual bool propertyValue(QObject *object, const QString &key, QString *value) const;

    /// The keys of \p properties that \p object fails on; the occurrence is none
    /// of them. \p object is alive.
    QList<QString> mismatchedProperties(QObject *object, const ObjectName::Properties &properties) const;
};

/// Makes names by asking the source that is registered for the object's class.
class VANTLEQTWRAPPER_EXPORT NameGenerator
{
public:
    NameGenerator();
    ~NameGenerator();

    /// Makes \p source answer for \p type and the classes below it, in place of any earlier one.
    void registerSource(const Class *type, std::unique_ptr<NameSource> source);

    /// The generated properties. Empty for a null or dead object and for
    /// classes that nobody names.
    ObjectName objectName(const SharedPtr<Object> &object, bool complete) const;
    /// The name by which a script finds the object.
    QString realName(const SharedPtr<Object> &object, bool complete) const;
    /// The name that scripts use for the object; what Object::scriptName() gives.
    QString scriptName(const SharedPtr<Object> &object) const;

    /// See NameSource. An object that nobody names fails on every key.
    QList<QString> mismatchedProperties(const SharedPtr<Object> &object,
                                        const ObjectName::Properties &properties) const;
    /// Stores the text that \p key of a name is held against in \p text; for
    /// "type" the class as scripts write it. False if the object has no such
    /// property, and for one that nobody names.
    bool propertyText(const SharedPtr<Object> &object, const QString &key, QString *text) const;

private:
    Q_DISABLE_COPY_MOVE(NameGenerator)

    struct Target;
    Target targetFor(const SharedPtr<Object> &object) const;

    QHash<const Class *, std::shared_ptr<const NameSource>> m_sources;
};

} // namespace Vantle::QtWrapper
