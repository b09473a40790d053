#pragma once

#include "agent/stillness.h"
#include "agent/targets.h"
#include "hook/eventdata.h"
#include "hook/object.h"
#include "protocol/connection.h"

#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QPointer>

#include <functional>
#include <memory>
#include <optional>

class QWindow;

namespace Vantle::Agent {

/// One call of a script function, from the moment when the script wants it
/// until the program has digested it.
///
/// A function that acts on an object waits first, as a user would: until the
/// object is there, can be acted on, has come to rest, and lies free at the
/// point in question.
class ScriptCall final : public QObject
{
    Q_OBJECT

public:
    struct Request
    {
        QString function;
        ObjectList arguments;
    };

    /// \p finder must outlive the call, \p encodeResult is used once at the end.
    ScriptCall(const Request &request, const TargetFinder *finder, const Protocol::Responder &responder,
               std::function<QJsonObject(const SharedPtr<Object> &result, QWindow *window, QPoint point)> answer);
    ~ScriptCall() override;

    /// One look at the object: whether there is nothing left to wait for, since
    /// the function was called, or can't be. If this \p isLast, the answer says
    /// what was waited for in vain.
    bool tryNow(bool isLast);

    /// The function's own way to end: the request has been answered.
    bool isOver() const { return m_responder.isOver(); }

private:
    /// What the function wants of its object before it is called.
    enum class Needs {
        Nothing,
        Existence,
        Readiness,
        FreePoint
    };

    /// What is in the way of the call. Names are for the answer, as they cost a
    /// walk over the scene each: %1 in the reason stands for that of the other.
    struct Obstacle
    {
        QString reason;
        SharedPtr<Object> other{};
        bool isCover = false;
    };

    void study();
    SharedPtr<Object> object() const;
    std::optional<Obstacle> obstacle(const SharedPtr<Object> &object);
    std::optional<Obstacle> motion(const SharedPtr<Object> &object);
    std::optional<Obstacle> cover(const SharedPtr<Object> &object);
    void choosePoint(const SharedPtr<Object> &object);
    std::optional<EventData> unseenStatement() const;
    void carryOut();
    void inputDelivered(const SharedPtr<Object> &result, const QString &problem);
    void waitUntilDigested(const SharedPtr<Object> &result);
    void failWith(const Obstacle &obstacle);

    const Request m_request;
    const TargetFinder *m_finder;
    const Protocol::Responder m_responder;
    const std::function<QJsonObject(const SharedPtr<Object> &, QWindow *, QPoint)> m_answer;

    Needs m_needs = Needs::Nothing;
    Target m_target;                       // if the object is given by its name
    std::optional<QPoint> m_pointInObject; // if the call has one

    Stillness m_stillness;
    bool m_isCarriedOut = false;

    QPointer<QWindow> m_window; // where it acted
    QPoint m_point;             // in its coordinates
    QPointF m_scenePoint;       // in those of the item's own window
};

} // namespace Vantle::Agent
