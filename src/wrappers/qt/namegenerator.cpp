#include "wrappers/qt/namegenerator.h"

#include "hook/class.h"
#include "wrappers/qt/wrapping.h"

namespace Vantle::QtWrapper {

NameSource::~NameSource() = default;

QString NameSource::realName(QObject *object) const
{
    return objectName(object).qualifiedName();
}

/// A living object and who names it; both are set, or neither. Naming runs code
/// of the program, so the source is kept until it is done.
struct NameGenerator::Target
{
    QObject *object = nullptr;
    std::shared_ptr<const NameSource> source;
};

NameGenerator::NameGenerator() = default;
NameGenerator::~NameGenerator() = default;

void NameGenerator::registerSource(const Class *type, std::unique_ptr<NameSource> source)
{
    m_sources.insert(type, std::move(source));
}

NameGenerator::Target NameGenerator::targetFor(const SharedPtr<Object> &object) const
{
    QObject *const native = nativeQObject(object);
    if (!native)
        return {};
    for (const Class *type = object->objectClass(); type; type = type->super()) {
        if (const auto source = m_sources.constFind(type); source != m_sources.constEnd())
            return {native, *source};
    }
    return {};
}

ObjectName NameGenerator::objectName(const SharedPtr<Object> &object, bool) const
{
    const Target target = targetFor(object);
    return target.source ? target.source->objectName(target.object) : ObjectName();
}

QString NameGenerator::realName(const SharedPtr<Object> &object, bool) const
{
    const Target target = targetFor(object);
    return target.source ? target.source->realName(target.object) : QString();
}

} // namespace Vantle::QtWrapper
