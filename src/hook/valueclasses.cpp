#include "hook/valueclasses_p.h"

#include "hook/class.h"
#include "hook/value.h"

#include <QtCore/QJsonValue>

#include <cmath>
#include <limits>

namespace Vantle {

namespace {

template<typename T>
const T *valueOf(const SharedPtr<Object> &object, const Class *type)
{
    void *value = nullptr;
    return object && object->objectClass() == type && object->get(&value) ? static_cast<const T *>(value) : nullptr;
}

template<typename T>
SharedPtr<Object> makeValue(const Class *type, T value)
{
    return SharedPtr<Object>(new Value<T>(type, std::move(value)));
}

bool isInteger(double number)
{
    using Limits = std::numeric_limits<int>;
    return std::trunc(number) == number && number >= Limits::min() && number <= Limits::max();
}

/// What the classes of values have in common. Objects hold a \p T.
template<typename T>
class ValueClass : public Class
{
public:
    explicit ValueClass(const char *name) : Class(QString::fromLatin1(name), true) {}

    std::partial_ordering compare(const SharedPtr<Object> &a, const SharedPtr<Object> &b) const override
    {
        const T *const left = value(a);
        const T *const right = value(b);
        if (!left || !right)
            return Class::compare(a, b);
        if (*left == *right)
            return std::partial_ordering::equivalent;
        if (*left < *right)
            return std::partial_ordering::less;
        return *right < *left ? std::partial_ordering::greater : std::partial_ordering::unordered;
    }

    bool canConvertToInternal(const SharedPtr<Object> &object, const Class *type) const override
    {
        return !convertToInternal(object, type).isNull();
    }
    bool canConvertToTolerant(const SharedPtr<Object> &object, const Class *type) const override
    {
        return !convertToTolerant(object, type).isNull();
    }

protected:
    const T *value(const SharedPtr<Object> &object) const { return valueOf<T>(object, this); }
};

class IntegerClass final : public ValueClass<int>
{
public:
    using ValueClass::ValueClass;

    QJsonValue writeObject(const SharedPtr<Object> &object) const override
    {
        return value(object) ? QJsonValue(*value(object)) : QJsonValue();
    }
    SharedPtr<Object> readObject(const QJsonValue &json) const override
    {
        return json.isDouble() && isInteger(json.toDouble()) ? makeValue(this, json.toInt()) : nullptr;
    }
    SharedPtr<Object> convertToInternal(const SharedPtr<Object> &object, const Class *type) const override
    {
        return value(object) && type == doubleClass() ? makeValue(type, static_cast<double>(*value(object))) : nullptr;
    }
    SharedPtr<Object> convertToTolerant(const SharedPtr<Object> &object, const Class *type) const override
    {
        if (value(object) && type == booleanClass())
            return makeValue(type, *value(object) != 0);
        // Any number, as flags are sums of enumerators.
        if (value(object) && type && !type->enums().isEmpty())
            return makeValue(type, *value(object));
        return Class::convertToTolerant(object, type);
    }
};

class BooleanClass final : public ValueClass<bool>
{
public:
    using ValueClass::ValueClass;

    QJsonValue writeObject(const SharedPtr<Object> &object) const override
    {
        return value(object) ? QJsonValue(*value(object)) : QJsonValue();
    }
    SharedPtr<Object> readObject(const QJsonValue &json) const override
    {
        return json.isBool() ? makeValue(this, json.toBool()) : nullptr;
    }
    SharedPtr<Object> convertToTolerant(const SharedPtr<Object> &object, const Class *type) const override
    {
        return value(object) && type == integerClass() ? makeValue(type, *value(object) ? 1 : 0)
                                                       : Class::convertToTolerant(object, type);
    }
};

class DoubleClass final : public ValueClass<double>
{
public:
    using ValueClass::ValueClass;

    QJsonValue writeObject(const SharedPtr<Object> &object) const override
    {
        return value(object) ? QJsonValue(*value(object)) : QJsonValue();
    }
    SharedPtr<Object> readObject(const QJsonValue &json) const override
    {
        return json.isDouble() ? makeValue(this, json.toDouble()) : nullptr;
    }
    SharedPtr<Object> convertToTolerant(const SharedPtr<Object> &object, const Class *type) const override
    {
        const double *const number = value(object);
        return number && type == integerClass() && isInteger(*number) ? makeValue(type, static_cast<int>(*number))
                                                                      : Class::convertToTolerant(object, type);
    }
};

class StringClass final : public ValueClass<QString>
{
public:
    using ValueClass::ValueClass;

    QJsonValue writeObject(const SharedPtr<Object> &object) const override
    {
        return value(object) ? QJsonValue(*value(object)) : QJsonValue();
    }
    SharedPtr<Object> readObject(const QJsonValue &json) const override
    {
        return json.isString() ? makeValue(this, json.toString()) : nullptr;
    }
};

} // namespace

const Class *integerClass()
{
    static const Class *const type = new IntegerClass("int");
    return type;
}

const Class *booleanClass()
{
    static const Class *const type = new BooleanClass("bool");
    return type;
}

const Class *doubleClass()
{
    static const Class *const type = new DoubleClass("double");
    return type;
}

const Class *stringClass()
{
    static const Class *const type = new StringClass("QString");
    return type;
}

const Class *voidClass()
{
    static const Class *const type = new Class(QStringLiteral("void"), true);
    return type;
}

} // namespace Vantle
