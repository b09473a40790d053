#include "wrappers/qt/extensions/qtquickcommon/recording/qteventtranslation.h"

#include "wrappers/qt/extensions/qtquickcommon/recording/eventobjects_p.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/keytext_p.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/touchtranslation_p.h"
#include "wrappers/qt/wrapping.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QWindow>

namespace Vantle::QtWrapper {

namespace {

/// The type of the event that was offered last, refused or not.
int previousEventType = 0;

/// The last ShortcutOverride. Its receiver may be dead and is only compared.
/// Never forgotten: a press that equals it in everything is its repetition.
const QObject *shortcutOverrideReceiver = nullptr;
qint32 shortcutOverrideKey = 0;
quint32 shortcutOverrideModifiers = 0;
quint32 shortcutOverrideTimestamp = 0;

quint32 qtModifiers(const QKeyEvent &event)
{
    return static_cast<quint32>(event.modifiers().toInt());
}

void rememberShortcutOverride(const QObject *receiver, const QKeyEvent &event)
{
    shortcutOverrideReceiver = receiver;
    shortcutOverrideKey = event.key();
    shortcutOverrideModifiers = qtModifiers(event);
    shortcutOverrideTimestamp = static_cast<quint32>(event.timestamp());
}

/// Qt offers a keystroke as a shortcut first and, if nothing takes it, as a
/// key press. The event's 64 bits are held against the 32 that are remembered:
/// a time beyond these never counts as a repetition.
bool repeatsShortcutOverride(const QObject *receiver, const QKeyEvent &event)
{
    return receiver == shortcutOverrideReceiver && event.key() == shortcutOverrideKey
        && qtModifiers(event) == shortcutOverrideModifiers && event.timestamp() == shortcutOverrideTimestamp;
}

QWindow *asWindow(QObject *receiver)
{
    return receiver && receiver->isWindowType() ? static_cast<QWindow *>(receiver) : nullptr;
}

int roundedAwayFromZero(qreal value)
{
    return static_cast<int>(value < 0 ? value - 0.5 : value + 0.5);
}

bool translateMouseEvent(QObject *receiver, const QMouseEvent &event, SyntheticEvent::MouseEventType mouseEventType,
                         SyntheticEvent *result)
{
    const QPoint global = event.globalPosition().toPoint();
    result->type = SyntheticEvent::Mouse;
    result->mouseEventType = mouseEventType;
    result->button = mouseEventType == SyntheticEvent::Move ? MouseButton::None : qtButtonToButtonValue(event.button());
    result->globalX = global.x();
    result->globalY = global.y();
    setEventObjectAt(result, wrapAndRegisterQObject(receiver), global);
    return true;
}

bool translateMouseMove(QObject *receiver, const QMouseEvent &event, SyntheticEvent *result)
{
    return event.buttons() != Qt::NoButton && translateMouseEvent(receiver, event, SyntheticEvent::Move, result);
}

/// Windows get a double click beside the second press, widgets in place of it.
bool translateDoubleClick(QObject *receiver, const QMouseEvent &event, SyntheticEvent *result)
{
    return receiver->isWidgetType() && translateMouseEvent(receiver, event, SyntheticEvent::Press, result);
}

bool translateWheelEvent(QObject *receiver, const QWheelEvent &event, SyntheticEvent *result)
{
    constexpr int eighthsPerDegree = 8;
    const QPointF global = event.globalPosition();
    result->type = SyntheticEvent::Wheel;
    result->wheelDeltaX = event.angleDelta().x() / eighthsPerDegree;
    result->wheelDeltaY = event.angleDelta().y() / eighthsPerDegree;
    setEventObjectAt(result, wrapAndRegisterQObject(receiver),
                     QPoint(roundedAwayFromZero(global.x()), roundedAwayFromZero(global.y())));
    return true;
}

bool translateKeyEvent(QObject *receiver, const QKeyEvent &event, SyntheticEvent::KeyEventType keyEventType,
                       SyntheticEvent *result)
{
    if (event.type() == QEvent::ShortcutOverride)
        rememberShortcutOverride(receiver, event);
    else if (event.type() == QEvent::KeyPress && repeatsShortcutOverride(receiver, event))
        return false;

    result->type = SyntheticEvent::Key;
    result->keyEventType = keyEventType;
    result->key = event.key();
    result->modifiers = qtModifiersToModifierValue(qtModifiers(event));
    result->text = keyEventText(event);
    setEventFocusObject(result, receiver);
    return true;
}

bool translateInputMethodEvent(QObject *receiver, const QInputMethodEvent &event, SyntheticEvent *result)
{
    if (event.commitString().isEmpty())
        return false;
    result->type = SyntheticEvent::InputMethod;
    result->inputMethodText = event.commitString().toUtf8();
    setEventFocusObject(result, receiver);
    return true;
}

/// A move directly behind a change of state or size is its side effect, not
/// something that the user did.
bool translateMoveEvent(QObject *receiver, const QMoveEvent &event, SyntheticEvent *result)
{
    if (previousEventType == QEvent::WindowStateChange || previousEventType == QEvent::Resize)
        return false;
    result->type = SyntheticEvent::WindowMove;
    result->oldWindowX = event.oldPos().x();
    result->oldWindowY = event.oldPos().y();
    result->windowX = event.pos().x();
    result->windowY = event.pos().y();
    setEventObject(result, wrapAndRegisterQObject(receiver));
    return true;
}

/// Whether a top-level window or popup has just got its first real size from
/// next to nothing.
bool isUnfolding(const QWindow &window, const QResizeEvent &event)
{
    constexpr int windowBit = 0x1;
    constexpr int popupBit = 0x8;
    constexpr int nextToNothing = 8;
    return (static_cast<int>(window.flags().toInt()) & (windowBit | popupBit))
        && event.oldSize().height() < nextToNothing && event.size().height() > nextToNothing;
}

bool isResizedByUser(const QWindow &window, const QResizeEvent &event)
{
    return window.isVisible() && window.isExposed() && !isUnfolding(window, event);
}

bool translateResizeEvent(QObject *receiver, const QResizeEvent &event, SyntheticEvent *result)
{
    if (event.oldSize().isNull())
        return false;
    const QWindow *window = asWindow(receiver);
    if (window && !isResizedByUser(*window, event))
        return false;
    result->type = SyntheticEvent::WindowResize;
    result->windowWidth = event.size().width();
    result->windowHeight = event.size().height();
    setEventObject(result, wrapAndRegisterQObject(receiver));
    return true;
}

/// Whether the window has something that closes it. A window that customises
/// its frame has just the buttons that it names.
bool canBeClosedByUser(const QWindow &window)
{
    if (window.parent(QWindow::ExcludeTransients))
        return false;
    if (window.flags() & Qt::WindowCloseButtonHint)
        return true;
    if (window.flags() & Qt::CustomizeWindowHint)
        return false;
    switch (window.type()) {
    case Qt::Window:
    case Qt::Dialog:
    case Qt::Sheet:
    case Qt::Tool: return true;
    default: return false;
    }
}

bool translateCloseEvent(QObject *receiver, SyntheticEvent *result)
{
    const QWindow *window = asWindow(receiver);
    if (!window || !canBeClosedByUser(*window))
        return false;
    result->type = SyntheticEvent::WindowClose;
    setEventObject(result, wrapAndRegisterQObject(receiver));
    return true;
}

/// In the values that scripts use.
qint32 windowStateValue(Qt::WindowState state)
{
    switch (state) {
    case Qt::WindowMaximized: return 2;
    case Qt::WindowMinimized: return 3;
    case Qt::WindowFullScreen: return 4;
    default: return 1;
    }
}

bool translateWindowStateChange(QObject *receiver, const QWindowStateChangeEvent &event, SyntheticEvent *result)
{
    const QWindow *window = asWindow(receiver);
    if (!window || event.oldState() == window->windowState())
        return false;
    result->type = SyntheticEvent::WindowStateChange;
    result->windowState = windowStateValue(window->windowState());
    setEventObject(result, wrapAndRegisterQObject(receiver));
    return true;
}

bool translateTouch(QObject *receiver, const QTouchEvent &event, SyntheticEvent::TouchEventType touchEventType,
                    SyntheticEvent *result)
{
    result->type = SyntheticEvent::Touch;
    result->touch.touchEventType = touchEventType;
    translateTouchEvent(result, receiver, event);
    return true;
}

bool translate(QObject *receiver, const QEvent &event, SyntheticEvent *result)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
        return translateMouseEvent(receiver, static_cast<const QMouseEvent &>(event), SyntheticEvent::Press, result);
    case QEvent::MouseButtonRelease:
        return translateMouseEvent(receiver, static_cast<const QMouseEvent &>(event), SyntheticEvent::Release, result);
    case QEvent::MouseButtonDblClick:
        return translateDoubleClick(receiver, static_cast<const QMouseEvent &>(event), result);
    case QEvent::MouseMove: return translateMouseMove(receiver, static_cast<const QMouseEvent &>(event), result);
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
        return translateKeyEvent(receiver, static_cast<const QKeyEvent &>(event), SyntheticEvent::KeyPress, result);
    case QEvent::KeyRelease:
        return translateKeyEvent(receiver, static_cast<const QKeyEvent &>(event), SyntheticEvent::KeyRelease, result);
    case QEvent::Move: return translateMoveEvent(receiver, static_cast<const QMoveEvent &>(event), result);
    case QEvent::Resize: return translateResizeEvent(receiver, static_cast<const QResizeEvent &>(event), result);
    case QEvent::Close: return translateCloseEvent(receiver, result);
    case QEvent::Wheel: return translateWheelEvent(receiver, static_cast<const QWheelEvent &>(event), result);
    case QEvent::InputMethod:
        return translateInputMethodEvent(receiver, static_cast<const QInputMethodEvent &>(event), result);
    case QEvent::WindowStateChange:
        return translateWindowStateChange(receiver, static_cast<const QWindowStateChangeEvent &>(event), result);
    case QEvent::TouchBegin:
        return translateTouch(receiver, static_cast<const QTouchEvent &>(event), SyntheticEvent::TouchBegin, result);
    case QEvent::TouchUpdate:
        return translateTouch(receiver, static_cast<const QTouchEvent &>(event), SyntheticEvent::TouchUpdate, result);
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        return translateTouch(receiver, static_cast<const QTouchEvent &>(event), SyntheticEvent::TouchEnd, result);
    default: return false;
    }
}

} // namespace

bool qtEventToSyntheticEvent(QObject *receiver, QEvent *event, SyntheticEvent *result)
{
    const QEvent::Type type = event->type();
    const bool recorded = translate(receiver, *event, result);
    previousEventType = type;
    return recorded;
}

} // namespace Vantle::QtWrapper
