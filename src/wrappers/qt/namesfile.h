#pragma once

#include "hook/objectname.h"
#include "wrappers/qt/wrapperglobal.h"

#include <QtCore/QHash>
#include <QtCore/QMap>
#include <QtCore/QString>

class QByteArray;

namespace Vantle::QtWrapper {

/// Names for names: a JSON object that gives each alias the selector that it
/// stands for, which may begin with another alias.
///
///     {
///         "printDialog": "ApplicationWindow Dialog[title=\"Print\"]",
///         "printButton": "@printDialog Button[text=\"OK\"]"
///     }
///
/// A plain value; once read it holds no alias that leads nowhere or in a circle.
class VANTLEQTWRAPPER_EXPORT NamesFile
{
public:
    /// No aliases at all.
    NamesFile() = default;

    /// Reads the file at \p path. If that fails the result has no aliases, and
    /// \p error, which must not be null, says what is wrong and where; it is
    /// empty otherwise.
    static NamesFile read(const QString &path, QString *error);
    /// Same for the text of such a file.
    static NamesFile parse(const QByteArray &json, QString *error);

    bool isEmpty() const { return m_names.isEmpty(); }

    /// The name that \p alias, without its "@", stands for, in which no alias
    /// is left; empty for an unknown one.
    ObjectName nameFor(const QString &alias) const;
    /// The alias, with its "@", that stands for exactly \p name; the first in
    /// alphabetical order if there are several, empty if there is none.
    QString aliasFor(const QString &name) const;

    /// \p name with the name that it stands for in place of the alias that it
    /// is, or begins with. A name with an unknown alias stays as it is.
    ObjectName expanded(const ObjectName &name) const;

private:
    class Reader;

    QMap<QString, ObjectName> m_names;
    QHash<QString, QString> m_aliases; // by the text of the expanded name
};

} // namespace Vantle::QtWrapper
