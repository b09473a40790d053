#include "hookscene.h"

#include "wrappers/qt/extensions/qtquickcommon/extensionloader_p.h"

#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlListProperty>

#include <array>
#include <memory>
#include <vector>

using namespace VantleTest;

namespace {

const QMetaObject &metaObject = VantleHook::staticMetaObject;

class VantleHookType : public HookTest
{
protected:
    QJSValue wrapped(QObject *object)
    {
        QQmlEngine::setObjectOwnership(object, QQmlEngine::CppOwnership);
        return scene.engine->newQObject(object);
    }

    VantleHook hook;
};

struct MethodRow
{
    const char *signature;
    const char *result;
    std::vector<const char *> parameters;
};

const std::array methodRows{
    MethodRow{"source(QJSValue)", "QString", {"value"}},
    MethodRow{"qmlType(QJSValue)", "QString", {"value"}},
    MethodRow{"isQmlType(QJSValue,QString)", "bool", {"value", "type"}},
    MethodRow{"isCustomQmlType(QJSValue)", "bool", {"value"}},
    MethodRow{"qmlId(QQuickItem*)", "QString", {"item"}},
    MethodRow{"itemHasContents(QQuickItem*)", "bool", {"item"}},
    MethodRow{"unhandled()", "QString", {}},
};

} // namespace

TEST_F(VantleHookType, HasSevenInvokablesInThisOrder)
{
    ASSERT_EQ(metaObject.methodCount() - metaObject.methodOffset(), static_cast<int>(methodRows.size()));
    for (std::size_t i = 0; i < methodRows.size(); ++i) {
        const MethodRow &row = methodRows[i];
        const QMetaMethod method = metaObject.method(metaObject.methodOffset() + static_cast<int>(i));
        EXPECT_EQ(method.methodSignature(), row.signature);
        EXPECT_STREQ(method.typeName(), row.result);
        EXPECT_EQ(method.methodType(), QMetaMethod::Method) << row.signature;
        EXPECT_EQ(method.access(), QMetaMethod::Public) << row.signature;
        EXPECT_TRUE(method.isConst()) << row.signature;
        const QList<QByteArray> names = method.parameterNames();
        ASSERT_EQ(names.size(), static_cast<qsizetype>(row.parameters.size())) << row.signature;
        for (qsizetype j = 0; j < names.size(); ++j)
            EXPECT_EQ(names.at(j), row.parameters[static_cast<std::size_t>(j)]) << row.signature;
    }
}

TEST_F(VantleHookType, HasNothingButMethodsAndProperties)
{
    EXPECT_STREQ(metaObject.className(), "VantleHook");
    EXPECT_EQ(metaObject.superClass(), &QObject::staticMetaObject);
    EXPECT_EQ(metaObject.classInfoCount(), 0);
    EXPECT_EQ(metaObject.enumeratorCount() - metaObject.enumeratorOffset(), 0);
    EXPECT_EQ(metaObject.constructorCount(), 0);
}

TEST_F(VantleHookType, HasTwoProperties)
{
    ASSERT_EQ(metaObject.propertyCount() - metaObject.propertyOffset(), 2);

    const QMetaProperty priority = metaObject.property(metaObject.propertyOffset());
    EXPECT_STREQ(priority.name(), "priority");
    EXPECT_STREQ(priority.typeName(), "int");
    EXPECT_TRUE(priority.isReadable());
    EXPECT_TRUE(priority.isWritable());
    EXPECT_FALSE(priority.isResettable());
    EXPECT_FALSE(priority.isConstant());
    EXPECT_FALSE(priority.isFinal());

    const QMetaProperty unhandled = metaObject.property(metaObject.propertyOffset() + 1);
    EXPECT_STREQ(unhandled.name(), "unhandled");
    EXPECT_STREQ(unhandled.typeName(), "QString");
    EXPECT_TRUE(unhandled.isReadable());
    EXPECT_FALSE(unhandled.isWritable());
    EXPECT_TRUE(unhandled.isConstant());
    EXPECT_TRUE(unhandled.isFinal());

    for (const QMetaProperty &property : {priority, unhandled}) {
        EXPECT_TRUE(property.isDesignable());
        EXPECT_TRUE(property.isScriptable());
        EXPECT_TRUE(property.isStored());
        EXPECT_FALSE(property.isUser());
        EXPECT_FALSE(property.isBindable());
        EXPECT_FALSE(property.hasNotifySignal());
        EXPECT_FALSE(property.isRequired());
    }
}

