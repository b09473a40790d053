#pragma once

#include "hook/class.h"
#include "hook/delegates.h"
#include "hook/logger.h"
#include "hook/object.h"
#include "support/waiting.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"
#include "wrappers/qt/wrapping.h"

#include <gtest/gtest.h>

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <memory>
#include <string>

namespace VantleTest {

/// Fails the test for each warning of the library but the one that extensions
/// can't be loaded into a window that QML did not make.
class StrictLogger : public Vantle::Logger
{
public:
    StrictLogger() { Vantle::QtQuickCommon::setLogger(this); }
    ~StrictLogger() override { Vantle::QtQuickCommon::setLogger(nullptr); }

    void info(const std::string &) override {}
    void warning(const std::string &message) override
    {
        if (message.find("failed to lookup QML engine") == std::string::npos)
            ADD_FAILURE() << message;
    }
    void level3(const std::string &) override {}
    void level4(const std::string &) override {}
};

/// A QML document that stays alive with its engine, and the host that sees it.
class QuickScene : public testing::Test
{
protected:
    QuickScene() { Vantle::QtWrapper::setupQtQuick(); }

    /// Makes the document \p qml, in place of any earlier one. A window that it
    /// shows is on the screen afterwards.
    void load(const QByteArray &qml, const QUrl &url = {})
    {
        m_root.reset();
        QQmlComponent component(&m_engine);
        component.setData(qml, url);
        m_root.reset(component.create());
        ASSERT_TRUE(m_root) << qPrintable(component.errorString());
        const bool isShown = window() && window()->isVisible();
        ASSERT_TRUE(!isShown || waitUntil([this] { return window()->isExposed(); }));
    }

    QObject *root() const { return m_root.get(); }
    QQuickWindow *window() const { return qobject_cast<QQuickWindow *>(m_root.get()); }
    void destroyRoot() { m_root.reset(); }

    /// The object of that name; the test fails if there is none.
    template<typename T = QQuickItem>
    T *find(const char *objectName) const
    {
        T *const object = m_root->objectName() == QLatin1String(objectName)
            ? qobject_cast<T *>(m_root.get())
            : m_root->findChild<T *>(QString::fromLatin1(objectName));
        EXPECT_TRUE(object) << "no object " << objectName;
        return object;
    }

    static Vantle::SharedPtr<Vantle::Object> wrap(QObject *object)
    {
        return Vantle::QtWrapper::wrapAndRegisterQObject(object);
    }

    static const Vantle::GeometryDelegate *geometryOf(const Vantle::SharedPtr<Vantle::Object> &object)
    {
        return Vantle::DelegateFactory::self()->geometryDelegate(object->objectClass());
    }
    static const Vantle::InteractionDelegate *interactionOf(const Vantle::SharedPtr<Vantle::Object> &object)
    {
        return Vantle::DelegateFactory::self()->interactionDelegate(object->objectClass());
    }

    static QString notReadyReason(QObject *object)
    {
        const auto wrapper = wrap(object);
        return interactionOf(wrapper)->notReadyReason(wrapper);
    }
    /// The native object of what blocks \p object; null if nothing does.
    static QObject *blocker(QObject *object)
    {
        const auto wrapper = wrap(object);
        return Vantle::QtWrapper::nativeQObject(interactionOf(wrapper)->blocker(wrapper));
    }
    static QString scriptName(QObject *object) { return wrap(object)->scriptName(); }

private:
    StrictLogger m_logger;
    Vantle::QtWrapper::Application m_application;
    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_root;
};

} // namespace VantleTest
