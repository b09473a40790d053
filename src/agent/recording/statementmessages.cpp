#include "agent/recording/statementmessages.h"

#include "hook/eventdata.h"
#include "hook/inspector.h"
#include "hook/method.h"

namespace Vantle::Agent {

namespace {

// The native value, if \p object holds one of that class; else null.
template<typename T>
const T *valueAs(const SharedPtr<Object> &object, const char *className)
{
    void *value = nullptr;
    const Class *const type = Inspector::self()->classByName(QString::fromLatin1(className));
    return type && object && object->isA(type) && object->get(&value) ? static_cast<const T *>(value) : nullptr;
}

// Numbers and texts are all that travels: truth is 1 or 0, what has no value
// an empty text.
QJsonValue toJsonValue(const SharedPtr<Object> &object)
{
    if (const int *const integer = valueAs<int>(object, "int"))
        return *integer;
    if (const QString *const text = valueAs<QString>(object, "QString"))
        return *text;
    if (const double *const number = valueAs<double>(object, "double"))
        return *number;
    if (const bool *const truth = valueAs<bool>(object, "bool"))
        return *truth ? 1 : 0;
    return QString();
}

// What the signature calls the argument at \p index; for one that isn't in the
// signature only the class of its \p value is known.
Protocol::StatementArgument describe(const QList<Argument> &signature, qsizetype index, const SharedPtr<Object> &value)
{
    const Class *type = value ? value->objectClass() : nullptr;
    QString name;
    if (index < signature.size()) {
        name = signature.at(index).name();
        type = signature.at(index).type() ? signature.at(index).type() : type;
    }
    return {name, type ? type->className() : QString(), toJsonValue(value)};
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
    for (const SharedPtr<Object> &value : statement.arguments())
        message.arguments.append(describe(signature, index++, value));
    return message;
}

} // namespace Vantle::Agent
