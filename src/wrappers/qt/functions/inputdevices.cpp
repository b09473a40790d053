#include "wrappers/qt/functions/inputdevices_p.h"

#include "wrappers/qt/functions/inputtarget_p.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QPointingDevice>
#include <QtGui/QStyleHints>
#include <QtGui/private/qhighdpiscaling_p.h>
#include <QtGui/qpa/qwindowsysteminterface.h>
#include <QtGui/qpa/qwindowsysteminterface_p.h>

#include <algorithm>
#include <array>
#include <utility>

namespace Vantle::QtWrapper {

namespace {

using Synchronous = QWindowSystemInterface::SynchronousDelivery;

struct ModifierKey
{
    Qt::KeyboardModifier modifier;
    Qt::Key key;
};

constexpr std::array modifierKeys{
    ModifierKey{Qt::ControlModifier, Qt::Key_Control},
    ModifierKey{Qt::ShiftModifier, Qt::Key_Shift},
    ModifierKey{Qt::AltModifier, Qt::Key_Alt},
    ModifierKey{Qt::MetaModifier, Qt::Key_Meta},
};

// Windows of the platform count in pixels of the device.
QPointF nativeLocal(const QWindow *window, QPointF global)
{
    return QHighDpi::toNativeLocalPosition(window ? window->mapFromGlobal(global) : global, window);
}

QPointF nativeGlobal(const QWindow *window, QPointF global)
{
    return QHighDpi::toNativeGlobalPosition(global, window);
}

} // namespace

InputDevices::InputDevices() = default;

InputDevices::~InputDevices()
{
    delete m_touchScreen;
}

void InputDevices::advanceTime(int milliseconds)
{
    m_time += static_cast<ulong>(std::max(milliseconds, 0));
}

void InputDevices::separateFromEarlierPresses()
{
    const auto interval = static_cast<ulong>(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    const auto clock = static_cast<ulong>(QWindowSystemInterfacePrivate::eventTime.elapsed());
    m_time = std::max({clock, m_time + 1, m_lastPress + interval + 1});
}

// No two events of one time: a key press that equals the one before it in
// everything would count as its repetition.
ulong InputDevices::now()
{
    m_lastEvent = m_time = std::max(m_time, m_lastEvent + 1);
    return m_time;
}

void InputDevices::moveMouse(QWindow *window, QPointF global)
{
    sendMouse(window, global, Qt::NoButton, QEvent::MouseMove);
}

void InputDevices::pressButton(QWindow *window, QPointF global, Qt::MouseButton button)
{
    if (!m_buttons)
        m_pressWindow = window;
    m_buttons |= button;
    sendMouse(window, global, button, QEvent::MouseButtonPress);
}

void InputDevices::releaseButton(QWindow *window, QPointF global, Qt::MouseButton button)
{
    m_buttons &= ~button;
    sendMouse(window, global, button, QEvent::MouseButtonRelease);
    // While a button was held, the window had the mouse wherever that was.
    if (!m_buttons && m_mouseWindow && !areaOf(m_mouseWindow).contains(global))
        leaveWindow();
}

// The platform tells a window when the mouse comes and goes, ahead of what it
// does there.
void InputDevices::crossInto(QWindow *window, QPointF global)
{
    const QPointer<QWindow> guard(window);
    leaveWindow();
    if (!guard)
        return;
    m_mouseWindow = guard;
    m_pointerKeeper.expect(QEvent::Enter);
    QWindowSystemInterface::handleEnterEvent<Synchronous>(guard, nativeLocal(guard, global),
                                                          nativeGlobal(guard, global));
}

void InputDevices::leaveWindow()
{
    const QPointer<QWindow> left = std::exchange(m_mouseWindow, nullptr);
    if (!left)
        return;
    m_pointerKeeper.expect(QEvent::Leave);
    QWindowSystemInterface::handleLeaveEvent<Synchronous>(left);
}

void InputDevices::sendMouse(QWindow *target, QPointF global, Qt::MouseButton button, QEvent::Type type)
{
    const QPointer<QWindow> window(target);
    m_mousePosition = global;
    m_pointerKeeper.take();
    if (type == QEvent::MouseMove && !m_buttons && window != m_mouseWindow)
        crossInto(window, global);
    m_mouseWindow = window;
    const PointerKeeper::OwnEvent own(&m_pointerKeeper);
    const ulong time = now();
    if (type == QEvent::MouseButtonPress)
        m_lastPress = time;
    QWindowSystemInterface::handleMouseEvent<Synchronous>(window, time, nativeLocal(window, global),
                                                          nativeGlobal(window, global), m_buttons, button, type,
                                                          m_modifiers);
}

void InputDevices::turnWheel(QWindow *window, QPointF global, QPoint angle)
{
    // Has no form that says how it is delivered, so the queue is run at once.
    QWindowSystemInterface::handleWheelEvent(window, now(), nativeLocal(window, global), nativeGlobal(window, global),
                                             QPoint(), angle, m_modifiers);
    QWindowSystemInterface::sendWindowSystemEvents(QEventLoop::AllEvents);
}

void InputDevices::pressKey(QWindow *window, int key, Qt::KeyboardModifiers modifiers, const QString &text)
{
    m_keys.insert(key, modifiers);
    m_keyWindow = window;
    sendKey(window, QEvent::KeyPress, key, modifiers, text);
}

void InputDevices::releaseKey(QWindow *window, int key, Qt::KeyboardModifiers modifiers, const QString &text)
{
    m_keys.remove(key);
    sendKey(window, QEvent::KeyRelease, key, modifiers, text);
}

void InputDevices::sendKey(QWindow *window, QEvent::Type type, int key, Qt::KeyboardModifiers modifiers,
                           const QString &text)
{
    QWindowSystemInterface::handleKeyEvent<Synchronous>(window, now(), type, key, m_modifiers | modifiers, text);
}

// The events carry the modifiers without the key's own: Qt adds it to press and
// release, so that who counts modifiers by key events gets back to none.
void InputDevices::pressModifiers(QWindow *window, Qt::KeyboardModifiers modifiers)
{
    m_keyWindow = window;
    const QPointer<QWindow> guard(window);
    for (const ModifierKey &candidate : modifierKeys) {
        if (!modifiers.testFlag(candidate.modifier) || m_modifiers.testFlag(candidate.modifier))
            continue;
        const Qt::KeyboardModifiers others = std::exchange(m_modifiers, m_modifiers | candidate.modifier);
        QWindowSystemInterface::handleKeyEvent<Synchronous>(guard, now(), QEvent::KeyPress, candidate.key, others);
    }
}

void InputDevices::releaseModifiers(QWindow *window, Qt::KeyboardModifiers modifiers)
{
    const QPointer<QWindow> guard(window);
    for (auto it = modifierKeys.rbegin(); it != modifierKeys.rend(); ++it) {
        if (!(modifiers & ~keptModifiers()).testFlag(it->modifier) || !m_modifiers.testFlag(it->modifier))
            continue;
        m_modifiers.setFlag(it->modifier, false);
        QWindowSystemInterface::handleKeyEvent<Synchronous>(guard, now(), QEvent::KeyRelease, it->key, m_modifiers);
    }
}

Qt::KeyboardModifiers InputDevices::keptModifiers() const
{
    Qt::KeyboardModifiers kept = m_heldModifiers;
    for (const Qt::KeyboardModifiers modifiers : m_modifiersOfButtons)
        kept |= modifiers;
    return kept;
}

void InputDevices::holdModifiersWith(Qt::MouseButton button, QWindow *window, Qt::KeyboardModifiers modifiers)
{
    m_modifiersOfButtons[button] |= modifiers;
    pressModifiers(window, modifiers);
}

void InputDevices::releaseModifiersOf(Qt::MouseButton button, QWindow *window)
{
    releaseModifiers(window, m_modifiersOfButtons.take(button));
}

void InputDevices::holdModifiers(QWindow *window, Qt::KeyboardModifiers modifiers)
{
    m_heldModifiers |= modifiers;
    pressModifiers(window, modifiers);
}

void InputDevices::dropModifiers(QWindow *window, Qt::KeyboardModifiers modifiers)
{
    m_heldModifiers &= ~modifiers;
    releaseModifiers(window, modifiers);
}

HeldInput InputDevices::held() const
{
    return {m_mouseWindow, m_mousePosition, m_buttons, m_pressWindow, m_keys.keys(), m_heldModifiers};
}

void InputDevices::touch(QWindow *window, const QList<Finger> &fingers)
{
    QList<QWindowSystemInterface::TouchPoint> points;
    bool staysDown = false;
    bool begins = false;
    for (const Finger &finger : fingers) {
        QWindowSystemInterface::TouchPoint point;
        point.id = finger.id;
        point.state = finger.state;
        point.pressure = finger.state == QEventPoint::Released ? 0 : finger.pressure;
        QRectF area(0, 0, finger.diameter, finger.diameter);
        area.moveCenter(finger.position);
        point.area = QHighDpi::toNativePixels(area, window);
        points.append(point);
        staysDown |= finger.state != QEventPoint::Released;
        begins |= finger.state == QEventPoint::Pressed;
    }
    m_isTouching = staysDown;
    m_touchWindow = window;
    const ulong time = now();
    if (begins)
        m_lastPress = time;
    QWindowSystemInterface::handleTouchEvent<Synchronous>(window, time, touchScreen(), points, m_modifiers);
}

const QPointingDevice *InputDevices::touchScreen()
{
    if (!m_touchScreen) {
        using Capability = QInputDevice::Capability;
        constexpr int maximumPoints = 32;
        constexpr qint64 systemId = 0x76616e74;
        m_touchScreen = new QPointingDevice(QStringLiteral("touch screen of scripts"), systemId,
                                            QInputDevice::DeviceType::TouchScreen, QPointingDevice::PointerType::Finger,
                                            Capability::Position | Capability::Area | Capability::Pressure,
                                            maximumPoints, 0);
        QWindowSystemInterface::registerInputDevice(m_touchScreen);
    }
    return m_touchScreen;
}

void InputDevices::letGo()
{
    if (std::exchange(m_isTouching, false))
        QWindowSystemInterface::handleTouchCancelEvent<Synchronous>(m_touchWindow, now(), touchScreen(), m_modifiers);
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
        if (m_buttons.testFlag(button))
            releaseButton(m_pressWindow, m_mousePosition, button);
    }
    const QHash<int, Qt::KeyboardModifiers> keys = m_keys;
    for (auto it = keys.cbegin(); it != keys.cend(); ++it)
        releaseKey(m_keyWindow, it.key(), it.value(), QString());
    m_modifiersOfButtons.clear();
    m_heldModifiers = {};
    releaseModifiers(m_keyWindow, m_modifiers);
}

} // namespace Vantle::QtWrapper
