#include "hook/inspector.h"

#include "hook/value.h"
#include "hook/valueclasses_p.h"

#include <limits>
#include <optional>

namespace Vantle {

namespace {

// How badly an argument fits its place; of a call, the sum. A base class adds
// one for each step, so that conversions come behind every base class.
constexpr int ConversionMisfit = 1000;
constexpr int TolerantMisfit = 1000 * ConversionMisfit;

int stepsToBase(const Class *type, const Class *base)
{
    int steps = 0;
    for (; type != base; type = type->super())
        ++steps;
    return steps;
}

std::optional<int> misfit(const SharedPtr<Object> &argument, const Argument &place)
{
    const Class *const wanted = place.type();
    if (!wanted)
        return std::nullopt;
    if (!argument)
        return place.passing() == Argument::ByPointer ? std::optional(0) : std::nullopt;
    const Class *const type = argument->objectClass();
    if (type->isSubClassOf(wanted))
        return stepsToBase(type, wanted);
    if (type->canConvertTo(argument, wanted))
        return ConversionMisfit;
    if (type->canConvertToTolerant(argument, wanted))
        return TolerantMisfit;
    return std::nullopt;
}

std::optional<qint64> misfit(const ObjectList &arguments, const Signature &signature)
{
    const QList<Argument> &places = signature.arguments();
    if (arguments.size() != static_cast<std::size_t>(places.size()))
        return std::nullopt;
    qint64 sum = 0;
    for (qsizetype i = 0; i < places.size(); ++i) {
        const std::optional<int> one = misfit(arguments.at(static_cast<std::size_t>(i)), places.at(i));
        if (!one)
            return std::nullopt;
        sum += *one;
    }
    return sum;
}

/// The arguments as objects of the classes that the signature, which accepts them, names.
ObjectList converted(const ObjectList &arguments, const Signature &signature)
{
    ObjectList result;
    for (const Argument &place : signature.arguments()) {
        const SharedPtr<Object> argument = arguments.at(result.size());
        result.push_back(argument ? argument->objectClass()->convertToTolerant(argument, place.type()) : argument);
    }
    return result;
}

QString signatureText(const Method &method)
{
    QStringList places;
    for (const Argument &place : method.signature().arguments()) {
        places.append(place.name() + QLatin1String(": ")
                      + (place.type() ? place.type()->className() : QStringLiteral("unknown")));
    }
    return QStringLiteral("%1(%2)").arg(method.name(), places.join(QLatin1String(", ")));
}

QString callText(const QString &name, const ObjectList &arguments)
{
    QStringList types;
    for (const SharedPtr<Object> &argument : arguments)
        types.append(argument ? argument->className() : QStringLiteral("null"));
    return QStringLiteral("%1(%2)").arg(name, types.join(QLatin1String(", ")));
}

/// What is missing behind \p arguments, if these are the beginning of what
/// \p signature takes; nothing otherwise.
QStringList missingArguments(const ObjectList &arguments, const Signature &signature)
{
    const QList<Argument> &places = signature.arguments();
    const auto given = static_cast<qsizetype>(arguments.size());
    QStringList missing;
    for (qsizetype i = 0; i < places.size(); ++i) {
        if (i < given && !misfit(arguments.at(static_cast<std::size_t>(i)), places.at(i)))
            return {};
        if (i >= given)
            missing.append(places.at(i).name());
    }
    return missing;
}

/// What is missing, as the end of a sentence.
QString missingText(const QStringList &missing, const QString &before)
{
    if (missing == QStringList(QStringLiteral("button")) && before == QLatin1String("y"))
        return QStringLiteral(": coordinates need a button");
    const QString verb = missing.size() == 1 ? QStringLiteral("is") : QStringLiteral("are");
    return QStringLiteral(": %1 %2 missing").arg(missing.join(QLatin1String(", ")), verb);
}

class VoidResult final : public Object
{
public:
    const Class *objectClass() const override { return voidClass(); }
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

bool Inspector::accepts(const Signature &signature, const ObjectList &arguments) const
{
    return misfit(arguments, signature).has_value();
}

const GlobalMethod *Inspector::findGlobalMethod(const QString &name, const ObjectList &arguments) const
{
    const GlobalMethod *best = nullptr;
    qint64 bestMisfit = std::numeric_limits<qint64>::max();
    for (const GlobalMethod *method : m_globalClass.methods()) {
        if (method->name() != name)
            continue;
        const std::optional<qint64> own = misfit(arguments, method->signature());
        if (own && *own < bestMisfit) {
            best = method;
            bestMisfit = *own;
        }
    }
    return best;
}

SharedPtr<Object> Inspector::callGlobalMethod(const QString &name, const ObjectList &arguments)
{
    takeError();
    const GlobalMethod *const method = findGlobalMethod(name, arguments);
    if (!method) {
        raiseError(describeMismatch(name, arguments));
        return nullptr;
    }
    if (!method->function()) {
        raiseError(
            QStringLiteral("%1 cannot be called in this program: nothing carries it out").arg(signatureText(*method)));
        return nullptr;
    }
    const SharedPtr<Object> result = method->function()(converted(arguments, method->signature()), nullptr);
    return m_error.isEmpty() ? result : SharedPtr<Object>();
}

QString Inspector::describeMismatch(const QString &name, const ObjectList &arguments) const
{
    QStringList overloads;
    QStringList missing;
    QString last; // the place of the last argument that is given
    for (const GlobalMethod *method : m_globalClass.methods()) {
        if (method->name() != name)
            continue;
        overloads.append(signatureText(*method));
        const QStringList own = missingArguments(arguments, method->signature());
        if (!own.isEmpty() && (missing.isEmpty() || own.size() < missing.size())) {
            missing = own;
            const qsizetype given = method->signature().arguments().size() - own.size();
            last = given > 0 ? method->signature().arguments().at(given - 1).name() : QString();
        }
    }
    if (overloads.isEmpty())
        return QStringLiteral("There is no function named %1").arg(name);
    return QStringLiteral("No overload fits the call %1%2. There are: %3")
        .arg(callText(name, arguments), missing.isEmpty() ? QString() : missingText(missing, last),
             overloads.join(QLatin1String("; ")));
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
