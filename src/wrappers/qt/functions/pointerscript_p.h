#pragma once

#include "wrappers/qt/functions/inputaction_p.h"
#include "wrappers/qt/functions/inputtarget_p.h"
#include "wrappers/qt/functions/interactions_p.h"

#include <QtCore/QPointF>
#include <QtCore/QPointer>

#include <functional>

namespace Vantle::QtWrapper {

// Milliseconds between steps; short, as nobody but the program looks at them.
constexpr int Moment = 10;
constexpr int PressHold = 20;
/// So long does a pointer claim to rest at the end of a drag that nothing goes
/// on moving by itself.
constexpr int RestAfterDrag = 200;

/// Writes the steps of what a pointer does in one window, from one point on.
class PointerScript
{
public:
    /// \p plan must outlive the script.
    PointerScript(const PointOfAction &start, InputPlan *plan);

    /// No steps for no modifiers.
    void pressModifiers(Qt::KeyboardModifiers modifiers);
    void releaseModifiers(Qt::KeyboardModifiers modifiers);

    /// Where the pointer is after the steps so far, on the screen.
    QPointF position() const { return m_position; }

protected:
    void add(InputStep step) { m_plan->steps.push_back(std::move(step)); }
    const QPointer<QWindow> &window() const { return m_window; }
    void setPosition(QPointF global) { m_position = global; }

private:
    QPointer<QWindow> m_window;
    QPointF m_position;
    InputPlan *m_plan;
};

/// Whether a user could act on \p object; if not, the script is told why.
bool isReadyFor(const QString &function, const SharedPtr<Object> &object, const std::optional<QPoint> &coordinates);

/// Hands over an action that goes to the point that \p call names. What it
/// consists of \p write settles when its turn comes, and returns why it can't,
/// empty on success. Null, and the script is told, if it can't be done now.
SharedPtr<Object> playAtPoint(const QString &function, const Interaction &call,
                              const std::function<QString(const PointOfAction &start, InputPlan *plan)> &write);

} // namespace Vantle::QtWrapper
