#include "wrappers/qt/extensions/qtquickcommon/identity/itemids.h"

#include "support/waiting.h"

#include <gtest/gtest.h>

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtQuick/private/qquickflickable_p.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

using Vantle::QtWrapper::idForQuickItem;
using Vantle::QtWrapper::mayHaveId;

namespace {

QUrl dataFile(const char *name)
{
    return QUrl::fromLocalFile(QStringLiteral(VANTLE_TEST_DATA_DIR "/") + QString::fromLatin1(name));
}

std::unique_ptr<QObject> load(QQmlComponent *component, QQmlContext *context = nullptr)
{
    std::unique_ptr<QObject> root(component->create(context));
    EXPECT_NE(root, nullptr) << qPrintable(component->errorString());
    return root;
}

std::unique_ptr<QObject> loadFile(QQmlEngine *engine, const char *name)
{
    QQmlComponent component(engine, dataFile(name));
    return load(&component);
}

std::unique_ptr<QObject> loadText(QQmlEngine *engine, const char *qml, QQmlContext *context = nullptr)
{
    QQmlComponent component(engine);
    component.setData(qml, dataFile("inline.qml"));
    return load(&component, context);
}

void collect(QQuickItem *item, QList<QQuickItem *> *items)
{
    items->append(item);
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children)
        collect(child, items);
}

QList<QQuickItem *> itemsBelow(QObject *root)
{
    QList<QQuickItem *> items;
    if (auto *window = qobject_cast<QQuickWindow *>(root))
        collect(window->contentItem(), &items);
    else
        collect(qobject_cast<QQuickItem *>(root), &items);
    return items;
}

QQuickItem *itemNamed(QObject *root, const char *objectName)
{
    const QList<QQuickItem *> items = itemsBelow(root);
    const auto found = std::find_if(items.begin(), items.end(), [objectName](const QQuickItem *item) {
        return item->objectName() == QLatin1String(objectName);
    });
    EXPECT_NE(found, items.end()) << objectName;
    return found == items.end() ? nullptr : *found;
}

QString nameFromQt(QQuickItem *item)
{
    const QQmlContext *context = qmlContext(item);
    return context ? context->nameForObject(item) : QString();
}

struct Comparison
{
    int items = 0;
    QStringList names; ///< those that aren't empty
};

Comparison compareWithQt(QObject *root)
{
    Comparison comparison;
    for (QQuickItem *item : itemsBelow(root)) {
        const QString id = idForQuickItem(item);
        EXPECT_EQ(id, nameFromQt(item)) << item->metaObject()->className() << ' ' << qPrintable(item->objectName());
        ++comparison.items;
        if (id.isEmpty())
            continue;
        comparison.names.append(id);
        EXPECT_TRUE(mayHaveId(item, id.toUtf8())) << qPrintable(id);
    }
    return comparison;
}

/// Context object whose getters are counted.
class Witness : public QQuickItem
{
    Q_OBJECT
    Q_PROPERTY(QObject *anyObject READ anyObject CONSTANT)
    Q_PROPERTY(QQuickItem *anyItem READ anyItem CONSTANT)
    Q_PROPERTY(QQuickFlickable *flickable READ flickable CONSTANT)
    Q_PROPERTY(QQuickWindow *window READ ownWindow CONSTANT)
    Q_PROPERTY(QVariant variant READ variant CONSTANT)
    Q_PROPERTY(QString text READ text CONSTANT)
    Q_PROPERTY(int number READ number CONSTANT)

public:
    QObject *anyObject() const { return ++objectReads, nullptr; }
    QQuickItem *anyItem() const
    {
        ++itemReads;
        QQuickItem *const item = held;
        // A copy, since it may destroy the context object.
        if (const std::function<void()> running = onItemRead)
            running();
        return item;
    }
    QQuickFlickable *flickable() const { return ++otherReads, nullptr; }
    QQuickWindow *ownWindow() const { return ++otherReads, nullptr; }
    QVariant variant() const { return ++otherReads, QVariant::fromValue<QObject *>(held); }
    QString text() const { return ++otherReads, QString(); }
    int number() const { return ++otherReads, 0; }

    QQuickItem *held = nullptr;
    std::function<void()> onItemRead;
    mutable int objectReads = 0;
    mutable int itemReads = 0;
    mutable int otherReads = 0;
};

