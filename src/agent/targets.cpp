#include "agent/targets.h"

#include "agent/objecthandles.h"
#include "hook/class.h"
#include "hook/objectname.h"
#include "protocol/fieldreader.h"
#include "protocol/objectmessages.h"
#include "wrappers/qt/application.h"

namespace Vantle::Agent {

namespace {

constexpr int mostCandidates = 5;

Protocol::Candidate toMessage(const QtWrapper::LookupCandidate &candidate)
{
    Protocol::Candidate message;
    message.name = candidate.object->scriptName();
    message.className = candidate.object->className();
    for (const QtWrapper::PropertyDifference &difference : candidate.differences)
        message.differences.append({difference.key, difference.expected, difference.found});
    return message;
}

/// Why \p closest is not what was looked for, if that is all that is the matter.
QString reasonFrom(const QtWrapper::LookupCandidate &closest, const QString &otherwise)
{
    if (QtWrapper::isOnlyHidden(closest))
        return QStringLiteral("it is there, but not visible");
    if (closest.differences.size() != 1)
        return otherwise;
    const QtWrapper::PropertyDifference &difference = closest.differences.first();
    if (difference.key == QLatin1String("window"))
        return QStringLiteral("it is in another window, %1").arg(difference.found);
    if (difference.key == QLatin1String("container"))
        return QStringLiteral("it is there, but not below %1").arg(difference.expected);
    return otherwise;
}

} // namespace

Target Target::readFrom(Protocol::FieldReader *reader)
{
    Target target;
    if (reader->has("object") && reader->has("name"))
        reader->complain(QStringLiteral("there has to be either \"object\" or \"name\", not both"));
    else if (reader->has("object"))
        target.handle = static_cast<int>(reader->integer("object", 1));
    else if (reader->has("name"))
        target.name = reader->string("name");
    else
        reader->complain(QStringLiteral("there has to be \"object\" or \"name\""));
    return target;
}

bool Target::isIn(const Protocol::FieldReader &reader)
{
    return reader.has("object") || reader.has("name");
}

Found TargetFinder::find(const Target &target) const
{
    if (const SharedPtr<Object> object = look(target))
        return {object, std::nullopt};
    return {nullptr, failure(target)};
}

SharedPtr<Object> TargetFinder::look(const Target &target) const
{
    const SharedPtr<Object> object = target.handle != 0 ? m_handles->objectFor(target.handle)
                                                        : m_application->objectForName(target.name);
    if (!object || object->isNull())
        return {};
    const bool isAmbiguous = m_strict && target.handle == 0 && !m_application->ambiguity(target.name, 0).step.isEmpty();
    return isAmbiguous ? SharedPtr<Object>() : object;
}

bool TargetFinder::mayAppear(const Target &target)
{
    return target.handle == 0 && !ObjectName(target.name).isEmpty();
}

/// The error for a name that fits several objects.
std::optional<Protocol::Error> TargetFinder::ambiguityIn(const Target &target) const
{
    const QtWrapper::Ambiguity ambiguity = m_application->ambiguity(target.name, mostCandidates);
    if (ambiguity.step.isEmpty())
        return std::nullopt;
    Protocol::NotFound data;
    data.lookedFor = target.name;
    data.reason = QStringLiteral("%1 fits %2 objects").arg(ambiguity.step).arg(ambiguity.count);
    QStringList names;
    for (const SharedPtr<Object> &object : ambiguity.objects) {
        data.candidates.append({object->scriptName(), object->className(), {}});
        names.append(data.candidates.last().name);
    }
    const QString more = ambiguity.count > names.size() ? QStringLiteral(", …") : QString();
    return Protocol::Error{Protocol::AmbiguousName,
                           QStringLiteral("%1; they are %2%3").arg(data.reason, names.join(QLatin1String(", ")), more),
                           data.toJson()};
}

Protocol::Error TargetFinder::failure(const Target &target) const
{
    if (target.handle != 0) {
        return {Protocol::ObjectGone,
                m_handles->isKnown(target.handle)
                    ? QStringLiteral("the object with the handle %1 is gone").arg(target.handle)
                    : QStringLiteral("there is no handle %1").arg(target.handle)};
    }
    if (const auto ambiguity = m_strict ? ambiguityIn(target) : std::nullopt)
        return *ambiguity;
    Protocol::NotFound data;
    data.lookedFor = target.name;
    m_application->objectForName(target.name, &data.reason);
    const QList<QtWrapper::LookupCandidate> candidates = m_application->closestObjects(target.name, mostCandidates);
    for (const QtWrapper::LookupCandidate &candidate : candidates)
        data.candidates.append(toMessage(candidate));
    if (!candidates.isEmpty())
        data.reason = reasonFrom(candidates.first(), data.reason);
    return {Protocol::ObjectNotFound, QStringLiteral("cannot find %1: %2").arg(target.name, data.reason),
            data.toJson()};
}

} // namespace Vantle::Agent
