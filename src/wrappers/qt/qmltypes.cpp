#include "wrappers/qt/qmltypes.h"

#include "hook/objectname.h"

#include <QtCore/QObject>

#include <optional>

namespace Vantle::QtWrapper {

namespace {

constexpr char QuickPrefix[] = "QQuick";

// The part of the name ahead of a trailing "<marker><digits>"; nothing where
// the name doesn't end like that.
std::optional<QByteArrayView> withoutSuffix(QByteArrayView name, QByteArrayView marker)
{
    qsizetype digits = name.size();
    while (digits > 0 && name[digits - 1] >= '0' && name[digits - 1] <= '9')
        --digits;
    if (digits == name.size() || !name.first(digits).endsWith(marker))
        return std::nullopt;
    return name.first(digits - marker.size());
}

QByteArrayView cleaned(QByteArrayView name)
{
    for (;;) {
        std::optional<QByteArrayView> shorter = withoutSuffix(name, "_QMLTYPE_");
        if (!shorter)
            shorter = withoutSuffix(name, "_QML_");
        if (!shorter)
            return name;
        name = *shorter;
    }
}

QByteArrayView withoutQuickPrefix(QByteArrayView name)
{
    return name.startsWith(QuickPrefix) ? name.sliced(sizeof(QuickPrefix) - 1) : name;
}

// What QML calls "Window" is written in C++ as a class behind the one it is named after.
QByteArrayView withoutImplementationSuffix(QByteArrayView name)
{
    static constexpr QByteArrayView suffix = "QmlImpl";
    return name.size() > suffix.size() && name.endsWith(suffix) ? name.chopped(suffix.size()) : name;
}

} // namespace

QByteArray cleanQmlClassName(const QByteArray &className)
{
    return cleaned(className).toByteArray();
}

QByteArray cleanQmlClassName(const QMetaObject *metaObject)
{
    return cleaned(metaObject->className()).toByteArray();
}

QByteArray scriptTypeName(const QMetaObject *metaObject)
{
    return withoutImplementationSuffix(withoutQuickPrefix(cleaned(metaObject->className()))).toByteArray();
}

bool isCustomQmlTypeName(const QByteArray &className)
{
    static constexpr QByteArrayView marker = "_QMLTYPE_";
    for (qsizetype at = className.indexOf(marker); at >= 0; at = className.indexOf(marker, at + 1)) {
        const qsizetype behind = at + marker.size();
        if (behind < className.size() && className[behind] >= '0' && className[behind] <= '9')
            return true;
    }
    return false;
}

bool qmlMatchesTypeProperty(QObject *object, const PropertyValue &type)
{
    const QByteArrayView raw = object->metaObject()->className();
    const QByteArrayView clean = cleaned(raw);
    const QByteArrayView bare = withoutQuickPrefix(clean);
    const QByteArrayView plain = withoutImplementationSuffix(bare);
    // A lookup asks this of every item of a scene: each text is tried once.
    const auto matches = [&type](QByteArrayView name) {
        // The usual comparison takes no new string.
        return type.modifiers() == PropertyValue::Equals
            ? QAnyStringView(QUtf8StringView(name)) == QAnyStringView(type.stringValue())
            : type.matches(QString::fromUtf8(name));
    };
    return matches(raw) || (clean.size() < raw.size() && matches(clean))
        || (bare.size() < clean.size() && matches(bare)) || (plain.size() < bare.size() && matches(plain));
}

} // namespace Vantle::QtWrapper
