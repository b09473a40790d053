#include "agent/extensionpath.h"

#include "wrappers/qt/extensions/qtquickcommon/identity/itemids.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickhook.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QEvent>
#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>
#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickWindow>

namespace Vantle::Agent {

namespace {

constexpr char PrefixVariable[] = "VANTLE_PREFIX";
constexpr char PathVariable[] = "VANTLE_QTQUICK_EXTENSION_PATH";

/// As the library lists them.
QStringList extensionFiles(const QDir &directory)
{
    return directory.entryList({QStringLiteral("*.qml")}, QDir::Files | QDir::CaseSensitive, QDir::NoSort);
}

QByteArray encodedUrl(const QString &path)
{
    if (path.startsWith(u':'))
        return QUrl(QStringLiteral("qrc") + path).toEncoded();
    return QUrl::fromLocalFile(path).toEncoded(QUrl::FullyEncoded);
}

bool write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush())
        return false;
    // What has no time isn't kept in the program's cache of compiled files,
    // where the files of every run would pile up.
    file.setFileTime(QDateTime::fromMSecsSinceEpoch(0), QFileDevice::FileModificationTime);
    return true;
}

QByteArray typeName(qsizetype index)
{
    return "Extension" + QByteArray::number(index);
}

} // namespace

bool gatherExtensions(const QStringList &directories, const QDir &target)
{
    QByteArray types;
    qsizetype count = 0;
    for (const QString &path : directories) {
        const QDir directory(path);
        const QStringList files = extensionFiles(directory);
        for (const QString &file : files)
            types += typeName(count++) + ' ' + encodedUrl(directory.absoluteFilePath(file)) + '\n';
    }
    bool isWritten = target.mkdir(QStringLiteral("types"))
        && write(target.filePath(QStringLiteral("types/qmldir")), types);

    // A file system lists files in an order of its own: they are made first, and
    // filled in the order in which they are listed.
    for (qsizetype i = 0; i < count; ++i)
        isWritten = write(target.filePath(QStringLiteral("%1.qml").arg(i + 1)), {}) && isWritten;
    const QStringList places = extensionFiles(target);
    for (qsizetype i = 0; i < places.size(); ++i) {
        const QByteArray text = "import \"types\" as Types\nTypes." + typeName(i) + " {}\n";
        isWritten = write(target.filePath(places.at(i)), text) && isWritten;
    }
    return isWritten && places.size() == count;
}

ExtensionPath::ExtensionPath(const QStringList &directories, const QString &scratch)
{
    if (qEnvironmentVariableIsSet(PathVariable))
        m_usersPath = qgetenv(PathVariable);
    setPath(directories, scratch);
    qApp->installEventFilter(this);
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow *window : windows) {
        if (window->isExposed())
            letLibraryList(qobject_cast<QQuickWindow *>(window));
    }
}

ExtensionPath::~ExtensionPath() = default;

void ExtensionPath::setPath(const QStringList &directories, const QString &scratch)
{
    if (directories.isEmpty())
        return;
    const QString before = QString::fromUtf8(m_usersPath.value_or(QByteArray()));
    if (before.isEmpty() && directories.size() == 1) {
        qputenv(PathVariable, directories.first().toUtf8());
        return;
    }
    m_gathered = std::make_unique<QTemporaryDir>(scratch + QStringLiteral("/vantle-extensions-XXXXXX"));
    const QStringList all = before.isEmpty() ? directories : QStringList(before) + directories;
    if (!m_gathered->isValid() || !gatherExtensions(all, QDir(m_gathered->path()))) {
        qWarning("vantle: cannot gather the extensions in %s: %s", qPrintable(m_gathered->path()),
                 qPrintable(m_gathered->errorString()));
    }
    qputenv(PathVariable, m_gathered->path().toUtf8());
}

bool ExtensionPath::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Expose)
        letLibraryList(qobject_cast<QQuickWindow *>(watched));
    return false;
}

void ExtensionPath::letLibraryList(QQuickWindow *window)
{
    if (!window || !QtWrapper::qmlEngineForQuickWindow(window))
        return;
    // Any question makes the library list its directories.
    VantleQtQuickHook::isItemReady(window->contentItem());
    qApp->removeEventFilter(this);
    qunsetenv(PrefixVariable);
    if (m_usersPath)
        qputenv(PathVariable, *m_usersPath);
    else
        qunsetenv(PathVariable);
}

} // namespace Vantle::Agent