TEST(ItemIds, areEmptyForNullAndForItemsThatQmlDidNotMake)
{
    QQuickItem item;
    EXPECT_TRUE(idForQuickItem(nullptr).isEmpty());
    EXPECT_TRUE(idForQuickItem(&item).isEmpty());
    QQuickWindow window;
    EXPECT_TRUE(idForQuickItem(window.contentItem()).isEmpty());
}

TEST(ItemIds, areThoseOfTheDocument)
{
    QQmlEngine engine;
    const auto root = loadText(&engine, R"(
        import QtQuick
        Item { id: root
            Item { id: child; objectName: "child" }
            Item { objectName: "other" }
        })");
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(idForQuickItem(qobject_cast<QQuickItem *>(root.get())), QStringLiteral("root"));
    EXPECT_EQ(idForQuickItem(itemNamed(root.get(), "child")), QStringLiteral("child"));
    EXPECT_TRUE(idForQuickItem(itemNamed(root.get(), "other")).isEmpty());
}

TEST(ItemIds, areNotLookedForInOtherContexts)
{
    QQmlEngine engine;
    QQmlContext context(engine.rootContext());
    const auto outer = loadText(&engine, "import QtQuick\nItem { id: outer }", &context);
    context.setContextProperty(QStringLiteral("named"), outer.get());
    const auto inner = loadText(&engine, "import QtQuick\nItem { Item { objectName: 'leaf' } }", &context);
    auto *outerItem = qobject_cast<QQuickItem *>(outer.get());
    EXPECT_EQ(idForQuickItem(outerItem), QStringLiteral("outer"));
    QQuickItem *leaf = itemNamed(inner.get(), "leaf");
    context.setContextProperty(QStringLiteral("leaf"), leaf);
    EXPECT_TRUE(idForQuickItem(leaf).isEmpty()) << "the parent context is not asked";
    EXPECT_EQ(idForQuickItem(leaf), nameFromQt(leaf));
}

TEST(ItemIds, comeFromContextPropertiesToo)
{
    QQmlEngine engine;
    QQmlContext context(engine.rootContext());
    QQuickItem item;
    QQuickItem other;
    QQmlEngine::setContextForObject(&item, &context);
    QQmlEngine::setContextForObject(&other, &context);
    context.setContextProperty(QStringLiteral("number"), 4);
    context.setContextProperty(QStringLiteral("nothing"), QVariant::fromValue<QObject *>(nullptr));
    context.setContextProperty(QStringLiteral("tool"), &item);
    context.setContextProperty(QStringLiteral("again"), QVariant::fromValue(&item));
    EXPECT_EQ(idForQuickItem(&item), QStringLiteral("tool"));
    EXPECT_EQ(idForQuickItem(&item), nameFromQt(&item));
    EXPECT_TRUE(idForQuickItem(&other).isEmpty());
    EXPECT_EQ(idForQuickItem(&other), nameFromQt(&other));
}

TEST(ItemIds, comeFromPropertiesOfTheContextObjectThatHoldTheItem)
{
    QQmlEngine engine;
    const auto window = loadFile(&engine, "Window.qml");
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(idForQuickItem(itemNamed(window.get(), "chosen")), QStringLiteral("chosenWithoutId"));
    EXPECT_EQ(idForQuickItem(itemNamed(window.get(), "anyObject")), QStringLiteral("anyObject"));
    EXPECT_EQ(idForQuickItem(itemNamed(window.get(), "held by a property of its own type")), QStringLiteral("card"));
    EXPECT_EQ(idForQuickItem(itemNamed(window.get(), "derived")), QStringLiteral("derived"));
}

