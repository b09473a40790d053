#pragma once

#include "wrappers/qt/functions/inputaction_p.h"
#include "wrappers/qt/functions/pointerkeeper_p.h"

#include <QtCore/QEvent>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QPointF>
#include <QtCore/QPointer>
#include <QtGui/QEventPoint>
#include <QtGui/QWindow>

class QPointingDevice;

namespace Vantle::QtWrapper {

/// One finger in one touch event. \p position is on the screen.
struct Finger
{
    int id = 0;
    QEventPoint::State state = QEventPoint::Pressed;
    QPointF position;
    qreal pressure = 1;
    qreal diameter = 0;
};

/// The mouse, the keyboard and the touch screen with which actions are played.
///
/// Everything goes in where the platform's own input does, so that Qt treats it
/// alike: double clicks, shortcuts, grabs and synthesized events come about by
/// themselves. It is delivered before the call returns, and the program may do
/// anything meanwhile, run an event loop and destroy the window included.
///
/// Remembers what is held down. Times are counted here, not taken from the
/// clock: they say how the user moved, however busy the machine is.
class InputDevices
{
public:
    InputDevices();
    ~InputDevices();

    /// Lets \p milliseconds pass for the events to come.
    void advanceTime(int milliseconds);
    /// Lets so much time pass that the next press or touch begins something
    /// new: no double click with an earlier one.
    void separateFromEarlierPresses();

    /// Points are on the screen. With a null window they go to whatever window
    /// is there.
    void moveMouse(QWindow *window, QPointF global);
    void pressButton(QWindow *window, QPointF global, Qt::MouseButton button);
    void releaseButton(QWindow *window, QPointF global, Qt::MouseButton button);
    /// \p angle in eighths of a degree.
    void turnWheel(QWindow *window, QPointF global, QPoint angle);

    /// \p modifiers come on top of those whose keys are held.
    void pressKey(QWindow *window, int key, Qt::KeyboardModifiers modifiers, const QString &text);
    void releaseKey(QWindow *window, int key, Qt::KeyboardModifiers modifiers, const QString &text);
    /// The keys of \p modifiers, in a fixed order and back. Those that are held
    /// with a button or for themselves stay down.
    void pressModifiers(QWindow *window, Qt::KeyboardModifiers modifiers);
    void releaseModifiers(QWindow *window, Qt::KeyboardModifiers modifiers);

    /// Presses the keys of \p modifiers and keeps them down for as long as
    /// \p button is held, until releaseModifiersOf().
    void holdModifiersWith(Qt::MouseButton button, QWindow *window, Qt::KeyboardModifiers modifiers);
    void releaseModifiersOf(Qt::MouseButton button, QWindow *window);
    /// Presses the keys of \p modifiers and keeps them down until dropModifiers().
    void holdModifiers(QWindow *window, Qt::KeyboardModifiers modifiers);
    void dropModifiers(QWindow *window, Qt::KeyboardModifiers modifiers);

    /// All fingers that are on the screen, and those that leave it.
    void touch(QWindow *window, const QList<Finger> &fingers);

    HeldInput held() const;

    /// Lets go of everything, in windows that may be gone.
    void letGo();

private:
    Q_DISABLE_COPY_MOVE(InputDevices)

    Qt::KeyboardModifiers keptModifiers() const;
    void crossInto(QWindow *window, QPointF global);
    void leaveWindow();
    void sendMouse(QWindow *window, QPointF global, Qt::MouseButton button, QEvent::Type type);
    void sendKey(QWindow *window, QEvent::Type type, int key, Qt::KeyboardModifiers modifiers, const QString &text);
    const QPointingDevice *touchScreen();
    ulong now();

    ulong m_time = 0;
    ulong m_lastEvent = 0;
    ulong m_lastPress = 0;
    Qt::MouseButtons m_buttons;
    QPointF m_mousePosition;
    Qt::KeyboardModifiers m_modifiers;
    QPointer<QWindow> m_mouseWindow; ///< where the mouse is
    QPointer<QWindow> m_pressWindow;
    QPointer<QWindow> m_keyWindow;
    QPointer<QWindow> m_touchWindow;
    QHash<Qt::MouseButton, Qt::KeyboardModifiers> m_modifiersOfButtons;
    Qt::KeyboardModifiers m_heldModifiers;    ///< for themselves
    QHash<int, Qt::KeyboardModifiers> m_keys; ///< held keys, but for modifiers
    bool m_isTouching = false;
    PointerKeeper m_pointerKeeper;
    QPointer<QPointingDevice> m_touchScreen;
};

} // namespace Vantle::QtWrapper
