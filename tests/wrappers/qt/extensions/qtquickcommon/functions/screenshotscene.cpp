#include "screenshotscene.h"

#include "hook/inspector.h"
#include "support/waiting.h"
#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"
#include "wrappers/qt/extensions/qtquickcommon/functions/screenshots.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QUrl>
#include <QtGui/QPixmap>
#include <QtQml/QQmlComponent>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace VantleTest {

QImage pictureOf(const SharedPtr<Object> &result)
{
    void *value = nullptr;
    return result && result->get(&value) ? static_cast<QPixmap *>(value)->toImage() : QImage();
}

ScreenshotScene::ScreenshotScene()
{
    setupQtQuick();
    Inspector::self()->takeError();
}

ScreenshotScene::~ScreenshotScene() = default;

void ScreenshotScene::load(const QByteArray &items)
{
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nWindow { width: 200; height: 150; color: 'white'; " + items + " }", QUrl());
    window.reset(qobject_cast<QQuickWindow *>(component.create()));
    ASSERT_NE(window, nullptr) << component.errorString().toStdString();
}

void ScreenshotScene::show(const QByteArray &items)
{
    ASSERT_NO_FATAL_FAILURE(load(items + " Rectangle { width: 1; height: 1; color: 'black' }"));
    window->show();
    ASSERT_TRUE(waitUntil([this] { return window->isExposed(); }));
    // On a real screen it takes a while until the frame is there.
    ASSERT_TRUE(waitUntil([this] {
        window->update();
        const QImage shown = pictureOf(grab(window.get()));
        return !shown.isNull() && shown.pixelColor(0, 0) == QColor(Qt::black)
            && shown.pixelColor(shown.width() - 3, shown.height() - 3) == QColor(Qt::white);
    }));
}

SharedPtr<Object> ScreenshotScene::grab(QQuickItem *item)
{
    return grabItemFunction({wrapAndRegisterQObject(item)}, nullptr);
}

SharedPtr<Object> ScreenshotScene::grab(QQuickWindow *target)
{
    return grabWindowFunction({wrapAndRegisterQObject(target)}, nullptr);
}

bool ScreenshotScene::hasColor(const QImage &picture, qreal x, qreal y, const QColor &color) const
{
    for (int py = pixels(y - 1); py <= pixels(y + 1); ++py) {
        for (int px = pixels(x - 1); px <= pixels(x + 1); ++px) {
            if (!picture.valid(px, py) || picture.pixelColor(px, py) != color)
                return false;
        }
    }
    return true;
}

} // namespace VantleTest
