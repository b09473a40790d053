#include "hookscene.h"

#include "hook/objectname.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/hittesting.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/itemlookup.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/qualifiednames_p.h"
#include "wrappers/qt/wrapping.h"

using namespace Vantle;
using namespace Vantle::QtWrapper;
using VantleTest::itemNamed;

namespace {

/// What extensions add to the comparison of items with names.
class ExtensionsInNames : public VantleTest::HookTest
{
protected:
    ExtensionsInNames() { setupQtQuick(); }

    /// An extension that notes each question for a property, and answers with \p script.
    void answerProperties(const char *script)
    {
        extend({QStringLiteral("function propertyFor(item, name) {\n program.note(item.objectName + '.' + name)\n %1 }")
                    .arg(QLatin1String(script))});
    }

    QList<QQuickItem *> roots() { return window()->contentItem()->childItems(); }
    QQuickItem *lookUp(const char *selector)
    {
        return qobject_cast<QQuickItem *>(
            nativeQObject(findQuickItem(roots(), ObjectName(QString::fromUtf8(selector)), mismatched)));
    }
    static QStringList mismatches(QQuickItem *item, const char *selector)
    {
        return mismatchedProperties(item, ObjectName(QString::fromUtf8(selector)).properties());
    }

    QList<QString> mismatched;

private:
    Application m_application;
};

} // namespace

TEST_F(ExtensionsInNames, PropertyThatOnlyAnExtensionKnowsFindsItsItem)
{
    answerProperties("return name === 'role' && item.objectName === 'button' ? 'accept' : unhandled");
    EXPECT_EQ(lookUp("[role=\"accept\"]"), button());
    EXPECT_EQ(lookUp("[role=\"reject\"]"), nullptr);
    EXPECT_EQ(mismatched, QStringList{QStringLiteral("role")});
}

TEST_F(ExtensionsInNames, NameOfSuchAPropertyIsCountedAndFoundAgain)
{
    extend({QStringLiteral("property var objectNameProperties: ({ 'QQuickItem': ['type', 'role'] })\n"
                           "function propertyFor(item, name) { return name === 'role' ? 'accept' : unhandled }")});
    QQuickWindow *const equals = scene.addWindow(
        QStringLiteral("title: 'Equals'; Item { objectName: 'first' } Item { objectName: 'second' }"));
    QQuickItem *const second = itemNamed(equals, "second");
    const QString name = wrapAndRegisterQObject(second)->scriptName();
    EXPECT_EQ(ObjectName(name).property(QStringLiteral("role")).stringValue(), QStringLiteral("accept"));
    EXPECT_EQ(ObjectName(name).occurrenceValue(), 2);
    EXPECT_EQ(nativeQObject(Application::self()->objectForName(name)), second);
}

TEST_F(ExtensionsInNames, ExtensionsCannotOverrideWhatAnItemHas)
{
    answerProperties("return 'mine'");
    EXPECT_EQ(mismatches(button(), "#buttonId[caption=\"OK\"][unnamed=\"0\"][objectName=\"button\"]:visible"),
              QStringList());
    EXPECT_EQ(mismatches(button(), "#mine[caption=\"mine\"][unnamed=\"mine\"][objectName=\"mine\"]").size(), 4);
    // Without an id, that is empty and not missing.
    EXPECT_EQ(mismatches(frame(), "#mine"), QStringList{QStringLiteral("id")});
    EXPECT_EQ(mismatches(button(), "PushButton:nth(7)"), QStringList());
    EXPECT_EQ(scene.program.notes, QStringList());
}

TEST_F(ExtensionsInNames, ExtensionsAreAskedForAPropertyThatIsUndefined)
{
    answerProperties("return 'given'");
    QQuickWindow *const other = scene.addWindow(
        QStringLiteral("Item { objectName: 'it'; property var nothing; property var empty: null }"));
    QQuickItem *const item = itemNamed(other, "it");
    EXPECT_EQ(mismatches(item, "[nothing=\"given\"]"), QStringList());
    EXPECT_EQ(mismatches(item, "[empty=\"\"]"), QStringList()) << "null is a value";
    EXPECT_EQ(scene.program.notes, QStringList{QStringLiteral("it.nothing")});
}

TEST_F(ExtensionsInNames, ContainerIsAPropertyThatAnExtensionMayKnow)
{
    answerProperties("return name === 'container' ? 'Panel' : unhandled");
    EXPECT_EQ(lookUp("Panel PushButton"), button());
    EXPECT_EQ(lookUp("Frame PushButton"), nullptr);
    EXPECT_EQ(mismatched, QStringList{QStringLiteral("container")});
}

TEST_F(ExtensionsInNames, WalksOverItemsAskForNothingButProperties)
{
    extend({QStringLiteral(R"(
        function propertyFor(item, name) { program.note('property'); return unhandled }
        function isIgnored(item) { program.note('ignored'); return true }
        function isItemReady(item) { program.note('ready'); return false }
        function containerFor(item) { program.note('container'); return null }
        function extraPropertiesFor(item) { program.note('extra'); return [] })")});
    EXPECT_EQ(lookUp("PushButton#buttonId[nobodyKnows=\"1\"]"), nullptr);
    EXPECT_FALSE(scene.program.notes.isEmpty());
    quint32 count = 0;
    EXPECT_TRUE(countOccurrences(button(), roots(), ObjectName(QStringLiteral("[nobodyKnows=\"1\"]")).properties(),
                                 true, count));
    EXPECT_EQ(count, 0U);
    scene.program.notes.removeAll(QStringLiteral("property"));
    EXPECT_EQ(scene.program.notes, QStringList());
}

TEST_F(ExtensionsInNames, ItemThatHitTestingIgnoresIsFoundByItsName)
{
    extend({QStringLiteral("function isIgnored(item) { return item.objectName === 'button' }")});
    window();
    button()->setSize(QSizeF(50, 50));
    EXPECT_EQ(recursiveQuickItemAt(button(), QPointF(10, 10)), nullptr);
    EXPECT_EQ(lookUp("PushButton#buttonId"), button());
    const QString name = wrapAndRegisterQObject(button())->scriptName();
    EXPECT_EQ(nativeQObject(Application::self()->objectForName(name)), button());
}

TEST_F(ExtensionsInNames, ItemThatAnExtensionDestroysAsItIsComparedIsNeitherFoundNorCounted)
{
    answerProperties("if (item.objectName === 'mortal') program.kill(item)\n return 'yes'");
    QQuickWindow *const other = scene.addWindow(
        QStringLiteral("Item { objectName: 'first' } Item { objectName: 'mortal' } Item { objectName: 'last' }"));
    QQuickItem *const last = itemNamed(other, "last");
    const ObjectName::Properties properties = ObjectName(QStringLiteral("[known=\"yes\"]")).properties();
    quint32 count = 0;
    EXPECT_TRUE(countOccurrences(last, other->contentItem()->childItems(), properties, true, count));
    EXPECT_EQ(count, 2U);
    EXPECT_EQ(other->contentItem()->childItems().size(), 2);
}
