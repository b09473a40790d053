#include "wrappers/qt/qmltypes.h"

#include "hook/objectname.h"

#include <gtest/gtest.h>

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>

#include <memory>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

struct Cleaning
{
    const char *raw;
    const char *clean;
};

class CleanQmlClassName : public testing::TestWithParam<Cleaning>
{
};

PropertyValue equals(const QByteArray &text)
{
    return {QString::fromUtf8(text), PropertyValue::Equals, PropertyValue::Text};
}

std::unique_ptr<QObject> create(QQmlEngine *engine, const QByteArray &text)
{
    QQmlComponent component(engine);
    component.setData(text, QUrl());
    std::unique_ptr<QObject> object(component.create());
    EXPECT_TRUE(object) << qPrintable(component.errorString());
    return object;
}

} // namespace

TEST_P(CleanQmlClassName, TakesOffWhatTheEngineAdds)
{
    EXPECT_EQ(cleanQmlClassName(QByteArray(GetParam().raw)), GetParam().clean);
}

TEST_P(CleanQmlClassName, OfACleanNameChangesNothing)
{
    EXPECT_EQ(cleanQmlClassName(QByteArray(GetParam().clean)), GetParam().clean);
}

INSTANTIATE_TEST_SUITE_P(Names, CleanQmlClassName, testing::Values(
    Cleaning{"", ""},
    Cleaning{"QQuickMouseArea", "QQuickMouseArea"},
    Cleaning{"Button_QMLTYPE_0", "Button"},
    Cleaning{"Button_QMLTYPE_123456789012345678901234567890", "Button"},
    Cleaning{"QQuickItem_QML_17", "QQuickItem"},
    Cleaning{"Button_QMLTYPE_4_QML_9", "Button"},
    Cleaning{"Button_QML_9_QMLTYPE_4", "Button"},
    Cleaning{"A_QMLTYPE_1_QMLTYPE_2_QML_3_QML_4", "A"},
    // Only at the end, and only with all of the suffix there.
    Cleaning{"Button_QMLTYPE_4_Extra", "Button_QMLTYPE_4_Extra"},
    Cleaning{"Button_QMLTYPE_", "Button_QMLTYPE_"},
    Cleaning{"Button_QML_", "Button_QML_"},
    Cleaning{"Button_QMLTYPE_4x", "Button_QMLTYPE_4x"},
    Cleaning{"Button_QMLTYPE_-4", "Button_QMLTYPE_-4"},
    Cleaning{"Button_qmltype_4", "Button_qmltype_4"},
    Cleaning{"ButtonQMLTYPE_4", "ButtonQMLTYPE_4"},
    Cleaning{"Button_QMLTYPE4", "Button_QMLTYPE4"},
    Cleaning{"Button_4", "Button_4"},
    Cleaning{"Button4", "Button4"},
    Cleaning{"42", "42"},
    Cleaning{"Button_QMLTYPE_\xd9\xa4", "Button_QMLTYPE_\xd9\xa4"},
    Cleaning{"_QMLTYPE_1", ""},
    Cleaning{"_QML_1", ""},
    Cleaning{"_", "_"}));

TEST(QmlTypes, BothWaysToCleanANameAgree)
{
    QQmlEngine engine;
    const auto object = create(&engine, "import QtQuick\nItem { property int count }");
    const QMetaObject *const metaObject = object->metaObject();
    EXPECT_NE(QByteArray(metaObject->className()), QByteArray("QQuickItem"));
    EXPECT_EQ(cleanQmlClassName(metaObject), cleanQmlClassName(QByteArray(metaObject->className())));
    EXPECT_EQ(cleanQmlClassName(&QQuickItem::staticMetaObject), "QQuickItem");
}

