#pragma once

#include "hook/class.h"
#include "hook/logger.h"
#include "hook/objectname.h"
#include "support/waiting.h"
#include "support/warningguard.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"
#include "wrappers/qt/wrapping.h"

#include <gtest/gtest.h>

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace VantleTest {

/// Keeps the library's warnings.
class WarningLog : public Vantle::Logger
{
public:
    WarningLog() { Vantle::QtQuickCommon::setLogger(this); }
    ~WarningLog() override { Vantle::QtQuickCommon::setLogger(nullptr); }

    void info(const std::string &) override {}
    void warning(const std::string &message) override { warnings.push_back(message); }
    void level3(const std::string &) override {}
    void level4(const std::string &) override {}

    std::vector<std::string> warnings;
};

/// Gives items the names that a test wants.
class ScriptedNames : public Vantle::QtWrapper::NameSource
{
public:
    using Naming = std::function<Vantle::ObjectName(QObject *)>;
    explicit ScriptedNames(Naming naming, QString own = QStringLiteral("real name"))
        : m_naming(std::move(naming))
        , m_own(std::move(own))
    {
    }

    Vantle::ObjectName objectName(QObject *object) const override { return m_naming(object); }
    QString realName(QObject *) const override { return m_own; }

private:
    Naming m_naming;
    QString m_own;
};

/// A QML document in a host that names and finds its items.
class NamesScene : public testing::Test
{
protected:
    NamesScene() { Vantle::QtWrapper::setupQtQuick(); }
    ~NamesScene() override { EXPECT_EQ(log.warnings, expectedWarnings); }

    void load(const QByteArray &qml, const QUrl &url = {})
    {
        m_root.reset();
        QQmlComponent component(&m_engine);
        component.setData(qml, url);
        finishLoading(&component);
    }
    void loadFile(const QString &path)
    {
        m_root.reset();
        QQmlComponent component(&m_engine, QUrl::fromLocalFile(path));
        finishLoading(&component);
    }

    QQuickWindow *window() const { return qobject_cast<QQuickWindow *>(m_root.get()); }
    QQuickItem *find(const char *objectName) const
    {
        auto *const item = m_root->findChild<QQuickItem *>(QString::fromLatin1(objectName));
        EXPECT_TRUE(item) << "no item " << objectName;
        return item;
    }
    QList<QQuickItem *> roots() const { return window()->contentItem()->childItems(); }

    static Vantle::SharedPtr<Vantle::Object> wrap(QObject *object)
    {
        return Vantle::QtWrapper::wrapAndRegisterQObject(object);
    }
    static QString scriptName(QObject *object) { return wrap(object)->scriptName(); }
    static QObject *objectNamed(const QString &name, QString *problem = nullptr)
    {
        return Vantle::QtWrapper::nativeQObject(
            Vantle::QtWrapper::Application::self()->objectForName(name, problem));
    }

    void nameItemsBy(ScriptedNames::Naming naming, const QString &own = QStringLiteral("real name"))
    {
        m_application.nameGenerator()->registerSource(Vantle::QtWrapper::classForMetaObject(
                                                          &QQuickItem::staticMetaObject),
                                                      std::make_unique<ScriptedNames>(std::move(naming), own));
    }
    /// Every item gets the name \p selector.
    void nameItems(const QString &selector)
    {
        nameItemsBy([selector](QObject *) { return Vantle::ObjectName(selector); });
    }

    void destroyRoot() { m_root.reset(); }

    WarningLog log;
    std::vector<std::string> expectedWarnings;

private:
    void finishLoading(QQmlComponent *component)
    {
        m_root.reset(component->create());
        ASSERT_TRUE(m_root) << qPrintable(component->errorString());
        if (window() && window()->isVisible()) {
            ASSERT_TRUE(waitUntil([this] { return window()->isExposed(); }));
        }
    }

    Vantle::QtWrapper::Application m_application;
    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_root;
};

} // namespace VantleTest
