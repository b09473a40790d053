#pragma once

#include "agent/objecthandles.h"
#include "agent/targets.h"
#include "agent/waiting.h"
#include "protocol/connection.h"

#include <QtCore/QJsonObject>
#include <QtCore/QObject>

namespace Vantle::Agent {

class Host;
class ScriptCall;

/// Answers the tool's requests about the objects of the program. One function
/// for each method; docs/protocol.md says what they take and give.
///
/// Most are answered at once, from the call that brings them. Lives on the
/// thread of the user interface; may go at any time, and then leaves requests
/// that are still waiting without an answer.
class Commands final : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive the commands.
    Commands(Host *host, Protocol::Connection *connection);
    ~Commands() override;

private:
    using Responder = Protocol::Responder;
    /// A result, or the error that takes its place.
    using Outcome = Protocol::Reply;

    void registerImmediate(const QString &method, Outcome (Commands::*command)(const QJsonObject &));
    void registerWaiting(const QString &method, void (Commands::*command)(const QJsonObject &, const Responder &));

    Outcome properties(const QJsonObject &params);
    Outcome setProperty(const QJsonObject &params);
    Outcome invoke(const QJsonObject &params);
    Outcome children(const QJsonObject &params);
    Outcome describe(const QJsonObject &params);
    Outcome tree(const QJsonObject &params);
    Outcome digest(const QJsonObject &params);
    Outcome snapshot(const QJsonObject &params);
    Outcome functions(const QJsonObject &params);
    Outcome grab(const QJsonObject &params);
    Outcome release(const QJsonObject &params);
    Outcome roundTrip(const QJsonObject &params);

    void find(const QJsonObject &params, const Responder &responder);
    void call(const QJsonObject &params, const Responder &responder);
    void settle(const QJsonObject &params, const Responder &responder);
    void quit(const QJsonObject &params, const Responder &responder);

    Host *m_host;
    Protocol::Connection *m_connection;
    ObjectHandles m_handles;
    TargetFinder m_finder;
    Waiting m_waiting;
};

} // namespace Vantle::Agent
