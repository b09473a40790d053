#include "agent/statementmessages.h"

#include "hook/eventdata.h"
#include "hook/inspector.h"
#include "hook/method.h"

namespace Vantle::Agent {

namespace {

QJsonValue toJsonValue(const SharedPtr<Object> &object)
{
    static const Class *const integerClass = Inspector::self()->classByName(QStringLiteral("int"));
    static const Class *const textClass = Inspector::self()->classByName(QStringLiteral("QString"));
    void *value = nullptr;
    if (!object || !object->get(&value))
        return QJsonValue::Null;
    if (object->isA(integerClass))
        return *static_cast<const int *>(value);
    if (object->isA(textClass))
        return *static_cast<const QString *>(value);
    return QJsonValue::Null;
}

} // namespace

Protocol::Statement toMessage(const EventData &statement)
{
    Protocol::Statement message;
    message.function = statement.method()->name();
    message.object = statement.objectName();
    message.time = statement.time.toString(QStringLiteral("HH:mm:ss.zzz"));

    // The first argument of the signature is the object's name.
    const QList<Argument> &signature = statement.method()->signature().arguments();
    qsizetype index = 1;
    for (const SharedPtr<Object> &value : statement.arguments()) {
        Protocol::StatementArgument argument{{}, value->className(), toJsonValue(value)};
        if (index < signature.size()) {
            argument.name = signature.at(index).name();
            argument.type = signature.at(index).type()->className();
        }
        message.arguments.append(argument);
        ++index;
    }
    return message;
}

} // namespace Vantle::Agent
