// How extension files are found and loaded. Each of these runs in a process of its own.

#include "extensionloadertest.h"

#include "support/warningguard.h"

#include <QtQml/QQmlComponent>

#include <gmock/gmock.h>

#include <algorithm>

using namespace VantleTest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using ExtensionLoader = ExtensionLoaderTest;

TEST_F(ExtensionLoader, WithoutAnyDirectoryAllAnswersAreTheDefaults)
{
    ASSERT_TRUE(QDir(prefix.path()).removeRecursively());
    QQuickItem *const item = anItem();
    QStringList properties{QStringLiteral("a")};
    QString value = QStringLiteral("v");
    bool ignored = true;
    EXPECT_EQ(VantleQtQuickHook::containerFor(item), nullptr);
    EXPECT_FALSE(VantleQtQuickHook::extraPropertiesFor(item, &properties));
    EXPECT_FALSE(VantleQtQuickHook::propertyFor(item, QStringLiteral("p"), &value));
    EXPECT_FALSE(VantleQtQuickHook::isIgnored(item, &ignored));
    EXPECT_TRUE(VantleQtQuickHook::isItemReady(item));
    EXPECT_EQ(properties, QStringList{QStringLiteral("a")});
    EXPECT_EQ(value, QStringLiteral("v"));
    EXPECT_TRUE(ignored);

    EXPECT_THAT(logger.infos, ElementsAre("Found 0 Vantle QtQuick 2 extensions in " + defaultFolder.toStdString()));
    EXPECT_THAT(logger.warnings, IsEmpty());
    EXPECT_EQ(hooksByWindow.size(), 1);
    ASSERT_TRUE(hooksByWindow.contains(item->window()));
    EXPECT_TRUE(hooksByWindow.value(item->window()).isEmpty());
}

TEST_F(ExtensionLoader, AnUnsetPrefixLeavesADirectoryOfTheRoot)
{
    qunsetenv("VANTLE_PREFIX");
    EXPECT_EQ(libraryDirectory(), QStringLiteral("/lib"));
    VantleQtQuickHook::isItemReady(anItem());
    EXPECT_THAT(logger.infos, ElementsAre(HasSubstr("extensions in /lib/extensions/qt/qtquick")));
}

TEST_F(ExtensionLoader, ReadsVariablesOfAnyLengthAsUtf8)
{
    const std::string longValue = std::string(32767, 'x') + "ü";
    qputenv("VANTLE_PREFIX", longValue.c_str());
    EXPECT_EQ(environmentVariable("VANTLE_PREFIX"), longValue);
    EXPECT_EQ(libraryDirectory(), QString::fromStdString(longValue) + QStringLiteral("/lib"));
    EXPECT_EQ(environmentVariable("VANTLE_TEST_NOT_SET"), "");
    EXPECT_EQ(environmentVariable(""), "");
    qputenv("VANTLE_PREFIX", "");
    EXPECT_EQ(environmentVariable("VANTLE_PREFIX"), "");
}

TEST_F(ExtensionLoader, EveryQuestionLoads)
{
    addExtension("a.qml");
    QStringList properties;
    QString text;
    bool ignored = false;
    const std::vector<std::function<void(QQuickItem *)>> questions{
        [](QQuickItem *item) { VantleQtQuickHook::containerFor(item); },
        [&](QQuickItem *item) { VantleQtQuickHook::extraPropertiesFor(item, &properties); },
        [&](QQuickItem *item) { VantleQtQuickHook::propertyFor(item, text, &text); },
        [&](QQuickItem *item) { VantleQtQuickHook::isIgnored(item, &ignored); },
        [](QQuickItem *item) { VantleQtQuickHook::isItemReady(item); },
    };
    for (const auto &question : questions) {
        QQuickItem *const item = anItem();
        question(item);
        EXPECT_EQ(hooksOf(item->window()).size(), 1);
    }
}

TEST_F(ExtensionLoader, LogsTheCountOfEachDirectoryThenEachFile)
{
    QTemporaryDir further;
    addExtension("a.qml");
    writeFile(further.filePath(QStringLiteral("b.qml")), extensionText({}));
    useFurtherFolder(further.path());
    VantleQtQuickHook::isItemReady(anItem());
    EXPECT_THAT(logger.infos,
                ElementsAre("Found 1 Vantle QtQuick 2 extensions in " + defaultFolder.toStdString(),
                            "Found 1 Vantle QtQuick 2 extensions in " + further.path().toStdString(), loading("a.qml"),
                            "Loading Vantle QtQuick 2 extension file://" + further.path().toStdString() + "/b.qml"));
    EXPECT_THAT(logger.warnings, IsEmpty());
}

