#pragma once

#include "hookscene.h"

#include "wrappers/qt/extensions/qtquickcommon/extensionloader_p.h"

#include <QtCore/QDebug>
#include <QtCore/QDir>
#include <QtCore/QFile>

#include <cstddef>
#include <string>
#include <vector>

namespace VantleTest {

using namespace Vantle::QtWrapper;

/// Has a default directory of extensions of its own, empty at first. Each test
/// needs a process of its own, since the directories are read once.
class ExtensionLoaderTest : public testing::Test
{
protected:
    ExtensionLoaderTest()
    {
        qputenv("VANTLE_PREFIX", QFile::encodeName(prefix.path()));
        qunsetenv("VANTLE_QTQUICK_EXTENSION_PATH");
        defaultFolder = prefix.filePath(QStringLiteral("lib/extensions/qt/qtquick"));
        EXPECT_TRUE(QDir().mkpath(defaultFolder));
    }

    void useFurtherFolder(const QString &path) { qputenv("VANTLE_QTQUICK_EXTENSION_PATH", QFile::encodeName(path)); }

    void addExtension(const char *name, const QString &members = {})
    {
        writeFile(defaultFolder + u'/' + QLatin1String(name), extensionText(members));
    }

    void addFile(const char *name, const char *text)
    {
        writeFile(defaultFolder + u'/' + QLatin1String(name), QLatin1String(text));
    }

    QQuickItem *anItem() { return scene.addWindow(QStringLiteral("Item { objectName: \"item\" }"))->contentItem(); }

    /// The priorities of the window's hooks as they are filed, each as often as it has hooks.
    static std::vector<int> filedPriorities(QQuickWindow *window)
    {
        std::vector<int> priorities;
        const HooksByPriority hooks = hooksByWindow.value(window);
        for (auto priority = hooks.cbegin(); priority != hooks.cend(); ++priority)
            priorities.insert(priorities.end(), static_cast<std::size_t>(priority->size()), priority.key());
        return priorities;
    }

    /// The trace of each attempt.
    static std::string hookingUp(QQuickWindow *window)
    {
        QString description;
        QDebug(&description).nospace() << window;
        return "Hooking up QQuickWindow " + description.toStdString();
    }

    std::string url(const char *name) const { return "file://" + defaultFolder.toStdString() + '/' + name; }
    std::string loading(const char *name) const { return "Loading Vantle QtQuick 2 extension " + url(name); }

    QTemporaryDir prefix;
    QString defaultFolder;
    RecordingLogger logger;
    Scene scene;
};

} // namespace VantleTest
