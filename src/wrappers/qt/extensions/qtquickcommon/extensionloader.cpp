#include "wrappers/qt/extensions/qtquickcommon/extensionloader_p.h"

#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/tracing.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/itemids.h"
#include "wrappers/qt/extensions/qtquickcommon/scriptvalues_p.h"

#include <QtCore/QDir>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>

namespace Vantle::QtWrapper {

using QtQuickCommon::logInfo;
using QtQuickCommon::logWarning;

HooksByWindow hooksByWindow;

namespace {

bool extensionsDiscovered = false;
bool engineLookupFailureReported = false;

// The guards are the keys: one that is cleared has changed its place in the
// order, and while it is in the tree, others are not sure to be found. That is
// why all of them go, and not only the one that a search for null comes to.
void removeDeadWindows()
{
    for (auto entry = hooksByWindow.begin(); entry != hooksByWindow.end();)
        entry = entry.key() ? std::next(entry) : hooksByWindow.erase(entry);
}

void registerHookType()
{
    qRegisterMetaType<QQuickItem *>();
    qmlRegisterType<VantleHook>("com.corvaline.vantle.qtquick", 0, 1, "VantleHook");
}

QList<QUrl> listExtensions()
{
    QList<QUrl> urls;
    const QString libraries = libraryDirectory();
    if (!libraries.isEmpty())
        collectExtensionFiles(libraries + QStringLiteral("/extensions/qt/qtquick"), urls);
    const QString further = QString::fromStdString(environmentVariable("VANTLE_QTQUICK_EXTENSION_PATH"));
    if (!further.isEmpty())
        collectExtensionFiles(further, urls);
    return urls;
}

VantleHook *loadExtension(QQmlEngine *engine, const QUrl &url)
{
    const QByteArray text = url.toString().toUtf8();
    logInfo("Loading Vantle QtQuick 2 extension %s", text.constData());
    QQmlComponent component(engine, url, QQmlComponent::PreferSynchronous);
    return createHook(component, text);
}

// Extensions run script while they are being made, which may bring the window
// or its engine to an end, or lead to questions about this or another window.
void loadExtensions(const QPointer<QQuickWindow> &window, const QPointer<QQmlEngine> &engine, const QList<QUrl> &urls)
{
    // An error that is pending in the program would cut short what they run.
    const VantleQtQuickHook::StrayScriptErrors strayErrors(engine.data());
    for (const QUrl &url : urls) {
        if (!window || !engine)
            return;
        VantleHook *const hook = loadExtension(engine, url);
        if (!hook)
            continue;
        if (!window) {
            delete hook;
            return;
        }
        hook->setParent(window);
        removeDeadWindows();
        hooksByWindow[window][hook->priority()].append(hook);
    }
}

} // namespace

HooksByWindow::const_iterator hooksForItem(QQuickItem *item)
{
    QQuickWindow *const window = item ? item->window() : nullptr;
    if (!window)
        return hooksByWindow.cend();
    const auto hooks = hooksByWindow.constFind(window);
    return hooks != hooksByWindow.cend() ? hooks : hookupQuickWindow(window);
}

HooksByWindow::const_iterator hookupQuickWindow(QQuickWindow *window)
{
    VANTLE_TRACE("Hooking up QQuickWindow " << window);
    removeDeadWindows();
    // A window that was hooked up comes here too if a cleared guard hid it.
    if (const auto hooks = hooksByWindow.constFind(window); hooks != hooksByWindow.cend())
        return hooks;

    QQmlEngine *const engine = qmlEngineForQuickWindow(window);
    if (!engine) {
        if (!engineLookupFailureReported)
            logWarning("Cannot load Vantle QtQuick 2 extensions into window, failed to lookup QML engine");
        engineLookupFailureReported = true;
        return hooksByWindow.cend();
    }

    static QList<QUrl> extensionUrls;
    if (!extensionsDiscovered) {
        registerHookType();
        extensionUrls = listExtensions();
        extensionsDiscovered = true;
    }

    const QPointer<QQuickWindow> guard(window);
    hooksByWindow.insert(guard, {});
    loadExtensions(guard, engine, extensionUrls);
    if (!guard)
        return hooksByWindow.cend();
    removeDeadWindows();
    return hooksByWindow.constFind(guard);
}

void collectExtensionFiles(const QString &directory, QList<QUrl> &urls)
{
    const QDir folder(directory);
    // The order of the listing decides among hooks of equal priority.
    const QStringList files = folder.entryList({QStringLiteral("*.qml")}, QDir::Files | QDir::CaseSensitive,
                                               QDir::NoSort);
    logInfo("Found %d Vantle QtQuick 2 extensions in %s", static_cast<int>(files.size()),
            directory.toUtf8().constData());
    for (const QString &file : files) {
        const QString path = folder.absoluteFilePath(file);
        const bool isResource = path.startsWith(u':');
        QUrl url = QUrl::fromLocalFile(isResource ? path.sliced(1) : path);
        if (isResource)
            url.setScheme(QStringLiteral("qrc"));
        urls.append(url);
    }
}

VantleHook *createHook(QQmlComponent &component, const QByteArray &text)
{
    switch (component.status()) {
    case QQmlComponent::Null:
        logWarning("Vantle QtQuick 2 extension %s resulted in null component, skipping", text.constData());
        return nullptr;
    case QQmlComponent::Loading:
        logWarning("Vantle QtQuick 2 extension %s tried to load asynchronously, skipping", text.constData());
        return nullptr;
    case QQmlComponent::Error: {
        const QList<QQmlError> errors = component.errors();
        for (const QQmlError &error : errors)
            logWarning("%s", error.toString().toUtf8().constData());
        return nullptr;
    }
    case QQmlComponent::Ready: break;
    }

    auto *const hook = qobject_cast<VantleHook *>(component.create());
    if (!hook) {
        logWarning("Vantle QtQuick 2 extension %s failed to provide an extension object",
                   component.url().toString().toUtf8().constData());
    }
    return hook;
}

QString libraryDirectory()
{
#ifdef Q_OS_WIN
    constexpr char folder[] = "\\lib";
#else
    constexpr char folder[] = "/lib";
#endif
    return QString::fromStdString(environmentVariable("VANTLE_PREFIX") + folder);
}

std::string environmentVariable(const std::string &name)
{
    if (name.empty())
        return {};
#ifdef Q_OS_WIN
    return qEnvironmentVariable(name.c_str()).toStdString();
#else
    // The bytes as they are: they are UTF-8 whatever the locale says.
    return qgetenv(name.c_str()).toStdString();
#endif
}

} // namespace Vantle::QtWrapper