TEST_F(ExtensionLoader, AListOfDirectoriesIsOneDirectoryThatDoesNotExist)
{
    QTemporaryDir a;
    QTemporaryDir b;
    for (const QTemporaryDir *folder : {&a, &b})
        writeFile(folder->filePath(QStringLiteral("x.qml")), extensionText({}));
    const QString both = a.path() + QDir::listSeparator() + b.path();
    useFurtherFolder(both);
    QQuickItem *const item = anItem();
    VantleQtQuickHook::isItemReady(item);
    EXPECT_THAT(logger.infos, testing::Contains("Found 0 Vantle QtQuick 2 extensions in " + both.toStdString()));
    EXPECT_TRUE(hooksOf(item->window()).isEmpty());
}

TEST_F(ExtensionLoader, AFileFoundTwiceGivesTwoHooks)
{
    addExtension("a.qml");
    useFurtherFolder(defaultFolder);
    QQuickItem *const item = anItem();
    VantleQtQuickHook::isItemReady(item);
    EXPECT_EQ(hooksOf(item->window()).size(), 2);
    EXPECT_EQ(std::count(logger.infos.begin(), logger.infos.end(), loading("a.qml")), 2);
}

TEST_F(ExtensionLoader, OnlyFilesWithASmallSuffixAreExtensions)
{
    addExtension("a.qml");
    addExtension("B.QML");
    addExtension("c.Qml");
    addExtension("d.qml.bak");
    addExtension("e.js");
    addExtension(".hidden.qml");
    ASSERT_TRUE(QDir(defaultFolder).mkdir(QStringLiteral("folder.qml")));
    QList<QUrl> urls;
    collectExtensionFiles(defaultFolder, urls);
    EXPECT_EQ(urls, QList<QUrl>{QUrl::fromLocalFile(defaultFolder + QStringLiteral("/a.qml"))});
    EXPECT_THAT(logger.infos, ElementsAre("Found 1 Vantle QtQuick 2 extensions in " + defaultFolder.toStdString()));
}

TEST_F(ExtensionLoader, FilesComeInTheOrderOfTheListingBehindWhatIsThere)
{
    for (char name = 'z'; name >= 'a'; --name)
        addExtension((std::string(1, name) + ".qml").c_str());
    QList<QUrl> urls{QUrl(QStringLiteral("file:///before.qml"))};
    collectExtensionFiles(defaultFolder, urls);
    QList<QUrl> expected{QUrl(QStringLiteral("file:///before.qml"))};
    const QStringList names =
        QDir(defaultFolder).entryList({QStringLiteral("*.qml")}, QDir::Files | QDir::CaseSensitive, QDir::NoSort);
    ASSERT_EQ(names.size(), 26);
    for (const QString &name : names)
        expected.append(QUrl::fromLocalFile(defaultFolder + u'/' + name));
    EXPECT_EQ(urls, expected);
}

TEST_F(ExtensionLoader, NamesWithBlanksPercentAndUmlautsLoad)
{
    addExtension("ä b%20#?.qml");
    QQuickItem *const item = anItem();
    VantleQtQuickHook::isItemReady(item);
    EXPECT_EQ(hooksOf(item->window()).size(), 1);
    EXPECT_THAT(logger.warnings, IsEmpty());
}

TEST_F(ExtensionLoader, ADirectoryInTheResourcesGivesResourceUrls)
{
    useFurtherFolder(QStringLiteral(":/extensions"));
    QQuickItem *const item = anItem();
    VantleQtQuickHook::isItemReady(item);
    EXPECT_THAT(logger.infos, testing::Contains("Found 1 Vantle QtQuick 2 extensions in :/extensions"));
    EXPECT_THAT(logger.infos, testing::Contains("Loading Vantle QtQuick 2 extension qrc:/extensions/resource.qml"));
    EXPECT_THAT(filedPriorities(item->window()), ElementsAre(23));
}

TEST_F(ExtensionLoader, FilesByPriorityAndThenByOrder)
{
    addExtension("a.qml", QStringLiteral("priority: 5"));
    addExtension("b.qml", QStringLiteral("priority: -1"));
    addExtension("c.qml", QStringLiteral("priority: 5"));
    addExtension("d.qml");
    QQuickWindow *const window = anItem()->window();
    VantleQtQuickHook::isItemReady(window->contentItem());
    EXPECT_THAT(filedPriorities(window), ElementsAre(-1, 0, 5, 5));

    QList<VantleHook *> loadedWithFive;
    for (VantleHook *hook : hooksOf(window)) {
        EXPECT_EQ(hook->parent(), window);
        if (hook->priority() == 5)
            loadedWithFive.append(hook);
    }
    const QList<QPointer<VantleHook>> filed = hooksByWindow.value(window).value(5);
    ASSERT_EQ(filed.size(), 2);
    EXPECT_EQ(filed.at(0), loadedWithFive.at(0));
    EXPECT_EQ(filed.at(1), loadedWithFive.at(1));
}