TEST_F(VantleHookType, HoldsNothingButItsPriority)
{
    EXPECT_EQ(sizeof(VantleHook), sizeof(void *) * (sizeof(QObject) / sizeof(void *) + 1));
    EXPECT_TRUE((std::is_base_of_v<QObject, VantleHook>));
}

TEST_F(VantleHookType, RegistersPointerListAndItemTypesAtTheFirstWindowWithAnEngine)
{
    Vantle::QtWrapper::hooksForItem(button());
    const QMetaType pointer = QMetaType::fromName("VantleHook*");
    ASSERT_TRUE(pointer.isValid());
    EXPECT_EQ(pointer.metaObject(), &VantleHook::staticMetaObject);
    EXPECT_TRUE(pointer.flags().testFlag(QMetaType::PointerToQObject));
    EXPECT_TRUE(QMetaType::fromName("QQmlListProperty<VantleHook>").isValid());
    EXPECT_EQ(QMetaType::fromName("QQuickItem*"), QMetaType::fromType<QQuickItem *>());
    EXPECT_EQ(metaObject.method(metaObject.methodOffset() + 4).parameterMetaType(0),
              QMetaType::fromType<QQuickItem *>());
}

TEST_F(VantleHookType, IsImportedInVersionNoughtPointOneOnly)
{
    Vantle::QtWrapper::hooksForItem(button());
    for (const auto &[version, isKnown] : {std::pair{"0.1", true}, {"1.0", false}, {"0.2", false}, {"0.0", false}}) {
        QQmlComponent component(scene.engine.get());
        component.setData(QByteArray("import com.corvaline.vantle.qtquick ") + version + "\nVantleHook {}", QUrl());
        EXPECT_EQ(component.isReady(), isKnown) << version;
        const std::unique_ptr<QObject> object(isKnown ? component.create() : nullptr);
        EXPECT_EQ(qobject_cast<VantleHook *>(object.get()) != nullptr, isKnown) << version;
    }
}

TEST_F(VantleHookType, HasNoAttachedProperties)
{
    Vantle::QtWrapper::hooksForItem(button());
    QQmlComponent component(scene.engine.get());
    component.setData("import QtQml\nimport com.corvaline.vantle.qtquick 0.1\nQtObject { VantleHook.priority: 1 }",
                      QUrl());
    EXPECT_TRUE(component.isError());
}

TEST_F(VantleHookType, StartsWithPriorityNought)
{
    EXPECT_EQ(hook.priority(), 0);
    EXPECT_EQ(hook.parent(), nullptr);
    QObject parent;
    EXPECT_EQ((new VantleHook(&parent))->parent(), &parent);
}

