#include "wrappers/qt/namesfile.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QStringList>

#include <algorithm>

namespace Vantle::QtWrapper {

namespace {

const QString aliasKey = QStringLiteral("alias");
const QString containerKey = QStringLiteral("container");

/// Empty unless \p name is an alias and nothing else.
QString soleAlias(const ObjectName &name)
{
    return name.properties().size() == 1 ? name.property(aliasKey).stringValue() : QString();
}

PropertyValue textValue(const QString &text)
{
    return PropertyValue(text, PropertyValue::Equals, PropertyValue::Text);
}

/// The keys of the outermost object of \p json, which must be correct JSON, as
/// often as they stand there. QJsonObject keeps only the last of equal ones.
QStringList outermostKeys(const QByteArray &json)
{
    QStringList keys;
    int depth = 0;
    for (qsizetype i = 0; i < json.size(); ++i) {
        const char c = json[i];
        if (c == '{' || c == '[') {
            ++depth;
        } else if (c == '}' || c == ']') {
            --depth;
        } else if (c == '"') {
            const qsizetype begin = i++;
            while (json[i] != '"')
                i += json[i] == '\\' ? 2 : 1;
            qsizetype behind = i + 1;
            while (behind < json.size() && QByteArrayView(" \t\r\n").contains(json[behind]))
                ++behind;
            if (depth != 1 || behind >= json.size() || json[behind] != ':')
                continue;
            const QByteArray quoted = json.mid(begin, i + 1 - begin);
            keys.append(QJsonDocument::fromJson('[' + quoted + ']').array().at(0).toString());
        }
    }
    return keys;
}

bool isAliasText(const QString &alias)
{
    return soleAlias(ObjectName(u'@' + alias)) == alias;
}

} // namespace

/// Turns the text of a names file into names. The first thing that is wrong
/// ends it.
class NamesFile::Reader
{
public:
    NamesFile read(const QByteArray &json)
    {
        NamesFile file;
        if (!readSelectors(json))
            return file;
        for (auto entry = m_selectors.cbegin(); entry != m_selectors.cend(); ++entry) {
            const ObjectName name = resolved(entry.key());
            if (!m_error.isEmpty())
                return {};
            file.m_names.insert(entry.key(), name);
            const QString text = name.qualifiedName();
            if (!file.m_aliases.contains(text))
                file.m_aliases.insert(text, u'@' + entry.key());
        }
        return file;
    }

    const QString &error() const { return m_error; }

private:
    bool readSelectors(const QByteArray &json)
    {
        QJsonParseError jsonError;
        const QJsonDocument document = QJsonDocument::fromJson(json, &jsonError);
        if (jsonError.error != QJsonParseError::NoError)
            return fail(QStringLiteral("not JSON: %1 at byte %2").arg(jsonError.errorString()).arg(jsonError.offset));
        if (!document.isObject())
            return fail(QStringLiteral("expected a JSON object that gives each alias its selector"));
        QStringList keys = outermostKeys(json);
        std::sort(keys.begin(), keys.end());
        if (const auto twice = std::adjacent_find(keys.cbegin(), keys.cend()); twice != keys.cend())
            return fail(QStringLiteral("the alias \"%1\" is defined twice").arg(*twice));

        const QJsonObject entries = document.object();
        for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
            if (!readSelector(entry.key(), entry.value()))
                return false;
        }
        return true;
    }

    bool readSelector(const QString &alias, const QJsonValue &value)
    {
        if (alias.isEmpty() || !isAliasText(alias)) {
            return fail(QStringLiteral("\"%1\" is no alias: expected a letter or underscore, then letters, digits, "
                                       "underscores, dots and hyphens, without the \"@\"")
                            .arg(alias));
        }
        if (!value.isString())
            return fail(QStringLiteral("the alias \"%1\": expected a selector in quotes").arg(alias));
        ObjectName::ParseError error;
        const ObjectName name = ObjectName::parse(value.toString(), &error);
        if (error) {
            return fail(QStringLiteral("the alias \"%1\": column %2 of its selector: %3")
                            .arg(alias, QString::number(error.column), error.message));
        }
        if (name.isEmpty())
            return fail(QStringLiteral("the alias \"%1\": its selector is empty").arg(alias));
        m_selectors.insert(alias, name);
        return true;
    }

    /// What \p alias stands for, with no alias left in it.
    ObjectName resolved(const QString &alias)
    {
        if (const auto known = m_resolved.constFind(alias); known != m_resolved.constEnd())
            return *known;
        if (m_beingResolved.contains(alias)) {
            const QStringList circle = m_beingResolved.mid(m_beingResolved.indexOf(alias)) + QStringList(alias);
            fail(QStringLiteral("the alias \"%1\" leads in a circle: %2")
                     .arg(alias, circle.join(QLatin1String(" -> "))));
            return {};
        }
        m_beingResolved.append(alias);
        const ObjectName name = withoutAlias(alias, m_selectors.value(alias));
        m_beingResolved.removeLast();
        m_resolved.insert(alias, name);
        return name;
    }

    /// \p name, from the selector of \p owner, with what its alias stands for.
    ObjectName withoutAlias(const QString &owner, const ObjectName &name)
    {
        if (const QString alias = soleAlias(name); !alias.isEmpty()) {
            if (m_selectors.contains(alias))
                return resolved(alias);
            fail(QStringLiteral("the alias \"%1\" stands for an unknown one, \"%2\"").arg(owner, alias));
            return {};
        }
        const QString container = name.property(containerKey).stringValue();
        if (!container.startsWith(u'@'))
            return name;
        ObjectName result = name;
        result.setProperty(containerKey, textValue(withoutAlias(owner, ObjectName(container)).qualifiedName()));
        return result;
    }

    bool fail(const QString &message)
    {
        if (m_error.isEmpty())
            m_error = message;
        return false;
    }

    QMap<QString, ObjectName> m_selectors;
    QHash<QString, ObjectName> m_resolved;
    QStringList m_beingResolved;
    QString m_error;
};

NamesFile NamesFile::read(const QString &path, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("cannot read the names file %1: %2").arg(path, file.errorString());
        return {};
    }
    const NamesFile names = parse(file.readAll(), error);
    if (!error->isEmpty())
        *error = QStringLiteral("names file %1: %2").arg(path, *error);
    return names;
}

NamesFile NamesFile::parse(const QByteArray &json, QString *error)
{
    Reader reader;
    const NamesFile file = reader.read(json);
    *error = reader.error();
    return error->isEmpty() ? file : NamesFile();
}

ObjectName NamesFile::nameFor(const QString &alias) const
{
    return m_names.value(alias);
}

QString NamesFile::aliasFor(const QString &name) const
{
    if (m_aliases.isEmpty())
        return {};
    return m_aliases.value(expanded(ObjectName(name)).qualifiedName());
}

ObjectName NamesFile::expanded(const ObjectName &name) const
{
    if (const QString alias = soleAlias(name); !alias.isEmpty())
        return m_names.value(alias, name);
    const QString container = name.property(containerKey).stringValue();
    if (!container.startsWith(u'@'))
        return name;
    ObjectName result = name;
    result.setProperty(containerKey, textValue(expanded(ObjectName(container)).qualifiedName()));
    return result;
}

} // namespace Vantle::QtWrapper
