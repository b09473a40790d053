#pragma once

#include "hook/object.h"
#include "silentlogger.h"
#include "wrappers/qt/application.h"

#include <QtCore/QByteArray>
#include <QtGui/QImage>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <gtest/gtest.h>

#include <memory>

namespace VantleTest {

/// The picture that a result holds; null for a null result.
QImage pictureOf(const Vantle::SharedPtr<Vantle::Object> &result);

/// A white window of 200 x 150 with a scene in it. Sizes and positions in
/// these tests are logical pixels; pictures() have ratio() times as many.
class ScreenshotScene : public testing::Test
{
protected:
    ScreenshotScene();
    ~ScreenshotScene() override;

    /// Loads \p items, QML text, into the window, and shows it on the screen, painted.
    void show(const QByteArray &items);
    /// Same, without showing it.
    void load(const QByteArray &items);

    QQuickItem *find(const char *objectName) const
    {
        return window->findChild<QQuickItem *>(QLatin1String(objectName));
    }

    qreal ratio() const { return window->devicePixelRatio(); }
    /// The size of the window, which a window manager may have cut to whole device pixels.
    QSize windowPixels() const { return pixels(window->width(), window->height()); }
    /// A length in device pixels.
    int pixels(qreal length) const { return qRound(length * ratio()); }
    QSize pixels(int width, int height) const { return {pixels(width), pixels(height)}; }

    /// Calls `grabWidget` for the object.
    static Vantle::SharedPtr<Vantle::Object> grab(QQuickItem *item);
    static Vantle::SharedPtr<Vantle::Object> grab(QQuickWindow *target);
    static QImage picture(QQuickItem *item) { return pictureOf(grab(item)); }

    /// Whether the pixels at the logical position, and its whole surroundings
    /// of one logical pixel, have that colour.
    bool hasColor(const QImage &picture, qreal x, qreal y, const QColor &color) const;

    SilentLogger logger;
    Vantle::QtWrapper::Application application;
    QQmlEngine engine;
    std::unique_ptr<QQuickWindow> window;
};

} // namespace VantleTest