TEST_F(VantleHookType, KeepsEveryPriority)
{
    for (const int priority : {5, 5, -3, 0, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        hook.setPriority(priority);
        EXPECT_EQ(hook.priority(), priority);
        EXPECT_EQ(hook.property("priority").toInt(), priority);
    }
    EXPECT_TRUE(hook.setProperty("priority", 17));
    EXPECT_EQ(hook.priority(), 17);
}

TEST_F(VantleHookType, WritingThePriorityRaisesNoSignal)
{
    int raised = 0;
    Program listener;
    listener.action = [&raised] { ++raised; };
    const QMetaMethod count = Program::staticMetaObject.method(Program::staticMetaObject.indexOfMethod("act()"));
    for (int i = 0; i < metaObject.methodCount(); ++i) {
        if (metaObject.method(i).methodType() == QMetaMethod::Signal)
            ASSERT_TRUE(QObject::connect(&hook, metaObject.method(i), &listener, count)) << i;
    }

    for (const int priority : {0, 0, 5, 5, -1, 0}) {
        hook.setPriority(priority);
        EXPECT_TRUE(hook.setProperty("priority", priority + 1));
        EXPECT_TRUE(hook.setProperty("priority", priority + 1));
    }
    EXPECT_EQ(hook.priority(), 1);
    EXPECT_EQ(raised, 0);

    hook.setObjectName(QStringLiteral("name"));
    EXPECT_EQ(raised, 1);
}

TEST_F(VantleHookType, TellsUnhandledAsPropertyAndMethod)
{
    const QString expected = QStringLiteral("<vantleunhandled>");
    ASSERT_EQ(expected.size(), 17);
    EXPECT_EQ(VantleHook::unhandledValue, expected);
    EXPECT_EQ(hook.unhandled(), expected);
    EXPECT_EQ(hook.property("unhandled").toString(), expected);
    EXPECT_FALSE(hook.setProperty("unhandled", QStringLiteral("other")));
    QString result;
    EXPECT_TRUE(QMetaObject::invokeMethod(&hook, "unhandled", Q_RETURN_ARG(QString, result)));
    EXPECT_EQ(result, expected);
}

TEST_F(VantleHookType, AnswersEmptyForWhatIsNoObject)
{
    QJSEngine &engine = *scene.engine;
    const QList<QJSValue> values{QJSValue(),
                                 QJSValue(QJSValue::NullValue),
                                 QJSValue(3),
                                 QJSValue(QStringLiteral("Item")),
                                 engine.newObject(),
                                 engine.newArray(3),
                                 engine.newErrorObject(QJSValue::TypeError, QStringLiteral("x")),
                                 engine.evaluate(QStringLiteral("(function() {})"))};
    for (const QJSValue &value : values) {
        EXPECT_TRUE(hook.source(value).isNull());
        EXPECT_TRUE(hook.qmlType(value).isNull());
        EXPECT_FALSE(hook.isQmlType(value, QStringLiteral("QObject")));
        EXPECT_FALSE(hook.isQmlType(value, QString()));
        EXPECT_FALSE(hook.isCustomQmlType(value));
    }
    EXPECT_TRUE(hook.qmlId(nullptr).isNull());
    EXPECT_FALSE(hook.itemHasContents(nullptr));
    EXPECT_TRUE(logger.warnings.empty());
}

TEST_F(VantleHookType, AnswersEmptyForAnObjectThatIsGone)
{
    auto *object = new QObject;
    const QJSValue value = wrapped(object);
    EXPECT_EQ(hook.qmlType(value), QStringLiteral("QObject"));
    delete object;
    EXPECT_TRUE(hook.qmlType(value).isNull());
    EXPECT_FALSE(hook.isQmlType(value, QStringLiteral("QObject")));
    EXPECT_TRUE(hook.source(value).isNull());
}

TEST_F(VantleHookType, KnowsTheDocumentOfAnObject)
{
    EXPECT_EQ(hook.source(wrapped(button())), QStringLiteral("file:///app/Scene.qml"));
    QObject compiled;
    EXPECT_TRUE(hook.source(wrapped(&compiled)).isNull());
}

TEST_F(VantleHookType, NamesTheMostDerivedClassAlone)
{
    EXPECT_EQ(hook.qmlType(wrapped(button())), QStringLiteral("PushButton"));
    EXPECT_EQ(hook.qmlType(wrapped(frame())), QStringLiteral("QQuickRectangle"));
}

TEST_F(VantleHookType, KnowsBaseClassesToo)
{
    for (const char *type : {"PushButton", "QQuickRectangle", "QQuickItem", "QObject"})
        EXPECT_TRUE(hook.isQmlType(wrapped(button()), QLatin1String(type))) << type;
    for (const char *type : {"pushbutton", "Rectangle", "PushButton ", "Panel", "", "QQuickText"})
        EXPECT_FALSE(hook.isQmlType(wrapped(button()), QLatin1String(type))) << type;
}

TEST_F(VantleHookType, TellsTypesWrittenInQmlByTheirRawName)
{
    const QTemporaryDir folder;
    writeFile(folder.filePath(QStringLiteral("Written.qml")),
              QStringLiteral("import QtQml\nQtObject { property int x }"));
    QQmlComponent component(scene.engine.get());
    component.setData("import QtQml\nQtObject { property QtObject object: Written {} }",
                      QUrl::fromLocalFile(folder.filePath(QStringLiteral("Main.qml"))));
    const std::unique_ptr<QObject> document(component.create());
    ASSERT_NE(document, nullptr) << qPrintable(component.errorString());
    auto *const written = document->property("object").value<QObject *>();
    EXPECT_TRUE(hook.isCustomQmlType(wrapped(written)));
    EXPECT_EQ(hook.qmlType(wrapped(written)), QStringLiteral("Written"));

    EXPECT_FALSE(hook.isCustomQmlType(wrapped(frame())));
    QObject compiled;
    EXPECT_FALSE(hook.isCustomQmlType(wrapped(&compiled)));
}

TEST_F(VantleHookType, TellsATypeWrittenInQmlFromItsOwnFile)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Written.qml"));
    writeFile(path, QStringLiteral("import QtQuick\nItem { property int extra }"));
    QQmlComponent component(scene.engine.get(), QUrl::fromLocalFile(path));
    const std::unique_ptr<QObject> object(component.create());
    ASSERT_NE(object, nullptr) << qPrintable(component.errorString());
    EXPECT_TRUE(hook.isCustomQmlType(wrapped(object.get())));

    // The same for an extension that is asked about such an item.
    extend({QStringLiteral("function isItemReady(item) { return !hook.isCustomQmlType(item) }")});
    qobject_cast<QQuickItem *>(object.get())->setParentItem(panel());
    EXPECT_FALSE(VantleQtQuickHook::isItemReady(qobject_cast<QQuickItem *>(object.get())));
    EXPECT_TRUE(VantleQtQuickHook::isItemReady(frame()));
}

