// Which windows get hooks, and when. Each of these runs in a process of its own.

#include "extensionloadertest.h"

#include "support/waiting.h"

#include <QtQml/QQmlComponent>
#include <QtQuick/QQuickView>

#include <gmock/gmock.h>

#include <algorithm>
#include <utility>

using namespace VantleTest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using HookedWindows = ExtensionLoaderTest;

TEST_F(HookedWindows, NothingIsLoadedBeforeTheFirstQuestion)
{
    addExtension("a.qml");
    QQuickWindow *const window = anItem()->window();
    window->show();
    ASSERT_TRUE(waitUntil([&] { return window->isExposed(); }));
    EXPECT_THAT(logger.infos, IsEmpty());
    EXPECT_TRUE(hooksByWindow.isEmpty());
    bool ignored = false;
    VantleQtQuickHook::isIgnored(window->contentItem(), &ignored);
    EXPECT_EQ(hooksOf(window).size(), 1);
}

TEST_F(HookedWindows, ASecondWindowGetsHooksOfItsOwnFromTheSameFiles)
{
    addExtension("a.qml");
    QQuickItem *const first = anItem();
    VantleQtQuickHook::isItemReady(first);
    logger.infos.clear();
    addExtension("later.qml");
    useFurtherFolder(defaultFolder);
    qputenv("VANTLE_PREFIX", "/nowhere");

    QQuickItem *const second = anItem();
    VantleQtQuickHook::isItemReady(second);
    VantleQtQuickHook::isItemReady(second);
    VantleQtQuickHook::isItemReady(first);
    EXPECT_THAT(logger.infos, ElementsAre(loading("a.qml")));
    ASSERT_EQ(hooksOf(first->window()).size(), 1);
    ASSERT_EQ(hooksOf(second->window()).size(), 1);
    EXPECT_NE(hooksOf(first->window()).first(), hooksOf(second->window()).first());
}

TEST_F(HookedWindows, WindowsOfDifferentEnginesHaveHooksInTheirEngine)
{
    addExtension("a.qml");
    Scene other;
    QQuickWindow *const otherWindow = other.addWindow(QString());
    QQuickWindow *const window = anItem()->window();
    VantleQtQuickHook::isItemReady(window->contentItem());
    VantleQtQuickHook::isItemReady(otherWindow->contentItem());
    EXPECT_EQ(qmlEngine(hooksOf(window).value(0)), scene.engine.get());
    EXPECT_EQ(qmlEngine(hooksOf(otherWindow).value(0)), other.engine.get());
}

TEST_F(HookedWindows, AWindowWithoutEngineIsReportedOnceInTheProcess)
{
    addExtension("a.qml");
    RecordedTraces traces;
    QQuickWindow first;
    QQuickWindow second;
    for (QQuickWindow *window : {&first, &second, &first}) {
        QStringList properties{QStringLiteral("a")};
        QString value = QStringLiteral("v");
        bool ignored = true;
        bool notIgnored = false;
        QQuickItem *const item = window->contentItem();
        EXPECT_EQ(VantleQtQuickHook::containerFor(item), nullptr);
        EXPECT_FALSE(VantleQtQuickHook::extraPropertiesFor(item, &properties));
        EXPECT_FALSE(VantleQtQuickHook::propertyFor(item, QStringLiteral("p"), &value));
        EXPECT_FALSE(VantleQtQuickHook::isIgnored(item, &ignored));
        EXPECT_FALSE(VantleQtQuickHook::isIgnored(item, &notIgnored));
        EXPECT_TRUE(VantleQtQuickHook::isItemReady(item));
        EXPECT_EQ(properties, QStringList{QStringLiteral("a")});
        EXPECT_EQ(value, QStringLiteral("v"));
        EXPECT_TRUE(ignored);
        EXPECT_FALSE(notIgnored);
        // Each of these six tries again.
        EXPECT_EQ(traces.take(), std::vector<std::string>(6, hookingUp(window)));
        EXPECT_EQ(hooksForItem(item), hooksByWindow.cend());
        EXPECT_THAT(traces.take(), ElementsAre(hookingUp(window)));
    }
    EXPECT_THAT(logger.warnings,
                ElementsAre("Cannot load Vantle QtQuick 2 extensions into window, failed to lookup QML engine"));
    EXPECT_THAT(logger.infos, IsEmpty());
    EXPECT_TRUE(hooksByWindow.isEmpty());
}

TEST_F(HookedWindows, AWindowThatGetsAnEngineLaterIsHookedUpThen)
{
    addExtension("a.qml");
    QQuickWindow window;
    VantleQtQuickHook::isItemReady(window.contentItem());
    EXPECT_TRUE(hooksOf(&window).isEmpty());
    QQmlComponent component(scene.engine.get());
    component.setData("import QtQuick\nItem {}", QUrl());
    qobject_cast<QQuickItem *>(component.create())->setParentItem(window.contentItem());
    VantleQtQuickHook::isItemReady(window.contentItem());
    EXPECT_EQ(hooksOf(&window).size(), 1);
    qDeleteAll(window.contentItem()->childItems());
}

