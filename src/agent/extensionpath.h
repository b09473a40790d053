#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QStringList>

#include <memory>
#include <optional>

class QDir;
class QQuickWindow;
class QTemporaryDir;

namespace Vantle::Agent {

/// Lets the library find the extensions of several directories, though it takes
/// the name of one only, from the environment: they are gathered in a directory
/// of ours. Once the library has listed its directories, which it does once in a
/// process, the environment is as the user made it again, for the programs that
/// this one starts.
///
/// Lives on the thread that owns the user interface, for as long as windows may
/// come that extensions are loaded for.
class ExtensionPath : public QObject
{
public:
    /// Adds \p directories to the one that the user's environment names, which
    /// comes first. What has to be written is written below \p scratch.
    ExtensionPath(const QStringList &directories, const QString &scratch);
    ~ExtensionPath() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    Q_DISABLE_COPY_MOVE(ExtensionPath)

    void setPath(const QStringList &directories, const QString &scratch);
    void letLibraryList(QQuickWindow *window);

    std::optional<QByteArray> m_usersPath;
    std::unique_ptr<QTemporaryDir> m_gathered;
};

/// Writes into \p target, which must be empty, files that stand for the
/// extensions in \p directories, and are listed in that order: in the order of
/// the directories, and within one in that in which it is listed itself. What an
/// extension imports from beside it is still found there. False if a file could
/// not be written.
bool gatherExtensions(const QStringList &directories, const QDir &target);

} // namespace Vantle::Agent
