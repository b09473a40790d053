#include "hook/delegates.h"
#include "hook/objectname.h"
#include "hookscene.h"
#include "support/waiting.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"
#include "wrappers/qt/wrapping.h"

#include <gtest/gtest.h>

#include <QtCore/QMap>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

using Texts = QMap<QString, QString>;

const QString container = QStringLiteral("container");

/// What the host makes of the answers of extensions.
class QuickExtensions : public VantleTest::HookTest
{
protected:
    QuickExtensions() { setupQtQuick(); }

    static Texts name(QObject *object)
    {
        Texts texts;
        const ObjectName generated =
            Application::self()->nameGenerator()->objectName(wrapAndRegisterQObject(object), false);
        for (auto property = generated.properties().begin(); property != generated.properties().end(); ++property)
            texts.insert(property.key(), property->stringValue());
        return texts;
    }
    static Texts own(QObject *object)
    {
        Texts texts = name(object);
        texts.remove(container);
        return texts;
    }
    static QString scriptName(QObject *object) { return wrapAndRegisterQObject(object)->scriptName(); }
    static QString notReadyReason(QObject *object)
    {
        const SharedPtr<Object> wrapper = wrapAndRegisterQObject(object);
        return DelegateFactory::self()->interactionDelegate(wrapper->objectClass())->notReadyReason(wrapper);
    }

    void show()
    {
        window()->show();
        ASSERT_TRUE(VantleTest::waitUntil([this] { return window()->isExposed(); }));
    }

private:
    Application m_application;
};

Texts texts(std::initializer_list<std::pair<const char *, const char *>> list)
{
    Texts result;
    for (const auto &[key, value] : list)
        result.insert(QString::fromUtf8(key), QString::fromUtf8(value));
    return result;
}

} // namespace

TEST_F(QuickExtensions, WithoutAnswersNothingChanges)
{
    show();
    EXPECT_EQ(own(button()), texts({{"type", "PushButton"}, {"objectName", "button"}, {"visible", "true"}}));
    EXPECT_EQ(name(button()).value(container), scriptName(window()));
    EXPECT_EQ(notReadyReason(button()), QString());
}

TEST_F(QuickExtensions, ListOfPropertiesRules)
{
    extend({QStringLiteral("property var objectNameProperties: ({ 'QQuickRectangle': ['type', 'caption'] })")});
    EXPECT_EQ(own(button()), texts({{"type", "PushButton"}, {"caption", "OK"}}));
    EXPECT_EQ(name(button()).value(container), scriptName(window()));
}

TEST_F(QuickExtensions, FurtherPropertiesAreAdded)
{
    extend({QStringLiteral("function extraPropertiesFor(item) { return ['caption', 'border.width', 'state'] }")});
    EXPECT_EQ(own(button()), texts({{"type", "PushButton"}, {"objectName", "button"}, {"visible", "true"},
                                    {"caption", "OK"}, {"state", ""}}));
}

TEST_F(QuickExtensions, PropertiesThatOnlyAnExtensionKnowsAreAskedOfIt)
{
    extend({QStringLiteral("function extraPropertiesFor(item) { return ['role', 'nobodyKnows'] }\n"
                           "function propertyFor(item, name) { return name === 'role' ? 'accept' : unhandled }")});
    EXPECT_EQ(own(button()).value(QStringLiteral("role")), QStringLiteral("accept"));
    EXPECT_FALSE(own(button()).contains(QStringLiteral("nobodyKnows")));
}

TEST_F(QuickExtensions, ComputedPropertiesCanBeAskedFor)
{
    extend({QStringLiteral("property var objectNameProperties: ({ 'QQuickItem': ['id', 'unnamed', 'type'] })")});
    EXPECT_EQ(own(button()), texts({{"type", "PushButton"}, {"id", "buttonId"}, {"unnamed", "0"}}));
    button()->setObjectName(QString());
    EXPECT_EQ(own(frame()->childItems().first()).value(QStringLiteral("unnamed")), QStringLiteral("1"));
}

TEST_F(QuickExtensions, EnumerationsAreNamedByNumber)
{
    extend({QStringLiteral("property var objectNameProperties: ({ 'QQuickItem': ['transformOrigin'] })")});
    EXPECT_EQ(own(button()), texts({{"transformOrigin", "4"}}));
}

