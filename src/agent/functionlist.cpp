#include "agent/functionlist.h"

#include "hook/inspector.h"

#include <QtCore/QHash>

namespace Vantle::Agent {

namespace {

QString typeName(const Vantle::Argument &argument)
{
    return argument.type() ? argument.type()->className() : QStringLiteral("unknown");
}

Protocol::FunctionDescription::Overload overloadOf(const GlobalMethod &method)
{
    Protocol::FunctionDescription::Overload overload;
    for (const Argument &argument : method.signature().arguments())
        overload.arguments.append({argument.name(), typeName(argument)});
    overload.result = typeName(method.result());
    return overload;
}

} // namespace

QList<Protocol::FunctionDescription> allFunctions()
{
    QList<Protocol::FunctionDescription> functions;
    QHash<QString, qsizetype> positions;
    for (const GlobalMethod *method : Inspector::self()->globalClass()->methods()) {
        if (!positions.contains(method->name())) {
            positions.insert(method->name(), functions.size());
            functions.append({method->name(), {}});
        }
        functions[positions.value(method->name())].overloads.append(overloadOf(*method));
    }
    return functions;
}

} // namespace Vantle::Agent
