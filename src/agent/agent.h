#pragma once

#include "agent/environment.h"
#include "protocol/connection.h"
#include "protocol/messages.h"

#include <QtCore/QObject>

#include <memory>

namespace Vantle::Agent {

class Commands;
class Host;
class RecordingSession;

/// Our side inside the program under test: calls the tool, and does what it asks.
///
/// Made while the application object is still being made, so the constructor
/// touches nothing; the rest follows from the event loop. When the tool can't
/// be reached or goes away, the agent falls silent and the program runs on.
/// Lives on the thread that owns the user interface.
class Agent final : public QObject
{
    Q_OBJECT

public:
    explicit Agent(const Invitation &invitation);
    ~Agent() override;

private:
    void connectToTool();
    void introduceOurselves();
    void handleHelloReply(const Protocol::Reply &reply);
    void beginWork(const Protocol::HelloResult &settings);
    void stopRecording();

    Invitation m_invitation;
    std::unique_ptr<Protocol::Connection> m_connection;
    // In this order: commands and recording need the host.
    std::unique_ptr<Host> m_host;
    std::unique_ptr<Commands> m_commands;
    std::unique_ptr<RecordingSession> m_session;
};

} // namespace Vantle::Agent