TEST_F(QuickExtensions, PlaceIsNoPropertyThatCanBeAskedFor)
{
    extend({QStringLiteral("property var objectNameProperties:"
                           " ({ 'QQuickItem': ['type', 'container', 'occurrence'] })")});
    EXPECT_EQ(own(button()), texts({{"type", "PushButton"}}));
    EXPECT_EQ(name(button()).value(container), scriptName(window()));
}

TEST_F(QuickExtensions, EmptyListLeavesTheItemWithoutName)
{
    extend({QStringLiteral("property var objectNameProperties: ({ 'QQuickItem': [] })")});
    EXPECT_TRUE(name(button()).isEmpty());
    EXPECT_EQ(scriptName(button()), QString());
}

TEST_F(QuickExtensions, ContainerIsTheOneThatAnExtensionNames)
{
    extend({QStringLiteral("property var containerTypes: ['Panel']")});
    EXPECT_EQ(name(button()).value(container), scriptName(panel()));
    EXPECT_EQ(name(frame()).value(container), scriptName(panel()));
    EXPECT_EQ(name(panel()).value(container), scriptName(window()));
}

TEST_F(QuickExtensions, ContainersHaveContainersInTurn)
{
    extend({QStringLiteral("function containerFor(item) { return item.parent }")});
    EXPECT_EQ(name(button()).value(container), scriptName(frame()));
    EXPECT_EQ(name(frame()).value(container), scriptName(panel()));
    // The panel's parent is the content item.
    EXPECT_EQ(name(panel()).value(container), scriptName(window()));
}

TEST_F(QuickExtensions, ContainerThatIsNotAboveTheItemIsNotTaken)
{
    extend({QStringLiteral("function containerFor(item) {"
                           " return item.objectName === 'frame' ? item.children[0] : item }")});
    EXPECT_EQ(name(button()).value(container), scriptName(window()));
    EXPECT_EQ(name(frame()).value(container), scriptName(window()));
}

TEST_F(QuickExtensions, WithoutContainerTheWindowIsOne)
{
    extend({QStringLiteral("function containerFor(item) { return null }")});
    EXPECT_EQ(name(button()).value(container), scriptName(window()));
}

TEST_F(QuickExtensions, ContentItemIsNotAskedForItsContainer)
{
    extend({QStringLiteral("function containerFor(item) { program.note('asked'); return item }")});
    window();
    EXPECT_FALSE(name(window()->contentItem()).contains(container));
    EXPECT_EQ(scene.program.notes, QStringList());
}

TEST_F(QuickExtensions, ItemThatAnExtensionDestroysWhileItIsNamedHasNoName)
{
    for (const char *function : {"extraPropertiesFor", "containerFor"}) {
        extend({QStringLiteral("function %1(item) { program.kill(item); return unhandled }")
                    .arg(QLatin1String(function))});
        QQuickWindow *const victims = scene.addWindow(QStringLiteral("Item { objectName: 'victim' }"));
        QQuickItem *const victim = VantleTest::itemNamed(victims, "victim");
        const SharedPtr<Object> wrapper = wrapAndRegisterQObject(victim);
        EXPECT_EQ(wrapper->scriptName(), QString()) << function;
        EXPECT_TRUE(wrapper->isNull()) << function;
        scene.engine->clearComponentCache();
    }
}

TEST_F(QuickExtensions, ItemIsNotReadyWhileAnExtensionSaysSo)
{
    extend({QStringLiteral("function isItemReady(item) { return item.objectName !== 'button' }")});
    show();
    EXPECT_EQ(notReadyReason(button()), QStringLiteral("an extension says that the item is not ready"));
    EXPECT_EQ(notReadyReason(frame()), QString());
}

TEST_F(QuickExtensions, ExtensionsAreNotAskedAboutItemsThatAreNotReadyAnyway)
{
    extend({QStringLiteral("function isItemReady(item) { program.note('asked'); return true }")});
    EXPECT_NE(notReadyReason(button()), QString());
    EXPECT_EQ(scene.program.notes, QStringList());
    show();
    EXPECT_EQ(notReadyReason(button()), QString());
    EXPECT_EQ(scene.program.notes, QStringList(QStringLiteral("asked")));
}

TEST_F(QuickExtensions, ItemThatAnExtensionDestroysWhenAskedIsNotReady)
{
    extend({QStringLiteral("function isItemReady(item) { program.kill(item); return true }")});
    show();
    EXPECT_EQ(notReadyReason(button()), QStringLiteral("the item does not exist any more"));
}
