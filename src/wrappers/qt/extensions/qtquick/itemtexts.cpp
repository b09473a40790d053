#include "wrappers/qt/extensions/qtquick/itemtexts_p.h"

#include "wrappers/qt/extensions/qtquick/computedproperties_p.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/itemids.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickhook.h"
#include "wrappers/qt/qmltypes.h"

#include <QtCore/QVariant>
#include <QtQml/private/qqmlcontextdata_p.h>
#include <QtQml/private/qqmldata_p.h>

#include <algorithm>

namespace Vantle::QtWrapper {

namespace {

bool isLineBreak(QChar letter)
{
    return letter == u'\n' || letter == u'\r' || letter == QChar::LineSeparator || letter == QChar::ParagraphSeparator;
}

// What is computed by the item's class, with no need for a property.
bool readKnownText(const QPointer<QQuickItem> &item, const QString &key, QString *text)
{
    if (key == QLatin1String("type"))
        *text = QString::fromUtf8(scriptTypeName(item->metaObject()));
    else if (key == QLatin1String("id"))
        *text = declaredId(item);
    else if (key == QLatin1String("unnamed"))
        *text = item->objectName().isEmpty() ? QStringLiteral("1") : QStringLiteral("0");
    else
        return readOwnText(item, key.toLatin1(), text);
    return true;
}

// The field or label in a control that shows what was chosen or typed there.
bool showsValueOfControl(const QQuickItem *item)
{
    const QQuickItem *const parent = item->parentItem();
    return parent && (parent->inherits("QQuickComboBox") || parent->inherits("QQuickSpinBox"));
}

} // namespace

QString declaredId(QObject *object)
{
    // Items that C++ made, such as a Flickable's content item, have none.
    const QQmlData *const data = QQmlData::get(object);
    const QQmlContextData *const context = data ? data->outerContext : nullptr;
    if (!context)
        return {};
    for (int i = 0; i < context->numIdValues(); ++i) {
        if (context->idValue(i) == object)
            return context->propertyName(i);
    }
    return {};
}

bool readOwnText(const QPointer<QQuickItem> &item, const QByteArray &property, QString *text)
{
    const QVariant value = item->property(property);
    if (!value.isValid())
        return false;
    // Enumerations are compared by number.
    const bool isEnumeration = value.metaType().flags().testFlag(QMetaType::IsEnumeration);
    *text = isEnumeration ? QString::number(value.toInt()) : value.toString();
    if (item && property == "source")
        normalizeQuickUrlProperty(item, property, *text);
    return true;
}

bool readText(const QPointer<QQuickItem> &item, const QString &key, QString *text)
{
    return readKnownText(item, key, text) || (item && VantleQtQuickHook::propertyFor(item, key, text));
}

bool guessText(const QPointer<QQuickItem> &item, const QString &key, QString *text)
{
    if (readKnownText(item, key, text))
        return true;
    const std::optional<QString> computed = item ? computedProperty(item, key) : std::nullopt;
    if (computed)
        *text = *computed;
    return computed.has_value();
}

// A page of text singles its item out no better than its place does, and
// nobody can read a statement that holds it.
bool isFitForName(const QString &text)
{
    constexpr qsizetype longest = 80;
    return !text.isEmpty() && text.size() <= longest && std::none_of(text.cbegin(), text.cend(), isLineBreak);
}

bool isTextOfUser(QQuickItem *item)
{
    if (showsValueOfControl(item))
        return true;
    const QMetaObject *const type = item->metaObject();
    return type->indexOfProperty("cursorPosition") >= 0 && !item->property("readOnly").toBool();
}

} // namespace Vantle::QtWrapper
