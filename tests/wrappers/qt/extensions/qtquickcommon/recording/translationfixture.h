#pragma once

#include "support/compressionharness.h"
#include "support/waiting.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qteventtranslation.h"
#include "wrappers/qt/wrapping.h"

#include <gtest/gtest.h>

#include <QtGui/QMouseEvent>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <memory>

namespace VantleTest {

/// A record in which every field has a value that no translation writes, so
/// that a test sees which fields were touched.
Vantle::QtWrapper::SyntheticEvent markedRecord();

/// Fails the test for every field in which the records differ.
void expectSameRecord(const Vantle::QtWrapper::SyntheticEvent &actual,
                      const Vantle::QtWrapper::SyntheticEvent &expected);

/// A window of 200 by 200 at (100, 50) on the screen with one item in it, at
/// (20, 30) and of 100 by 80, and the host that knows about both.
class Translation : public testing::Test
{
protected:
    using SyntheticEvent = Vantle::QtWrapper::SyntheticEvent;

    Translation();

    void SetUp() override;

    /// Translates into a new record.
    bool translate(QObject *receiver, QEvent &event)
    {
        result = SyntheticEvent();
        result.x = result.y = 0;
        return Vantle::QtWrapper::qtEventToSyntheticEvent(receiver, &event, &result);
    }

    /// Fails the test unless \p event is refused and leaves the record alone.
    void expectRefused(QObject *receiver, QEvent &event);

    /// Fails the test unless the record is that of \p event's kind with
    /// nothing else written, apart from what \p fill says and the object.
    template<typename Fill>
    void expectRecord(QObject *receiver, QEvent &event, QObject *object, Fill fill)
    {
        SyntheticEvent actual = markedRecord();
        SyntheticEvent expected = actual;
        ASSERT_TRUE(Vantle::QtWrapper::qtEventToSyntheticEvent(receiver, &event, &actual));
        EXPECT_EQ(Vantle::QtWrapper::nativeQObject(actual.object), object);
        expected.object = Vantle::QtWrapper::wrapAndRegisterQObject(object);
        expected.objectName = expected.object->scriptName().toUtf8();
        expected.objectClass = expected.object->objectClass();
        expected.ready = true;
        fill(&expected);
        expectSameRecord(actual, expected);
    }

    /// The native object that the last record is against.
    QObject *recordedObject() const { return Vantle::QtWrapper::nativeQObject(result.object); }

    QPointF globalOf(qreal x, qreal y) const { return QPointF(window->mapToGlobal(QPoint(0, 0))) + QPointF(x, y); }
    /// At (\p x, \p y) of the window.
    QMouseEvent mouseEvent(QEvent::Type type, qreal x, qreal y, Qt::MouseButton button = Qt::LeftButton,
                           Qt::MouseButtons buttons = Qt::LeftButton) const
    {
        const QPointF local(x, y);
        return QMouseEvent(type, local, local, globalOf(x, y), button, buttons, Qt::NoModifier);
    }

    void giveFocusTo(QQuickItem *focusItem);

    TestLogger logger;
    Vantle::QtWrapper::Application application;
    std::unique_ptr<QQuickWindow> window = std::make_unique<QQuickWindow>();
    QQuickItem *item;
    SyntheticEvent result;
};

} // namespace VantleTest
