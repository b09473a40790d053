#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QJsonValue>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <limits>
#include <optional>

namespace Vantle::Protocol {

/// Takes fields out of the parameters or the result of a message, and
/// remembers the first one that was not what it has to be. What could not be
/// read comes as an empty value, so all fields can be read before the one
/// question whether everything was fine.
class FieldReader
{
public:
    /// \p json must live as long as the reader.
    explicit FieldReader(const QJsonObject &json) : m_json(json) {}

    /// Whether the field is there at all.
    bool has(const char *key) const { return !field(key).isUndefined(); }

    QString string(const char *key);
    bool boolean(const char *key);
    /// Same for a field that may be missing: then \p otherwise.
    bool boolean(const char *key, bool otherwise) { return has(key) ? boolean(key) : otherwise; }
    qint64 integer(const char *key, qint64 from = std::numeric_limits<int>::min(),
                   qint64 to = std::numeric_limits<int>::max());
    double number(const char *key);
    QJsonArray array(const char *key);
    QJsonObject object(const char *key);
    QStringList strings(const char *key);
    QJsonValue numberOrString(const char *key);
    /// Whatever it is; undefined if the field is missing.
    QJsonValue any(const char *key) const { return field(key); }

    void complain(const char *key, const char *expected);
    void complain(const QString &complaint);

    /// What was wrong, in words; empty if nothing was.
    const QString &complaint() const { return m_complaint; }

    /// The record if nothing was wrong; otherwise nothing, and the reason in
    /// \p error unless that is null.
    template<typename Record>
    std::optional<Record> finish(const Record &record, QString *error) const
    {
        if (m_complaint.isEmpty())
            return record;
        if (error)
            *error = m_complaint;
        return std::nullopt;
    }

private:
    QJsonValue field(const char *key) const { return m_json.value(QLatin1String(key)); }

    const QJsonObject &m_json;
    QString m_complaint;
};

} // namespace Vantle::Protocol