TEST_F(ExtensionLoader, ThePriorityRightAfterCreationCounts)
{
    addExtension("bound.qml", QStringLiteral("property int base: 20\npriority: base * 2 + 1"));
    addExtension("completed.qml", QStringLiteral("Component.onCompleted: priority = 7"));
    QQuickWindow *const window = anItem()->window();
    VantleQtQuickHook::isItemReady(window->contentItem());
    EXPECT_THAT(filedPriorities(window), ElementsAre(7, 41));
    for (VantleHook *hook : hooksOf(window)) {
        hook->setProperty("base", 1);
        hook->setPriority(-hook->priority());
    }
    VantleQtQuickHook::isItemReady(window->contentItem());
    EXPECT_THAT(filedPriorities(window), ElementsAre(7, 41));
}

TEST_F(ExtensionLoader, BrokenFilesAreReportedAndTheOthersLoad)
{
    addExtension("a.qml", QStringLiteral("priority: 1"));
    addFile("empty.qml", "");
    addFile("syntax.qml", "import QtQml\nQtObject {\n");
    addFile("unknown.qml", "import com.corvaline.vantle.qtquick 0.1\nVantleHook { colour: 1 }");
    addFile("version.qml", "import com.corvaline.vantle.qtquick 1.0\nVantleHook {}");
    addFile("module.qml", "import no.such.module\nVantleHook {}");
    addFile("item.qml", "import QtQuick\nItem {}");
    addFile("object.qml", "import QtQml\nQtObject {}");
    addFile("required.qml", "import com.corvaline.vantle.qtquick 0.1\nVantleHook { required property int x }");
    addFile("binary.qml", "\x01\x02\xff\xfe");
    addFile("singleton.qml", "pragma Singleton\nimport com.corvaline.vantle.qtquick 0.1\nVantleHook {}");
    addExtension("z.qml", QStringLiteral("priority: 2"));

    QQuickWindow *const window = anItem()->window();
    VantleQtQuickHook::isItemReady(window->contentItem());
    EXPECT_THAT(filedPriorities(window), ElementsAre(1, 2));
    EXPECT_EQ(hooksOf(window).size(), 2);

    const auto warned = [&](const std::string &text) {
        return std::count_if(logger.warnings.begin(), logger.warnings.end(),
                             [&](const std::string &warning) { return warning.find(text) != std::string::npos; });
    };
    for (const char *name :
         {"empty.qml", "syntax.qml", "unknown.qml", "version.qml", "module.qml", "binary.qml", "singleton.qml"})
        EXPECT_GE(warned(url(name) + ":"), 1) << name;
    for (const char *name : {"item.qml", "object.qml", "required.qml"}) {
        EXPECT_EQ(warned("Vantle QtQuick 2 extension " + url(name) + " failed to provide an extension object"), 1)
            << name;
    }
    EXPECT_THAT(logger.warnings,
                testing::Contains(HasSubstr("unknown.qml:2:14: Cannot assign to non-existent property")));
}

TEST_F(ExtensionLoader, ABrokenFileIsTriedAnewForTheNextWindowOnly)
{
    addFile("a.qml", "import QtQml\nQtObject {\n");
    QQuickItem *const first = anItem();
    VantleQtQuickHook::isItemReady(first);
    const std::vector<std::string> warnings = logger.warnings;
    EXPECT_THAT(warnings, ElementsAre(HasSubstr("a.qml:")));
    VantleQtQuickHook::isItemReady(first);
    EXPECT_EQ(logger.warnings, warnings);
    logger.warnings.clear();
    VantleQtQuickHook::isItemReady(anItem());
    EXPECT_EQ(logger.warnings, warnings);
}

TEST_F(ExtensionLoader, EveryErrorOfAFileIsReportedInOrder)
{
    addFile("a.qml", "import no.such.module\nimport no.other.module\nQtObject {}\n");
    VantleQtQuickHook::isItemReady(anItem());
    const QQmlComponent component(scene.engine.get(), QUrl(QString::fromStdString(url("a.qml"))));
    std::vector<std::string> expected;
    for (const QQmlError &error : component.errors())
        expected.push_back(error.toString().toStdString());
    ASSERT_GE(expected.size(), 2U);
    EXPECT_EQ(logger.warnings, expected);
}

