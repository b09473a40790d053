#include "agent/extensionpath.h"

#include "support/waiting.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickhook.h"

#include "hook/logger.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <memory>

using namespace Vantle;
using namespace Vantle::Agent;

namespace {

void write(const QString &path, const QByteArray &text)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
}

QStringList listed(const QString &directory)
{
    const QDir dir(directory);
    QStringList paths;
    const QStringList files = dir.entryList({QStringLiteral("*.qml")}, QDir::Files | QDir::CaseSensitive, QDir::NoSort);
    for (const QString &file : files)
        paths.append(dir.absoluteFilePath(file));
    return paths;
}

class Quiet : public Logger
{
public:
    void info(const std::string &) override {}
    void warning(const std::string &message) override { ADD_FAILURE() << message; }
    void level3(const std::string &) override {}
    void level4(const std::string &) override {}
};

class Gathering : public testing::Test
{
protected:
    QString in(const char *path) const { return m_directory.filePath(QString::fromUtf8(path)); }

    /// What the files in \p directory make, in the order of the listing.
    QStringList made(const QString &directory)
    {
        QStringList names;
        const QStringList paths = listed(directory);
        for (const QString &path : paths) {
            QQmlComponent component(&m_engine, QUrl::fromLocalFile(path));
            const std::unique_ptr<QObject> object(component.create());
            EXPECT_TRUE(object) << qPrintable(component.errorString());
            names.append(object ? object->objectName() : QString());
        }
        return names;
    }

private:
    QTemporaryDir m_directory;
    QQmlEngine m_engine;
};

} // namespace

TEST_F(Gathering, KeepsTheOrderOfDirectoriesAndOfTheirListings)
{
    QStringList expected;
    const QStringList directories{in("one"), in("two"), in("three")};
    for (const QString &directory : directories) {
        for (int i = 0; i < 7; ++i) {
            const QByteArray name = directory.toUtf8() + "/e" + QByteArray::number(i) + ".qml";
            write(QString::fromUtf8(name), "import QtQml\nQtObject { objectName: \"" + name + "\" }");
        }
        expected += listed(directory);
    }
    ASSERT_TRUE(QDir().mkdir(in("all")));
    ASSERT_TRUE(gatherExtensions(directories, QDir(in("all"))));
    EXPECT_EQ(made(in("all")), expected);
}

TEST_F(Gathering, LeavesExtensionsWhereTheirImportsAre)
{
    const char *const folders[] = {"with space",
                                   "h\xC3\xA4"
                                   "lf#t%20y"};
    QStringList directories;
    for (const char *folder : folders) {
        directories.append(in(folder));
        write(directories.constLast() + QStringLiteral("/lib.js"),
              QByteArray("function name() { return \"") + folder + "\" }");
        write(directories.constLast() + QStringLiteral("/small Name.qml"),
              "import QtQml\nimport \"lib.js\" as Lib\nQtObject { objectName: Lib.name() }");
    }
    ASSERT_TRUE(QDir().mkdir(in("all")));
    ASSERT_TRUE(gatherExtensions(directories, QDir(in("all"))));
    EXPECT_EQ(made(in("all")), (QStringList{QString::fromUtf8(folders[0]), QString::fromUtf8(folders[1])}));
}

TEST_F(Gathering, TakesNoFileTwiceButAnExtensionThatIsNamedTwice)
{
    write(in("one/a.qml"), "import QtQml\nQtObject { objectName: \"a\" }");
    write(in("one/README.md"), "");
    write(in("one/b.QML"), "");
    ASSERT_TRUE(QDir().mkdir(in("all")));
    ASSERT_TRUE(gatherExtensions({in("one"), in("nowhere"), in("one")}, QDir(in("all"))));
    EXPECT_EQ(made(in("all")), (QStringList{QStringLiteral("a"), QStringLiteral("a")}));
}

TEST_F(Gathering, SaysWhenItCannotWrite)
{
    write(in("one/a.qml"), "import QtQml\nQtObject {}");
    EXPECT_FALSE(gatherExtensions({in("one")}, QDir(in("nowhere"))));
}

TEST_F(Gathering, TheLibraryFindsAllExtensionsAndTheEnvironmentIsTheUsersAgain)
{
    static Quiet quiet;
    QtQuickCommon::setLogger(&quiet);
    const QByteArray hook = "import com.corvaline.vantle.qtquick 0.1\nVantleHook {\n"
                            "  function propertyFor(item, name) { return name === \"%1\" ? \"%1\" : unhandled } }";
    for (const char *name : {"users", "first", "second"})
        write(in(name) + QStringLiteral("/hook.qml"), QByteArray(hook).replace("%1", name));
    qputenv("VANTLE_PREFIX", in("prefix").toUtf8());
    qputenv("VANTLE_QTQUICK_EXTENSION_PATH", in("users").toUtf8());
    const QString scratch = in("scratch");
    ASSERT_TRUE(QDir().mkdir(scratch));

    auto path = std::make_unique<ExtensionPath>(QStringList{in("first"), in("second")}, scratch);
    EXPECT_NE(qgetenv("VANTLE_QTQUICK_EXTENSION_PATH"), in("users").toUtf8());
    EXPECT_TRUE(qEnvironmentVariableIsSet("VANTLE_PREFIX"));

    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nWindow { visible: true; Item {} }", {});
    const std::unique_ptr<QObject> object(component.create());
    auto *const window = qobject_cast<QQuickWindow *>(object.get());
    ASSERT_TRUE(window);
    ASSERT_TRUE(VantleTest::waitUntil([&] { return !qEnvironmentVariableIsSet("VANTLE_PREFIX"); }));
    EXPECT_EQ(qgetenv("VANTLE_QTQUICK_EXTENSION_PATH"), in("users").toUtf8());

    QQuickItem *const item = window->contentItem()->childItems().constFirst();
    for (const char *name : {"users", "first", "second"}) {
        QString value;
        EXPECT_TRUE(VantleQtQuickHook::propertyFor(item, QString::fromLatin1(name), &value)) << name;
        EXPECT_EQ(value, QString::fromLatin1(name));
    }
    EXPECT_FALSE(QDir(scratch).isEmpty());
    path.reset();
    EXPECT_TRUE(QDir(scratch).isEmpty());
}
