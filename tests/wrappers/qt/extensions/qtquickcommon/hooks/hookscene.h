#pragma once

#include "hook/logger.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class VantleHook;

namespace VantleTest {

/// Keeps what the library logs, from its construction to its end.
class RecordingLogger : public Vantle::Logger
{
public:
    RecordingLogger();
    ~RecordingLogger() override;

    void info(const std::string &message) override { infos.push_back(message); }
    void warning(const std::string &message) override { warnings.push_back(message); }
    void level3(const std::string &) override { ADD_FAILURE(); }
    void level4(const std::string &) override { ADD_FAILURE(); }

    std::vector<std::string> infos;
    std::vector<std::string> warnings;
};

/// Keeps the messages of the trace statements, from its construction to its end.
class RecordedTraces
{
public:
    RecordedTraces();
    ~RecordedTraces();
    Q_DISABLE_COPY_MOVE(RecordedTraces)

    std::vector<std::string> take() { return std::exchange(m_texts, {}); }
    /// The functions whose statements were met.
    std::vector<std::string> functions;

private:
    std::vector<std::string> m_texts;
};

void writeFile(const QString &path, const QString &text);
/// An extension file whose hook has \p members.
QString extensionText(const QString &members);

/// The program under test, as far as scripts can reach it under the name "program".
class Program : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QStringList names MEMBER names CONSTANT)
    Q_PROPERTY(QVariantList values MEMBER values CONSTANT)

public:
    /// Deletes at once, as compiled code of a program can at any time.
    Q_INVOKABLE void kill(QObject *object) { delete object; }
    Q_INVOKABLE void keep(QObject *object) { kept = object; }
    /// Runs what the test has put in `action`.
    Q_INVOKABLE void act() { action(); }
    Q_INVOKABLE void note(const QString &text) { notes.append(text); }
    Q_INVOKABLE QVariantMap mapWith(const QString &key, const QVariant &value) { return {{key, value}}; }

    QStringList names{QStringLiteral("first"), QStringLiteral("second")};
    QVariantList values{QStringLiteral("text"), 3};
    std::function<void()> action;
    QStringList notes;
    QPointer<QObject> kept;
};

/// An engine with windows in it.
class Scene
{
public:
    Scene();
    ~Scene();
    Q_DISABLE_COPY_MOVE(Scene)

    /// Adds a window that holds what \p qml says. It isn't shown.
    QQuickWindow *addWindow(const QString &qml);

    std::unique_ptr<QQmlEngine> engine;
    Program program;
    std::vector<std::unique_ptr<QQuickWindow>> windows;
};

/// The item of that object name below \p window; fails the test without one.
QQuickItem *itemNamed(const QQuickWindow *window, const char *name);
/// The hooks that were loaded for \p window.
QList<VantleHook *> hooksOf(const QQuickWindow *window);

/// A scene with extensions.
///
/// Files of extensions are listed once in a process, so there are always the
/// same ones; what they hold is written anew for each test and read by its
/// engine.
class HookTest : public testing::Test
{
protected:
    static constexpr int FileCount = 4;

    HookTest();
    ~HookTest() override;

    /// Makes extensions with these members, in the order in which they are
    /// loaded. Further files hold a hook that answers nothing.
    void extend(const QStringList &members);
    /// Where the extension of that place in the order stands.
    QString extensionPath(int index) const;

    /// The window of the test: a button in a frame in a panel.
    QQuickWindow *window();
    QQuickItem *button() { return itemNamed(window(), "button"); }
    QQuickItem *frame() { return itemNamed(window(), "frame"); }
    QQuickItem *panel() { return itemNamed(window(), "panel"); }
    /// The raw class name of the hook at that place in the order of loading.
    std::string hookClass(int index);

    RecordingLogger logger;
    RecordedTraces traces;
    Scene scene;

private:
    QQuickWindow *m_window = nullptr;
};

} // namespace VantleTest