TEST_F(ExtensionLoader, AFileThatCannotBeReadIsReported)
{
    ASSERT_TRUE(QFile::link(QStringLiteral("/nowhere/x.qml"), defaultFolder + QStringLiteral("/dangling.qml")));
    addExtension("a.qml");
    QQuickWindow *const window = anItem()->window();
    VantleQtQuickHook::isItemReady(window->contentItem());
    EXPECT_EQ(hooksOf(window).size(), 1);
}

TEST_F(ExtensionLoader, AnObjectThatIsNoHookStaysAliveAndUnparented)
{
    addFile("item.qml", "import QtQuick\nItem { Component.onCompleted: program.keep(this) }");
    QQuickWindow *const window = anItem()->window();
    VantleQtQuickHook::isItemReady(window->contentItem());
    scene.windows.clear();
    ASSERT_FALSE(scene.program.kept.isNull());
    EXPECT_EQ(scene.program.kept->parent(), nullptr);
    delete scene.program.kept;
}

TEST_F(ExtensionLoader, AnExtensionThatWouldLoadLaterIsSkipped)
{
    addFile("remote.qml",
            "import com.corvaline.vantle.qtquick 0.1\nimport 'http://localhost:1/library.js' as Library\n"
            "VantleHook {}");
    addExtension("a.qml");
    QQuickWindow *const window = anItem()->window();
    VantleQtQuickHook::isItemReady(window->contentItem());
    EXPECT_THAT(logger.warnings,
                ElementsAre("Vantle QtQuick 2 extension " + url("remote.qml")
                            + " tried to load asynchronously, skipping"));
    EXPECT_EQ(hooksOf(window).size(), 1);
}

TEST_F(ExtensionLoader, ANullComponentIsReported)
{
    QQmlComponent component(scene.engine.get());
    ASSERT_EQ(component.status(), QQmlComponent::Null);
    EXPECT_EQ(createHook(component, "file:///x.qml"), nullptr);
    EXPECT_THAT(logger.warnings,
                ElementsAre("Vantle QtQuick 2 extension file:///x.qml resulted in null component, skipping"));
}

TEST_F(ExtensionLoader, ExtensionsCannotDestroyTheirHook)
{
    expectWarning(QStringLiteral("Invalid attempt to destroy() an indestructible object"));
    addExtension("a.qml", QStringLiteral("Component.onCompleted: hook.destroy()"));
    QQuickItem *const item = anItem();
    VantleQtQuickHook::isItemReady(item);
    EXPECT_EQ(hooksOf(item->window()).size(), 1);
}

TEST_F(ExtensionLoader, AnExceptionOnCompletionLeavesAHook)
{
    expectWarning(QStringLiteral("Error: broken"));
    addExtension("a.qml", QStringLiteral("Component.onCompleted: { throw new Error('broken') }"));
    QQuickItem *const item = anItem();
    VantleQtQuickHook::isItemReady(item);
    EXPECT_EQ(hooksOf(item->window()).size(), 1);
}

TEST_F(ExtensionLoader, EndlessRecursionOnCompletionLeavesAHook)
{
    expectWarning(QStringLiteral("Maximum call stack size exceeded"));
    addExtension("a.qml", QStringLiteral("function f() { f(); f() }\nComponent.onCompleted: f()"));
    QQuickItem *const item = anItem();
    VantleQtQuickHook::isItemReady(item);
    EXPECT_EQ(hooksOf(item->window()).size(), 1);
}

TEST_F(ExtensionLoader, AnExtensionThatContainsItselfIsReported)
{
    addExtension("Again.qml", QStringLiteral("property QtObject again: Again {}"));
    QQuickItem *const item = anItem();
    VantleQtQuickHook::isItemReady(item);
    EXPECT_TRUE(hooksOf(item->window()).isEmpty());
    EXPECT_THAT(logger.warnings, ElementsAre(HasSubstr("Again.qml")));
}

TEST_F(ExtensionLoader, ExtensionsCanUseFilesBesideThem)
{
    addFile("library.js", "function verdict(item) { return item.objectName !== 'item' }");
    addFile("rules.mjs", "export function nothing() { return undefined }");
    writeFile(defaultFolder + QStringLiteral("/a.qml"),
              QStringLiteral("import QtQml\nimport com.corvaline.vantle.qtquick 0.1\nimport 'library.js' as Library\n"
                             "VantleHook { function isItemReady(item) { return Library.verdict(item) } }"));
    QQuickItem *const item = anItem();
    EXPECT_TRUE(VantleQtQuickHook::isItemReady(item));
    EXPECT_FALSE(VantleQtQuickHook::isItemReady(itemNamed(item->window(), "item")));
}