TEST_F(HookedWindows, ViewsAreHookedUpToo)
{
    addExtension("a.qml");
    QQuickView view(scene.engine.get(), nullptr);
    VantleQtQuickHook::isItemReady(view.contentItem());
    EXPECT_EQ(hooksOf(&view).size(), 1);
}

TEST_F(HookedWindows, AnItemWithoutWindowLoadsNothing)
{
    addExtension("a.qml");
    QQuickItem item;
    EXPECT_EQ(hooksForItem(nullptr), hooksByWindow.cend());
    EXPECT_EQ(hooksForItem(&item), hooksByWindow.cend());
    EXPECT_THAT(logger.infos, IsEmpty());
    EXPECT_THAT(logger.warnings, IsEmpty());
}

TEST_F(HookedWindows, TracesEachHookUp)
{
    RecordedTraces traces;
    QQuickWindow *const window = anItem()->window();
    VantleQtQuickHook::isItemReady(window->contentItem());
    VantleQtQuickHook::isItemReady(window->contentItem());
    EXPECT_THAT(traces.take(), ElementsAre(hookingUp(window)));
    EXPECT_THAT(traces.functions, ElementsAre(HasSubstr("hookupQuickWindow")));
}

TEST_F(HookedWindows, HooksDieWithTheirWindowAndTheEntryWithTheNextHookUp)
{
    addExtension("a.qml");
    QQuickWindow *const window = anItem()->window();
    VantleQtQuickHook::isItemReady(window->contentItem());
    const QPointer<VantleHook> hook = hooksOf(window).value(0);
    ASSERT_FALSE(hook.isNull());
    scene.windows.clear();
    EXPECT_TRUE(hook.isNull());
    EXPECT_EQ(hooksByWindow.size(), 1);

    QQuickItem *const other = anItem();
    VantleQtQuickHook::isItemReady(other);
    EXPECT_EQ(hooksByWindow.size(), 1);
    EXPECT_TRUE(hooksByWindow.contains(other->window()));
}

TEST_F(HookedWindows, TheNextHookUpRemovesTheEntriesOfAllWindowsThatDied)
{
    addExtension("a.qml");
    constexpr int count = 9;
    for (int i = 0; i < count; ++i)
        VantleQtQuickHook::isItemReady(anItem());
    QQuickWindow *const survivor = scene.windows.at(count / 2).get();
    std::erase_if(scene.windows, [survivor](const auto &window) { return window.get() != survivor; });
    EXPECT_EQ(hooksByWindow.size(), count);

    QQuickWindow *const next = anItem()->window();
    VantleQtQuickHook::isItemReady(next->contentItem());
    EXPECT_EQ(hooksByWindow.size(), 2);
    for (QQuickWindow *window : {survivor, next}) {
        EXPECT_TRUE(hooksByWindow.contains(window));
        EXPECT_THAT(filedPriorities(window), ElementsAre(0));
        EXPECT_EQ(hooksOf(window).size(), 1);
    }
}

TEST_F(HookedWindows, AWindowHiddenByADeadOneIsTracedAgainAndKeepsItsHooks)
{
    addExtension("a.qml");
    for (int i = 0; i < 3; ++i)
        anItem();
    // Three in ascending order put the middle one at the root of the tree.
    // Dead, it sorts ahead of all, so that the search for the lowest goes astray.
    std::sort(scene.windows.begin(), scene.windows.end());
    for (const auto &window : scene.windows)
        VantleQtQuickHook::isItemReady(window->contentItem());
    QQuickWindow *const lowest = scene.windows.front().get();
    const QList<VantleHook *> hooks = hooksOf(lowest);
    scene.windows.erase(scene.windows.begin() + 1);
    ASSERT_FALSE(std::as_const(hooksByWindow).contains(lowest));

    logger.infos.clear();
    RecordedTraces traces;
    VantleQtQuickHook::isItemReady(lowest->contentItem());
    EXPECT_THAT(traces.take(), ElementsAre(hookingUp(lowest)));
    EXPECT_EQ(hooksOf(lowest), hooks);
    EXPECT_THAT(filedPriorities(lowest), ElementsAre(0));
    EXPECT_EQ(hooksByWindow.size(), 2);
    EXPECT_THAT(logger.infos, IsEmpty());

    VantleQtQuickHook::isItemReady(lowest->contentItem());
    EXPECT_THAT(traces.take(), IsEmpty());
}

