#include "wrappers/qt/lookupcandidates.h"

#include "wrappers/qt/namegenerator.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QObject>

#include <algorithm>
#include <vector>

namespace Vantle::QtWrapper {

namespace {

const QString occurrenceKey = QStringLiteral("occurrence");

// Comparing texts is slow; of what differs in equally many properties this many
// are compared.
constexpr std::size_t mostCompared = 500;
constexpr qsizetype comparedLength = 60;

const QString visibleKey = QStringLiteral("visible");

struct Rated
{
    SharedPtr<Object> object;
    QList<QString> mismatched;
    int occurrence = 0; // for what differs in nothing: which of these it is
    qsizetype distance = 0;
};

QString quoted(const QString &text)
{
    QString escaped = text;
    escaped.replace(QLatin1Char('\\'), QStringLiteral("\\\\")).replace(QLatin1Char('"'), QStringLiteral("\\\""));
    return QLatin1Char('"') + escaped.replace(QLatin1Char('\n'), QStringLiteral("\\n")) + QLatin1Char('"');
}

QString expectedText(const PropertyValue &value)
{
    switch (value.modifiers()) {
    case PropertyValue::Equals: break;
    case PropertyValue::Contains: return QStringLiteral("*=") + quoted(value.stringValue());
    case PropertyValue::BeginsWith: return QStringLiteral("^=") + quoted(value.stringValue());
    case PropertyValue::EndsWith: return QStringLiteral("$=") + quoted(value.stringValue());
    case PropertyValue::MatchesRegularExpression: return QStringLiteral("=/%1/").arg(value.stringValue());
    case PropertyValue::MatchesRegularExpressionCaseInsensitively:
        return QStringLiteral("=/%1/i").arg(value.stringValue());
    }
    return quoted(value.stringValue());
}

PropertyDifference differenceIn(const NameGenerator &generator, const SharedPtr<Object> &object, const QString &key,
                                const PropertyValue &value)
{
    QString text;
    const bool isThere = generator.propertyText(object, key, &text);
    return {key, expectedText(value), isThere ? quoted(text) : QStringLiteral("no such property")};
}

/// What is only hidden is most likely what is meant.
std::pair<qsizetype, qsizetype> rankOf(const Rated &rated)
{
    const bool isOnlyHidden = rated.mismatched.size() == 1 && rated.mismatched.first() == visibleKey;
    return {isOnlyHidden ? 0 : rated.mismatched.size() + 1, isOnlyHidden ? 0 : rated.distance};
}

/// How many letters have to be put in, taken out or replaced.
qsizetype editDistance(QStringView one, QStringView other)
{
    one = one.first(std::min(one.size(), comparedLength));
    other = other.first(std::min(other.size(), comparedLength));
    std::vector<qsizetype> row(static_cast<std::size_t>(other.size()) + 1);
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = static_cast<qsizetype>(i);
    for (qsizetype i = 0; i < one.size(); ++i) {
        qsizetype diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 1; j < row.size(); ++j) {
            const bool same = one[i] == other[static_cast<qsizetype>(j) - 1];
            diagonal = std::exchange(row[j], std::min({diagonal + (same ? 0 : 1), row[j] + 1, row[j - 1] + 1}));
        }
    }
    return row.back();
}

qsizetype distanceOf(const NameGenerator &generator, const Rated &rated, const ObjectName::Properties &properties)
{
    qsizetype distance = 0;
    for (const QString &key : rated.mismatched) {
        QString text;
        generator.propertyText(rated.object, key, &text);
        distance += editDistance(properties.value(key).stringValue(), text);
    }
    return distance;
}

std::vector<Rated> rate(const NameGenerator &generator, const ObjectList &objects,
                        const ObjectName::Properties &properties)
{
    std::vector<Rated> rated;
    int matches = 0;
    for (const SharedPtr<Object> &object : objects) {
        if (object->isNull())
            continue;
        Rated entry{object, generator.mismatchedProperties(object, properties), 0, 0};
        if (entry.mismatched.isEmpty())
            entry.occurrence = ++matches;
        if (!object->isNull())
            rated.push_back(std::move(entry));
    }
    return rated;
}

QList<PropertyDifference> differencesOf(const NameGenerator &generator, const Rated &rated,
                                        const ObjectName::Properties &properties)
{
    QList<PropertyDifference> differences;
    for (const QString &key : rated.mismatched)
        differences.append(differenceIn(generator, rated.object, key, properties.value(key)));
    if (rated.mismatched.isEmpty() && properties.contains(occurrenceKey)) {
        differences.append(
            {occurrenceKey, expectedText(properties.value(occurrenceKey)), quoted(QString::number(rated.occurrence))});
    }
    return differences;
}

} // namespace

QList<LookupCandidate> closestCandidates(const NameGenerator &generator, const ObjectList &objects,
                                         const ObjectName::Properties &properties, qsizetype limit)
{
    std::vector<Rated> rated = rate(generator, objects, properties);
    std::stable_sort(rated.begin(), rated.end(),
                     [](const Rated &one, const Rated &other) { return rankOf(one) < rankOf(other); });
    rated.resize(std::min(rated.size(), mostCompared));
    for (Rated &entry : rated)
        entry.distance = distanceOf(generator, entry, properties);
    std::stable_sort(rated.begin(), rated.end(),
                     [](const Rated &one, const Rated &other) { return rankOf(one) < rankOf(other); });

    QList<LookupCandidate> candidates;
    for (const Rated &entry : rated) {
        if (candidates.size() == limit)
            break;
        if (!entry.object->isNull())
            candidates.append({entry.object, differencesOf(generator, entry, properties)});
    }
    return candidates;
}

bool isOnlyHidden(const LookupCandidate &candidate)
{
    return candidate.differences.size() == 1 && candidate.differences.first().key == visibleKey;
}

ObjectList objectsBelow(const SharedPtr<Object> &container)
{
    ObjectList found;
    std::vector<SharedPtr<Object>> pending{container};
    while (!pending.empty()) {
        const SharedPtr<Object> object = pending.back();
        pending.pop_back();
        if (object != container)
            found.push_back(object);
        const ObjectList children = object->children();
        for (std::size_t i = children.size(); i > 0; --i) {
            const QObject *const native = nativeQObject(children.at(i - 1));
            if (native && !native->isWindowType())
                pending.push_back(children.at(i - 1));
        }
    }
    return found;
}

} // namespace Vantle::QtWrapper
