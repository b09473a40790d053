#pragma once

#include "agent/recording/eventwatcher.h"
#include "agent/recording/statementmessages.h"
#include "hook/eventdata.h"
#include "hook/inspector.h"
#include "hook/logger.h"
#include "hook/objectname.h"
#include "support/waiting.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"
#include "wrappers/qt/functions/inputplayer.h"
#include "wrappers/qt/wrapping.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtGui/QGuiApplication>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace VantleTest {

/// A scene on the screen, scripts that act on it, and somebody who records
/// what they do.
class ReplayScene : public testing::Test
{
protected:
    using Lines = std::vector<std::string>;

    ReplayScene()
    {
        Vantle::QtQuickCommon::setLogger(&m_logger);
        Vantle::QtWrapper::setupQtQuick();
        m_application.setStatementHandler(
            [this](const Vantle::EventData &statement) { m_statements.push_back(readable(statement)); });
    }

    ~ReplayScene() override
    {
        // Nothing may go on into the next test.
        waitUntil([] { return Vantle::QtWrapper::InputPlayer::self()->isIdle(); });
        Vantle::Inspector::self()->takeError();
    }

    /// Shows the document \p qml, whose root is a Window, and begins to record.
    void load(const QByteArray &qml)
    {
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick\nimport QtQuick.Controls\n" + qml, QUrl());
        m_window.reset(qobject_cast<QQuickWindow *>(component.create()));
        ASSERT_TRUE(m_window) << qPrintable(component.errorString());
        ASSERT_TRUE(waitUntil([this] { return m_window->isExposed(); }));
        m_window->requestActivate();
        ASSERT_TRUE(waitUntil([this] { return QGuiApplication::focusWindow() == m_window.get(); }));
        m_watcher.start();
    }

    QQuickWindow *window() const { return m_window.get(); }
    void destroyWindow() { m_window.reset(); }
    /// To the scene's own end.
    QQuickWindow *releaseWindow() { return m_window.release(); }

    template<typename T = QQuickItem>
    T *find(const char *objectName) const
    {
        T *const object = m_window->objectName() == QLatin1String(objectName)
            ? qobject_cast<T *>(m_window.get())
            : m_window->findChild<T *>(QString::fromLatin1(objectName));
        EXPECT_TRUE(object) << "no object " << objectName;
        return object;
    }
    QVariant property(const char *objectName, const char *name) const
    {
        return find<QObject>(objectName)->property(name);
    }
    std::string text(const char *objectName) const { return property(objectName, "text").toString().toStdString(); }

    /// The object of that name, as scripts find it again.
    Vantle::SharedPtr<Vantle::Object> nameOf(const char *objectName) const
    {
        return Vantle::Inspector::self()->createString(wrap(objectName)->scriptName());
    }
    Vantle::SharedPtr<Vantle::Object> wrap(const char *objectName) const
    {
        return Vantle::QtWrapper::wrapAndRegisterQObject(find<QObject>(objectName));
    }

    static Vantle::SharedPtr<Vantle::Object> value(const QVariant &value)
    {
        return value.typeId() == QMetaType::QString ? Vantle::Inspector::self()->createString(value.toString())
                                                    : Vantle::Inspector::self()->createInteger(value.toInt());
    }

    /// Calls the function. Gives what the script is told at once, empty for nothing.
    static std::string start(const char *function, const Vantle::SharedPtr<Vantle::Object> &object,
                             const QVariantList &arguments = {})
    {
        Vantle::ObjectList list{object};
        for (const QVariant &argument : arguments)
            list.push_back(value(argument));
        return call(function, list);
    }
    static std::string call(const char *function, const Vantle::ObjectList &arguments)
    {
        Vantle::Inspector *const inspector = Vantle::Inspector::self();
        const auto result = inspector->callGlobalMethod(QString::fromLatin1(function), arguments);
        const std::string error = inspector->takeError().toStdString();
        EXPECT_EQ(result.isNull(), !error.empty());
        return error;
    }

    /// Waits until all is delivered; gives the error of the last action.
    static std::string finish()
    {
        std::optional<std::string> error;
        Vantle::QtWrapper::InputPlayer::self()->whenIdle([&error](const QString &what) { error = what.toStdString(); });
        EXPECT_TRUE(waitUntil([&error] { return error.has_value(); }));
        return error.value_or(std::string());
    }

    /// Calls the function on the object of that name and waits for the end.
    void play(const char *function, const char *objectName, const QVariantList &arguments = {})
    {
        ASSERT_EQ(start(function, nameOf(objectName), arguments), "");
        ASSERT_EQ(finish(), "");
    }

    /// All that was recorded so far, what was still held included.
    Lines recorded()
    {
        m_watcher.stop();
        return m_statements;
    }

    static std::string readable(const Vantle::EventData &statement)
    {
        const Vantle::Protocol::Statement message = Vantle::Agent::toMessage(statement);
        const Vantle::ObjectName name(message.object);
        QString line = name.property(QStringLiteral("objectName")).stringValue();
        if (line.isEmpty())
            line = name.property(QStringLiteral("type")).stringValue();
        line.prepend(message.function + u' ');
        for (const Vantle::Protocol::StatementArgument &argument : message.arguments)
            line += u' ' + argument.value.toVariant().toString();
        return line.toStdString();
    }

private:
    class WarningLogger final : public Vantle::Logger
    {
        void info(const std::string &) override {}
        void warning(const std::string &message) override { ADD_FAILURE() << message; }
        void level3(const std::string &) override {}
        void level4(const std::string &) override {}
    };

    WarningLogger m_logger;
    Vantle::QtWrapper::Application m_application;
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    Lines m_statements;
    Vantle::Agent::EventWatcher m_watcher{std::chrono::milliseconds(0)}; // windows need not settle first
};

} // namespace VantleTest
