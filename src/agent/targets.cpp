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
    return object && !object->isNull() ? object : SharedPtr<Object>();
}

bool TargetFinder::mayAppear(const Target &target)
{
    return target.handle == 0 && !ObjectName(target.name).isEmpty();
}

Protocol::Error TargetFinder::failure(const Target &target) const
{
    if (target.handle != 0) {
        return {Protocol::ObjectGone,
                m_handles->isKnown(target.handle)
                    ? QStringLiteral("the object with the handle %1 is gone").arg(target.handle)
                    : QStringLiteral("there is no handle %1").arg(target.handle)};
    }
    Protocol::NotFound data;
    data.lookedFor = target.name;
    m_application->objectForName(target.name, &data.reason);
    const QList<QtWrapper::LookupCandidate> candidates = m_application->closestObjects(target.name, mostCandidates);
    for (const QtWrapper::LookupCandidate &candidate : candidates)
        data.candidates.append(toMessage(candidate));
    return {Protocol::ObjectNotFound, QStringLiteral("cannot find %1: %2").arg(target.name, data.reason),
            data.toJson()};
}

} // namespace Vantle::Agent
