#pragma once

#include "agent/calltarget.h"
#include "agent/digestion.h"
#include "agent/targets.h"
#include "hook/eventdata.h"
#include "hook/object.h"
#include "protocol/connection.h"

#include <QtCore/QObject>
#include <QtCore/QPoint>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

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

    /// Has \p handler called when the waiting is over and the function's turn has come.
    void onActing(std::function<void()> handler) { m_acting = std::move(handler); }

    /// One look at the object: whether there is nothing left to wait for, since
    /// the function was called, or can't be. If this \p isLast, the answer says
    /// what was waited for in vain.
    bool tryNow(bool isLast);

    /// The function's own way to end: the request has been answered.
    bool isOver() const { return m_responder.isOver(); }

private:
    void study();
    void addTarget(qsizetype argument, CallTarget::Needs needs, const CallTarget::Aim &aim);
    bool isFree(std::shared_ptr<CallTarget> target, bool isLast);
    std::optional<EventData> unseenStatement() const;
    void carryOut();
    void inputDelivered(const SharedPtr<Object> &result, const QString &problem);
    void failWith(const CallTarget &target, const Obstacle &obstacle);

    const Request m_request;
    const TargetFinder *m_finder;
    const Protocol::Responder m_responder;
    const std::function<QJsonObject(const SharedPtr<Object> &, QWindow *, QPoint)> m_answer;
    std::function<void()> m_acting;

    /// What the call acts on, the object whose function it is first. None for
    /// functions that act on nothing.
    std::vector<std::shared_ptr<CallTarget>> m_targets;
    Digestion m_digestion;
    bool m_hasEndedProgram = false; // after all of its input
};

} // namespace Vantle::Agent