TEST_F(VantleHookType, KnowsIds)
{
    EXPECT_EQ(hook.qmlId(button()), QStringLiteral("buttonId"));
    EXPECT_EQ(hook.qmlId(frame()), QString());
    QQuickItem compiled;
    EXPECT_EQ(hook.qmlId(&compiled), QString());
}

TEST_F(VantleHookType, KnowsWhetherAnItemPaints)
{
    EXPECT_TRUE(hook.itemHasContents(button()));
    EXPECT_FALSE(hook.itemHasContents(panel()));
    panel()->setFlag(QQuickItem::ItemHasContents);
    EXPECT_TRUE(hook.itemHasContents(panel()));
}

TEST_F(VantleHookType, OffersItsQueriesToTheExtension)
{
    extend({QStringLiteral(R"(
        function propertyFor(item, name) {
            switch (name) {
            case "source": return hook.source(item)
            case "type": return hook.qmlType(item)
            case "isItem": return hook.isQmlType(item, "QQuickItem")
            case "isCustom": return hook.isCustomQmlType(item) + "," + hook.isCustomQmlType(item.missing)
            case "id": return hook.qmlId(item)
            case "contents": return hook.itemHasContents(item)
            case "nothing": return hook.qmlId(null) + hook.qmlType(undefined) + hook.source(3)
            }
            return hook.unhandled
        })")});
    const auto answer = [this](const char *name) {
        QString value = QStringLiteral("no answer");
        VantleQtQuickHook::propertyFor(button(), QLatin1String(name), &value);
        return value.toStdString();
    };
    EXPECT_EQ(answer("source"), "file:///app/Scene.qml");
    EXPECT_EQ(answer("type"), "PushButton");
    EXPECT_EQ(answer("isItem"), "true");
    EXPECT_EQ(answer("isCustom"), "false,false");
    EXPECT_EQ(answer("id"), "buttonId");
    EXPECT_EQ(answer("contents"), "true");
    EXPECT_EQ(answer("nothing"), "");
    EXPECT_EQ(answer("other"), "no answer");
}