TEST_F(HookedWindows, AnErrorThatIsPendingInTheProgramDoesNotSpoilTheLoading)
{
    addExtension("a.qml", QStringLiteral("priority: 2 + 3; Component.onCompleted: program.note('completed')"));
    QQuickWindow *const window = anItem()->window();
    scene.engine->throwError(QStringLiteral("of the program"));
    VantleQtQuickHook::isItemReady(window->contentItem());
    EXPECT_THAT(filedPriorities(window), ElementsAre(5));
    EXPECT_EQ(scene.program.notes, QStringList{QStringLiteral("completed")});
    ASSERT_TRUE(scene.engine->hasError());
    EXPECT_EQ(scene.engine->catchError().toString(), QStringLiteral("Error: of the program"));
}

TEST_F(HookedWindows, LivingWindowsKeepTheirHooksWhicheverOthersDie)
{
    addExtension("a.qml");
    constexpr std::size_t count = 15;
    for (unsigned round = 0; round < 40; ++round) {
        while (scene.windows.size() < count)
            VantleQtQuickHook::isItemReady(anItem());
        std::vector<std::pair<QQuickWindow *, VantleHook *>> known;
        for (const auto &window : scene.windows)
            known.emplace_back(window.get(), hooksOf(window.get()).value(0));
        // Another place in the order of addresses each time, and later several at once.
        for (unsigned i = 0; i <= round % 5; ++i) {
            const auto victim = (round * 7 + i * 3) % scene.windows.size();
            std::erase_if(known, [&](const auto &entry) { return entry.first == scene.windows[victim].get(); });
            scene.windows.erase(scene.windows.begin() + static_cast<std::ptrdiff_t>(victim));
        }
        for (const auto &[window, hook] : known) {
            VantleQtQuickHook::isItemReady(window->contentItem());
            ASSERT_EQ(hooksOf(window), QList<VantleHook *>{hook}) << "round " << round;
            ASSERT_THAT(filedPriorities(window), ElementsAre(0));
        }
    }
}

TEST_F(HookedWindows, AWindowAtTheAddressOfADeadOneIsHookedUpAnew)
{
    addExtension("a.qml");
    alignas(QQuickWindow) std::byte storage[sizeof(QQuickWindow)];
    for (int i = 0; i < 3; ++i) {
        auto *const window = new (storage) QQuickWindow;
        QQmlEngine::setContextForObject(window, scene.engine->rootContext());
        VantleQtQuickHook::isItemReady(window->contentItem());
        EXPECT_EQ(hooksOf(window).size(), 1) << i;
        EXPECT_EQ(hooksByWindow.size(), 1) << i;
        window->~QQuickWindow();
    }
}

TEST_F(HookedWindows, AskingAboutAnotherWindowWhileLoadingHooksUpBoth)
{
    addExtension("a.qml", QStringLiteral("Component.onCompleted: program.act()"));
    addExtension("b.qml");
    QQuickWindow *const first = anItem()->window();
    QQuickWindow *const second = anItem()->window();
    bool isAsked = false;
    scene.program.action = [&] {
        if (!std::exchange(isAsked, true))
            VantleQtQuickHook::isItemReady(second->contentItem());
    };
    VantleQtQuickHook::isItemReady(first->contentItem());
    EXPECT_EQ(hooksOf(first).size(), 2);
    EXPECT_EQ(hooksOf(second).size(), 2);
    EXPECT_THAT(filedPriorities(first), ElementsAre(0, 0));
    EXPECT_THAT(filedPriorities(second), ElementsAre(0, 0));
}

TEST_F(HookedWindows, AskingAboutTheSameWindowWhileLoadingLoadsNothingTwice)
{
    addExtension("a.qml", QStringLiteral("Component.onCompleted: program.act()"));
    addExtension("b.qml", QStringLiteral("Component.onCompleted: program.act()"));
    QQuickWindow *const window = anItem()->window();
    scene.program.action = [&] { VantleQtQuickHook::isItemReady(window->contentItem()); };
    VantleQtQuickHook::isItemReady(window->contentItem());
    EXPECT_EQ(hooksOf(window).size(), 2);
    EXPECT_THAT(filedPriorities(window), ElementsAre(0, 0));
}

TEST_F(HookedWindows, AWindowThatDiesWhileLoadingTakesNoHooks)
{
    addExtension("a.qml",
                 QStringLiteral("Component.onCompleted: program.act()\n"
                                "Component.onDestruction: program.note('gone')"));
    addExtension("b.qml",
                 QStringLiteral("Component.onCompleted: program.act()\n"
                                "Component.onDestruction: program.note('gone')"));
    QQuickItem *const item = anItem();
    scene.program.action = [&] { scene.windows.clear(); };
    EXPECT_TRUE(VantleQtQuickHook::isItemReady(item));
    EXPECT_EQ(scene.program.notes, QStringList{QStringLiteral("gone")});

    scene.program.action = [] {};
    QQuickItem *const other = anItem();
    VantleQtQuickHook::isItemReady(other);
    EXPECT_EQ(hooksByWindow.size(), 1);
    EXPECT_EQ(hooksOf(other->window()).size(), 2);
}
