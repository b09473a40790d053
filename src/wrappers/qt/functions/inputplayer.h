#pragma once

#include "wrappers/qt/wrapperglobal.h"

#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QString>

#include <functional>
#include <memory>

class QWindow;

namespace Vantle::QtWrapper {

struct InputAction;

/// Plays the input of scripts back to the program, step by step, as the event
/// loop turns.
///
/// A script function only hands an action over and returns: input takes time,
/// since a long click must be held and a drag has to move. Actions are carried
/// out one after the other, in the order in which they came. A step that opens
/// an event loop of its own, such as a click that shows a modal dialog, holds
/// nothing up: the next steps come from that loop.
///
/// Buttons and keys that a script presses by themselves stay held from one
/// action to the next.
///
/// When the object or the window dies in the middle of an action, what is held
/// is let go, and the action ends with an error. That is no error if all that
/// is left is to let go, since the input was there.
///
/// Lives on the thread that owns the user interface, from the first call of
/// self() until the end of the application object.
class VANTLEQTWRAPPER_EXPORT InputPlayer final : public QObject
{
    Q_OBJECT

public:
    /// What became of an action: \p error is empty when all went well.
    using Callback = std::function<void(const QString &error)>;

    /// The one player. There must be an application object.
    static InputPlayer *self();
    ~InputPlayer() override;

    /// Whether every step of every action has been delivered.
    bool isIdle() const;

    /// Same, but true already while the last step is still being delivered, such
    /// as a click that ends the program.
    bool isPlayed() const;

    /// Calls \p callback, once, when the actions handed over so far have been
    /// delivered, with the error of the last one of them. Always from the event
    /// loop, never from within this call, and before a later action begins.
    /// When idle already: with the error of the last action, if nobody asked.
    ///
    /// So whoever has just called a script function learns by this how it went.
    /// That the input is delivered doesn't mean that its last step has returned
    /// from an event loop that it opened.
    void whenIdle(Callback callback);

    /// Lets go of all buttons and keys that scripts hold beyond the ends of
    /// their actions. For the end of a script. Doesn't make the player.
    static void letGo();

    /// Where the action happens that is being played or was played last: its
    /// window, null before the first action and after the window's end, and the
    /// point in the window's coordinates. Meant to be asked from a callback of
    /// whenIdle(), to mark the point in a picture.
    QWindow *lastWindow() const;
    QPointF lastPoint() const;

    /// Has \p callback called just before the first step of each action; empty
    /// for nothing. Who records what is played ends the pending statement here,
    /// as two clicks of a script come faster than those of a user and would be
    /// taken for a double click. Doesn't make the player.
    static void setBeforeAction(std::function<void()> callback);

    /// Calls what setBeforeAction() was given. For whoever carries an action out
    /// without the player, since it needs no input.
    static void announceAction();

    /// Queues \p action. For the script functions.
    void play(InputAction action);

private:
    explicit InputPlayer(QObject *parent);

    class Private;
    std::unique_ptr<Private> m_private;
};

} // namespace Vantle::QtWrapper
