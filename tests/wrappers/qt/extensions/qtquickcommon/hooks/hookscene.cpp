#include "hookscene.h"

#include "tracelib/configuration.h"
#include "tracelib/tracepoint.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"
#include "wrappers/qt/extensions/qtquickcommon/extensionloader_p.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>

using namespace Vantle;

namespace VantleTest {

namespace {

/// The extension directories of this process.
struct ExtensionFolders
{
    ExtensionFolders()
    {
        qputenv("VANTLE_PREFIX", QFile::encodeName(prefix.path()));
        qputenv("VANTLE_QTQUICK_EXTENSION_PATH", QFile::encodeName(folder.path()));
        for (const char *name : {"first", "second", "third", "fourth"})
            writeFile(folder.filePath(QLatin1String(name) + QStringLiteral(".qml")), QString());
        files = QDir(folder.path()).entryList({QStringLiteral("*.qml")}, QDir::Files, QDir::NoSort);
    }

    QTemporaryDir prefix;
    QTemporaryDir folder;
    QStringList files;
};

const ExtensionFolders &extensionFolders()
{
    static const ExtensionFolders folders;
    return folders;
}

} // namespace

RecordingLogger::RecordingLogger()
{
    QtQuickCommon::setLogger(this);
}

RecordingLogger::~RecordingLogger()
{
    QtQuickCommon::setLogger(nullptr);
}

RecordedTraces::RecordedTraces()
{
    corvaline::tracelib::setSink([this](const corvaline::tracelib::TracePoint &point, const char *text,
                                        corvaline::tracelib::VariableSnapshot *) {
        m_texts.push_back(text);
        functions.push_back(point.function);
    });
    corvaline::tracelib::setGroups("qtquick");
}

RecordedTraces::~RecordedTraces()
{
    corvaline::tracelib::setGroups("");
    corvaline::tracelib::setSink({});
}

void writeFile(const QString &path, const QString &text)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
    ASSERT_GE(file.write(text.toUtf8()), 0);
}

QString extensionText(const QString &members)
{
    return QStringLiteral("import QtQuick\nimport com.corvaline.vantle.qtquick 0.1\nVantleHook {\nid: hook\n%1\n}\n")
        .arg(members);
}

Scene::Scene() : engine(std::make_unique<QQmlEngine>())
{
    engine->rootContext()->setContextProperty(QStringLiteral("program"), &program);
}

Scene::~Scene()
{
    windows.clear();
}

QQuickWindow *Scene::addWindow(const QString &qml)
{
    QQmlComponent component(engine.get());
    component.setData(QStringLiteral("import QtQuick\nWindow {\n%1\n}").arg(qml).toUtf8(),
                      QUrl(QStringLiteral("file:///app/Scene.qml")));
    QObject *const object = component.create();
    EXPECT_NE(object, nullptr) << qPrintable(component.errorString());
    windows.emplace_back(qobject_cast<QQuickWindow *>(object));
    return windows.back().get();
}

QQuickItem *itemNamed(const QQuickWindow *window, const char *name)
{
    auto *const item = window->findChild<QQuickItem *>(QLatin1String(name));
    EXPECT_NE(item, nullptr) << name;
    return item;
}

QList<VantleHook *> hooksOf(const QQuickWindow *window)
{
    return window->findChildren<VantleHook *>(Qt::FindDirectChildrenOnly);
}

HookTest::HookTest()
{
    extend({});
}

HookTest::~HookTest() = default;

void HookTest::extend(const QStringList &members)
{
    for (int i = 0; i < FileCount; ++i)
        writeFile(extensionPath(i), extensionText(members.value(i)));
}

QString HookTest::extensionPath(int index) const
{
    return extensionFolders().folder.filePath(extensionFolders().files.at(index));
}

QQuickWindow *HookTest::window()
{
    if (!m_window) {
        m_window = scene.addWindow(QStringLiteral(R"(
            component Panel: Item {}
            component PushButton: Rectangle { property string caption: "OK" }
            Panel {
                id: panelId
                objectName: "panel"
                Rectangle {
                    objectName: "frame"
                    PushButton { id: buttonId; objectName: "button" }
                }
            })"));
    }
    return m_window;
}

std::string HookTest::hookClass(int index)
{
    QtWrapper::hooksForItem(window()->contentItem());
    return hooksOf(window()).at(index)->metaObject()->className();
}

} // namespace VantleTest
