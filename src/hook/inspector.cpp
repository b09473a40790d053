#include "hook/inspector.h"

#include "hook/value.h"

namespace Vantle {

namespace {

// Value classes live as long as the process, like all classes.
template<typename T>
const Class *valueClass(const char *name)
{
    static const Class *const type = new Class(QString::fromLatin1(name));
    return type;
}

const Class *integerClass() { return valueClass<int>("int"); }
const Class *booleanClass() { return valueClass<bool>("bool"); }
const Class *doubleClass() { return valueClass<double>("double"); }
const Class *stringClass() { return valueClass<QString>("QString"); }

class VoidResult final : public Object
{
public:
    const Class *objectClass() const override { return valueClass<void>("void"); }
    bool get(void **value) const override
    {
        *value = nullptr;
        return false;
    }
};

} // namespace

Inspector *Inspector::self()
{
    // Never destroyed: objects that die during exit may still ask it.
    static Inspector *const inspector = new Inspector;
    return inspector;
}

Inspector::Inspector() : m_voidResult(new VoidResult)
{
    for (const Class *type : {integerClass(), booleanClass(), doubleClass(), stringClass()})
        registerClass(type);
    registerClass(m_voidResult->objectClass());
}

Inspector::~Inspector() = default;

const Class *Inspector::classByName(const QString &name) const
{
    return m_classes.value(name);
}

void Inspector::registerClass(const Class *type)
{
    if (type && !m_classes.contains(type->className()))
        m_classes.insert(type->className(), type);
}

SharedPtr<Object> Inspector::createInteger(int value) const
{
    return SharedPtr<Object>(new Value<int>(integerClass(), value));
}

SharedPtr<Object> Inspector::createBoolean(bool value) const
{
    return SharedPtr<Object>(new Value<bool>(booleanClass(), value));
}

SharedPtr<Object> Inspector::createDouble(double value) const
{
    return SharedPtr<Object>(new Value<double>(doubleClass(), value));
}

SharedPtr<Object> Inspector::createString(const char *text) const
{
    return createString(QString::fromUtf8(text));
}

SharedPtr<Object> Inspector::createString(const QString &text) const
{
    return SharedPtr<Object>(new Value<QString>(stringClass(), text));
}

void Inspector::raiseError(const QString &message)
{
    if (m_error.isEmpty())
        m_error = message;
}

QString Inspector::takeError()
{
    return std::exchange(m_error, QString());
}

SharedPtr<Object> Inspector::voidResult() const
{
    return m_voidResult;
}

} // namespace Vantle