TEST(ItemIds, areThoseThatQtGivesThroughoutAPageOfControls)
{
    QQmlEngine engine;
    const auto page = loadFile(&engine, "Controls.qml");
    ASSERT_NE(page, nullptr);
    QQuickWindow window;
    auto *pageItem = qobject_cast<QQuickItem *>(page.get());
    pageItem->setParentItem(window.contentItem());
    window.resize(400, 400);
    window.show();
    ASSERT_TRUE(VantleTest::waitUntil([&window] { return window.isExposed(); }));

    const Comparison comparison = compareWithQt(page.get());
    EXPECT_GT(comparison.items, 60);
    for (const char *id : {"page", "back", "search", "choice", "loader", "loaded", "inside", "first", "guest"})
        EXPECT_EQ(comparison.names.count(QLatin1String(id)), 1) << id;
    EXPECT_EQ(comparison.names.count(QLatin1String("pick")), 3);
    EXPECT_EQ(comparison.names.count(QLatin1String("title")), 2);
    EXPECT_GE(comparison.names.count(QLatin1String("line")), 1);
    pageItem->setParentItem(nullptr);
}

TEST(ItemIds, areThoseThatQtGivesThroughoutAWindow)
{
    QQmlEngine engine;
    const auto root = loadFile(&engine, "Window.qml");
    auto *window = qobject_cast<QQuickWindow *>(root.get());
    ASSERT_NE(window, nullptr);
    window->requestActivate();
    ASSERT_TRUE(VantleTest::waitUntil([window] { return window->isExposed() && window->activeFocusItem(); }));
    const Comparison comparison = compareWithQt(window);
    EXPECT_GT(comparison.items, 80);
    EXPECT_GT(comparison.names.size(), 20);
}

TEST(ItemIds, leaveTheChildrenOfAWindowAsTheyAre)
{
    QQmlEngine engine;
    const auto root = loadFile(&engine, "Window.qml");
    auto *window = qobject_cast<QQuickWindow *>(root.get());
    ASSERT_NE(window, nullptr);
    const QList<QQuickItem *> items = itemsBelow(window);
    const qsizetype before = window->children().size();
    for (QQuickItem *item : items)
        idForQuickItem(item);
    EXPECT_EQ(window->children().size(), before);
#if QT_VERSION < QT_VERSION_CHECK(6, 5, 0)
    for (QQuickItem *item : items)
        nameFromQt(item);
    EXPECT_GT(window->children().size(), before) << "the test would not notice";
#endif
}

TEST(ItemIds, makeNoContextObjects)
{
    QQmlEngine engine;
    const auto root = loadText(&engine, R"(
        import QtQuick
        Row { Repeater { model: 20; Item { id: entry } } })");
    ASSERT_NE(root, nullptr);
    const QList<QQuickItem *> items = itemsBelow(root.get());
    const auto contexts = [&engine] { return engine.findChildren<QQmlContext *>().size(); };
    const qsizetype before = contexts();
    qsizetype entries = 0;
    for (QQuickItem *item : items)
        entries += idForQuickItem(item) == QStringLiteral("entry");
    EXPECT_EQ(entries, 20);
    EXPECT_EQ(contexts(), before);
}

TEST(ItemIds, readNoPropertyThatCannotHoldTheItem)
{
    QQmlEngine engine;
    QQmlContext context(engine.rootContext());
    Witness witness;
    context.setContextObject(&witness);
    QQuickItem item;
    QQmlEngine::setContextForObject(&item, &context);

    EXPECT_TRUE(idForQuickItem(&item).isEmpty());
    EXPECT_EQ(witness.otherReads, 0);
    EXPECT_EQ(witness.itemReads, 1);
    EXPECT_EQ(witness.objectReads, 1);
    EXPECT_EQ(idForQuickItem(&item), nameFromQt(&item));

    witness.held = &item;
    EXPECT_EQ(idForQuickItem(&item), QStringLiteral("anyItem"));
    EXPECT_EQ(idForQuickItem(&item), nameFromQt(&item));
}

TEST(ItemIds, areContextPropertiesBeforePropertiesOfTheContextObject)
{
    QQmlEngine engine;
    QQmlContext context(engine.rootContext());
    Witness witness;
    QQuickItem item;
    witness.held = &item;
    context.setContextObject(&witness);
    QQmlEngine::setContextForObject(&item, &context);
    EXPECT_EQ(idForQuickItem(&item), QStringLiteral("anyItem"));
    EXPECT_EQ(idForQuickItem(&item), nameFromQt(&item));

    context.setContextProperty(QStringLiteral("tool"), &item);
    EXPECT_EQ(idForQuickItem(&item), QStringLiteral("tool"));
    EXPECT_EQ(idForQuickItem(&item), nameFromQt(&item));
}

