#include "flickscene.h"

#include "hook/eventdata.h"
#include "hook/method.h"
#include "support/waiting.h"
#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qteventtranslation.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QPointingDevice>
#include <QtGui/qpa/qwindowsysteminterface.h>
#include <QtQml/QQmlComponent>

#include <utility>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace VantleTest {

namespace {

// Time between two events. At this pace a drag over 100 pixels is a throw.
constexpr int StepTime = 8;
constexpr int StepCount = 12;

QPointingDevice *touchScreen()
{
    static QPointingDevice *const device = [] {
        auto *const made = new QPointingDevice(QStringLiteral("test touch screen"), 77,
                                               QInputDevice::DeviceType::TouchScreen,
                                               QPointingDevice::PointerType::Finger, QInputDevice::Capability::Position,
                                               5, 0);
        QWindowSystemInterface::registerInputDevice(made);
        return made;
    }();
    return device;
}

QtMessageHandler warningGuard = nullptr;

// Qt's animation timer says this now and then when a window goes while the
// content of another is coming to rest. Nothing follows from it.
void passOnOtherMessages(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (!message.startsWith(QLatin1String("QUnifiedTimer::stopAnimationDriver")))
        warningGuard(type, context, message);
}

} // namespace

std::string toText(const EventData &statement)
{
    std::string text = statement.method()->name().toStdString() + " \"" + statement.objectName().toStdString() + '"';
    for (const SharedPtr<Object> &argument : statement.arguments()) {
        void *value = nullptr;
        if (argument->className() == QLatin1String("int") && argument->get(&value))
            text += ' ' + std::to_string(*static_cast<int *>(value));
        else
            text += " (" + argument->className().toStdString() + ')';
    }
    return text;
}

RecordingFilter::RecordingFilter()
    : m_recorder(QtEventRecorder::instance())
    , m_generator(std::make_unique<QtQuickFlickEventGenerator>(m_recorder))
{
    qApp->installEventFilter(this);
}

RecordingFilter::~RecordingFilter()
{
    stop();
}

bool RecordingFilter::eventFilter(QObject *receiver, QEvent *event)
{
    SyntheticEvent record;
    if (!event->spontaneous() || !receiver->isWindowType() || !qtEventToSyntheticEvent(receiver, event, &record))
        return false;
    m_generator->peekSyntheticEvent(record);
    m_recorder->eatEvent(record);
    return false;
}

void RecordingFilter::stop()
{
    if (!m_generator)
        return;
    qApp->removeEventFilter(this);
    m_generator.reset();
    m_recorder->flushEventQueue();
    m_recorder = nullptr;
}

FlickScene::FlickScene() : application(WrapperConfig{.compressionDebugLevel = 1, .classesWithoutCoordinates = {}})
{
    warningGuard = qInstallMessageHandler(passOnOtherMessages);
    setupQtQuick();
    m_time += 10000;
    application.setStatementHandler([this](const EventData &statement) { statements.push_back(toText(statement)); });
}

FlickScene::~FlickScene()
{
    filter.reset();
    window.reset();
    qInstallMessageHandler(warningGuard);
}

void FlickScene::show(const QByteArray &items)
{
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nWindow { width: 300; height: 300; visible: true; " + items + " }", QUrl());
    QObject *const root = component.create();
    ASSERT_NE(root, nullptr) << component.errorString().toStdString();
    window.reset(qobject_cast<QQuickWindow *>(root));
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(waitUntil([this] { return window->isExposed(); }));
    // The window system's own events about the window come first.
    QCoreApplication::processEvents();
    log.infos.clear();
    filter = std::make_unique<RecordingFilter>();
}

void FlickScene::send(Step step, QPoint point)
{
    const QPoint global = window->mapToGlobal(point);
    m_time += StepTime;
    if (pointer == Pointer::Mouse) {
        constexpr QEvent::Type types[] = {QEvent::MouseButtonPress, QEvent::MouseMove, QEvent::MouseButtonRelease};
        const Qt::MouseButtons held = step == Step::Release ? Qt::NoButton : Qt::LeftButton;
        const Qt::MouseButton button = step == Step::Move ? Qt::NoButton : Qt::LeftButton;
        QWindowSystemInterface::handleMouseEvent<QWindowSystemInterface::SynchronousDelivery>(
            window.get(), m_time, QPointF(point), QPointF(global), held, button, types[static_cast<int>(step)]);
        return;
    }
    constexpr QEventPoint::State states[] = {QEventPoint::Pressed, QEventPoint::Updated, QEventPoint::Released};
    QWindowSystemInterface::TouchPoint finger;
    finger.id = 1;
    finger.state = states[static_cast<int>(step)];
    finger.area = QRectF(global, QSizeF(0, 0));
    finger.pressure = step == Step::Release ? 0 : 1;
    QWindowSystemInterface::handleTouchEvent<QWindowSystemInterface::SynchronousDelivery>(window.get(), m_time,
                                                                                          touchScreen(), {finger});
    if (step == Step::Move)
        waitForFrame();
}

// Qt Quick hands the moves of fingers on with the next frame only.
void FlickScene::waitForFrame()
{
    if (!window)
        return;
    bool hasSwapped = false;
    QObject context;
    QObject::connect(window.get(), &QQuickWindow::frameSwapped, &context, [&hasSwapped] { hasSwapped = true; });
    window->update();
    EXPECT_TRUE(waitUntil([this, &hasSwapped] { return hasSwapped || !window; }));
}

void FlickScene::press(QPoint point)
{
    // Far enough behind the last click not to be the second half of a double click.
    m_time += 2000;
    send(Step::Press, point);
}

void FlickScene::move(QPoint point)
{
    send(Step::Move, point);
}

void FlickScene::release(QPoint point)
{
    send(Step::Release, point);
}

void FlickScene::drag(QPoint from, QPoint to)
{
    press(from);
    for (int i = 1; i <= StepCount; ++i)
        move(from + (to - from) * i / StepCount);
    release(to);
}

void FlickScene::dragAndHalt(QPoint from, QPoint to)
{
    press(from);
    for (int i = 1; i <= StepCount; ++i)
        move(from + (to - from) * i / StepCount);
    m_time += 1000;
    move(to);
    m_time += 1000;
    release(to);
}

bool FlickScene::waitForRest(const QQuickFlickable *flickable)
{
    return waitUntil([flickable] { return !flickable->isMoving() && !flickable->isDragging(); });
}

std::vector<std::string> FlickScene::finish()
{
    filter->stop();
    return std::exchange(statements, {});
}

std::vector<std::string> FlickScene::recordedKinds() const
{
    std::vector<std::string> kinds;
    for (const std::string &line : log.infos) {
        if (!line.starts_with("EventCompressor::eatEvent: "))
            continue;
        for (const char *kind : {"(press", "(release", "(flick started", "(flick ended", "(begin", "(end"}) {
            if (line.find(kind) != std::string::npos)
                kinds.push_back(kind + 1);
        }
    }
    return kinds;
}

} // namespace VantleTest
