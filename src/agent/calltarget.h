#pragma once

#include "agent/stillness.h"
#include "agent/targets.h"
#include "hook/object.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtCore/Qt>
#include <QtGui/QWindow>

#include <optional>

namespace Vantle::Agent {

/// What is in the way of acting on an object. Names are for messages, as they
/// cost a walk over the scene each.
struct Obstacle
{
    QString reason;
    SharedPtr<Object> named{}; ///< whose name stands for %1 in the reason, if any
    SharedPtr<Object> cover{}; ///< what lies or stands in front of the object, if any

    QString inWords() const;
    QString nameOfCover() const;
};

/// One object that a call acts on, and what it takes to act on it.
class CallTarget
{
public:
    /// What the function wants of the object before it is called, from little to much.
    enum class Needs {
        Existence,
        Visibility, ///< of a window, whatever else is the matter with it
        Readiness,  ///< a user could act on it, and it has come to rest
        FreePoint   ///< and the input would get to it
    };

    /// How the call points at its object.
    struct Aim
    {
        std::optional<QPoint> point; ///< in the object's coordinates; its middle without
        Qt::MouseButton button = Qt::LeftButton;
    };

    /// The object by its \p name, or \p object itself if that is empty.
    CallTarget(const QString &name, const SharedPtr<Object> &object, Needs needs, const Aim &aim);

    /// The object, alive, as far as one look can tell; null if there is none.
    SharedPtr<Object> lookWith(const TargetFinder &finder) const;
    /// Whether a lookup by name may find it later.
    bool isByName() const { return !m_target.name.isEmpty(); }
    const Target &target() const { return m_target; }
    /// The name by which the script called it, or that of the object itself.
    QString nameInMessages() const;

    /// One look at what is in the way of acting on \p object, which lookWith()
    /// gave. May run scripts of extensions, and any object may be gone afterwards.
    std::optional<Obstacle> obstacle(const SharedPtr<Object> &object);
    /// The next look for motion is the first again.
    void forgetMotion() { m_stillness.forget(); }

    /// Where the last look found the aim: a window, null if nobody can point at
    /// the object, and a point in its coordinates.
    QWindow *window() const { return m_window; }
    QPoint pointInWindow() const { return m_pointInWindow; }

private:
    void takeAim(const SharedPtr<Object> &object);
    std::optional<Obstacle> popupUnderWay(const SharedPtr<Object> &object);
    std::optional<Obstacle> motion(const SharedPtr<Object> &object);
    std::optional<Obstacle> cover(const SharedPtr<Object> &object);
    QString whereItIsAimedAt() const;

    SharedPtr<Object> m_object; // null if it is called by name
    Target m_target;
    Needs m_needs;
    Aim m_aim;
    Stillness m_stillness;
    QElapsedTimer m_sincePopup; // was first seen under way
    QElapsedTimer m_sinceDoubt; // whether what is in front lets the press through

    QPointer<QWindow> m_window;
    QPoint m_pointInWindow;
    QPointF m_scenePoint; // in the item's own window
};

} // namespace Vantle::Agent