TEST(QmlTypes, WindowIsCalledAsInQmlAndFoundByItsOldNamesToo)
{
    QQmlEngine engine;
    const auto window = create(&engine, "import QtQuick\nWindow { property int count }");
    EXPECT_EQ(scriptTypeName(window->metaObject()), "Window");
    for (const char *type : {"Window", "WindowQmlImpl", "QQuickWindowQmlImpl"})
        EXPECT_TRUE(qmlMatchesTypeProperty(window.get(), equals(type))) << type;
    EXPECT_FALSE(qmlMatchesTypeProperty(window.get(), equals("QQuickWindow")));
}

TEST(QmlTypes, ScriptsWriteNoQQuick)
{
    QQmlEngine engine;
    EXPECT_EQ(scriptTypeName(&QQuickItem::staticMetaObject), "Item");
    EXPECT_EQ(scriptTypeName(&QObject::staticMetaObject), "QObject");
    EXPECT_EQ(scriptTypeName(create(&engine, "import QtQuick\nMouseArea { property int count }")->metaObject()),
              "MouseArea");
}

TEST(QmlTypes, TypesWrittenInQmlAreTold)
{
    EXPECT_TRUE(isCustomQmlTypeName("Button_QMLTYPE_0"));
    EXPECT_TRUE(isCustomQmlTypeName("Button_QMLTYPE_4_QML_9"));
    EXPECT_TRUE(isCustomQmlTypeName("Button_QMLTYPE_4_Extra"));
    EXPECT_TRUE(isCustomQmlTypeName("Button_QMLTYPE_x_QMLTYPE_1"));
    EXPECT_TRUE(isCustomQmlTypeName("Button_QMLTYPE_QMLTYPE_1"));
    EXPECT_FALSE(isCustomQmlTypeName(""));
    EXPECT_FALSE(isCustomQmlTypeName("QQuickItem"));
    EXPECT_FALSE(isCustomQmlTypeName("QQuickItem_QML_3"));
    EXPECT_FALSE(isCustomQmlTypeName("Button_QMLTYPE_"));
    EXPECT_FALSE(isCustomQmlTypeName("Button_QMLTYPE_x1"));
}

TEST(QmlTypes, TypeMatchesRawCleanAndBareName)
{
    QQmlEngine engine;
    const auto object = create(&engine, "import QtQuick\nMouseArea { property int count }");
    EXPECT_TRUE(qmlMatchesTypeProperty(object.get(), equals(object->metaObject()->className())));
    EXPECT_TRUE(qmlMatchesTypeProperty(object.get(), equals("QQuickMouseArea")));
    EXPECT_TRUE(qmlMatchesTypeProperty(object.get(), equals("MouseArea")));
}

TEST(QmlTypes, BaseClassesDoNotMatch)
{
    QQmlEngine engine;
    const auto object = create(&engine, "import QtQuick\nMouseArea { property int count }");
    for (const char *name : {"QQuickItem", "Item", "QObject", "Mouse", "QuickMouseArea", "mousearea", ""})
        EXPECT_FALSE(qmlMatchesTypeProperty(object.get(), equals(name))) << name;
}

TEST(QmlTypes, ModifiersOfTheTypeAreHonoured)
{
    QQuickItem item;
    const auto value = [](const char *text, PropertyValue::Modifiers modifiers) {
        return PropertyValue(QString::fromLatin1(text), modifiers, PropertyValue::Text);
    };
    EXPECT_TRUE(qmlMatchesTypeProperty(&item, value("QQ", PropertyValue::BeginsWith)));
    EXPECT_TRUE(qmlMatchesTypeProperty(&item, value("It", PropertyValue::BeginsWith)));
    EXPECT_TRUE(qmlMatchesTypeProperty(&item, value("Quick", PropertyValue::Contains)));
    EXPECT_TRUE(qmlMatchesTypeProperty(&item, value("^Item$", PropertyValue::MatchesRegularExpression)));
    EXPECT_TRUE(qmlMatchesTypeProperty(&item, value("^qquickitem$",
                                                    PropertyValue::MatchesRegularExpressionCaseInsensitively)));
    EXPECT_FALSE(qmlMatchesTypeProperty(&item, value("Button", PropertyValue::Contains)));
}