TEST(ItemIds, areEmptyWhereAGetterDestroysTheContextObject)
{
    QQmlEngine engine;
    QQmlContext context(engine.rootContext());
    for (const bool isHeld : {false, true}) {
        auto *witness = new Witness;
        QQuickItem item;
        witness->held = isHeld ? &item : nullptr;
        witness->onItemRead = [&witness] { delete std::exchange(witness, nullptr); };
        context.setContextObject(witness);
        QQmlEngine::setContextForObject(&item, &context);
        EXPECT_TRUE(idForQuickItem(&item).isEmpty());
        EXPECT_EQ(witness, nullptr);
    }
}

TEST(ItemIds, areEmptyWhereAGetterDestroysTheItem)
{
    QQmlEngine engine;
    QQmlContext context(engine.rootContext());
    for (const bool isHeld : {false, true}) {
        Witness witness;
        auto *item = new QQuickItem;
        witness.held = isHeld ? item : nullptr;
        witness.onItemRead = [&item] { delete std::exchange(item, nullptr); };
        context.setContextObject(&witness);
        QQmlEngine::setContextForObject(item, &context);
        EXPECT_TRUE(idForQuickItem(item).isEmpty());
        EXPECT_EQ(item, nullptr);
        EXPECT_EQ(witness.otherReads, 0) << "nothing is left to be held";
    }
}

TEST(ItemIds, readNoPropertyOnceTheIdIsKnown)
{
    qmlRegisterType<Witness>("VantleTest", 1, 0, "Witness");
    QQmlEngine engine;
    const auto root = loadText(&engine, R"(
        import QtQuick
        import VantleTest
        Witness { Item { id: child; objectName: "c" } })");
    auto *witness = qobject_cast<Witness *>(root.get());
    ASSERT_NE(witness, nullptr);
    EXPECT_EQ(idForQuickItem(itemNamed(root.get(), "c")), QStringLiteral("child"));
    EXPECT_EQ(witness->objectReads + witness->itemReads + witness->otherReads, 0);
}

TEST(ItemIds, areRuledOutWithoutReadingAnything)
{
    QQmlEngine engine;
    QQmlContext context(engine.rootContext());
    Witness witness;
    context.setContextObject(&witness);
    QQuickItem item;
    EXPECT_FALSE(mayHaveId(&item, "anyItem")) << "QML did not make it";
    EXPECT_FALSE(mayHaveId(nullptr, "anyItem"));
    QQmlEngine::setContextForObject(&item, &context);
    EXPECT_FALSE(mayHaveId(&item, "nothing"));
    EXPECT_TRUE(mayHaveId(&item, "anyItem"));
    EXPECT_EQ(witness.objectReads + witness.itemReads + witness.otherReads, 0);
}

TEST(ItemIds, areNotRuledOutWhereTheContextHasProperties)
{
    QQmlEngine engine;
    QQmlContext context(engine.rootContext());
    QQuickItem item;
    context.setContextProperty(QStringLiteral("known"), &item);
    QQmlEngine::setContextForObject(&item, &context);
    EXPECT_TRUE(mayHaveId(&item, "known"));
    EXPECT_EQ(idForQuickItem(&item), QStringLiteral("known"));
}

TEST(ItemIds, surviveTheEndOfTheContextObjectAndOfTheContext)
{
    QQmlEngine engine;
    auto context = std::make_unique<QQmlContext>(engine.rootContext());
    auto item = loadText(&engine, "import QtQuick\nItem { id: alone }", context.get());
    auto *quickItem = qobject_cast<QQuickItem *>(item.get());
    EXPECT_EQ(idForQuickItem(quickItem), QStringLiteral("alone"));
    context.reset();
    EXPECT_EQ(idForQuickItem(quickItem), nameFromQt(quickItem));

    QQuickItem orphan;
    {
        QQmlContext passing(engine.rootContext());
        passing.setContextProperty(QStringLiteral("orphan"), &orphan);
        QQmlEngine::setContextForObject(&orphan, &passing);
        EXPECT_EQ(idForQuickItem(&orphan), QStringLiteral("orphan"));
    }
    EXPECT_TRUE(idForQuickItem(&orphan).isEmpty());
}

} // namespace

#include "tst_itemids.moc"
