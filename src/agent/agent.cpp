#include "agent/agent.h"

#include "agent/commands.h"
#include "agent/host.h"
#include "agent/recording/recordingsession.h"
#include "protocol/endpoint.h"
#include "wrappers/qt/functions/inputplayer.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtGui/QGuiApplication>
#include <QtNetwork/QLocalSocket>

namespace Vantle::Agent {

namespace {

// The tool listens before it starts the program, so a call that isn't taken
// at once never will be.
constexpr int ConnectTimeout = 1000;

// How long the program's end may be held up by a tool that doesn't read.
constexpr std::chrono::seconds FarewellTimeout(1);

} // namespace

Agent::Agent(const Invitation &invitation) : m_invitation(invitation)
{
    QMetaObject::invokeMethod(this, &Agent::connectToTool, Qt::QueuedConnection);
}

Agent::~Agent()
{
    stopRecording();
}

void Agent::connectToTool()
{
    auto socket = std::make_unique<QLocalSocket>();
    socket->connectToServer(m_invitation.socket);
    if (!socket->waitForConnected(ConnectTimeout)) {
        qWarning("vantle: cannot reach the tool that started this program: %s", qPrintable(socket->errorString()));
        return;
    }
    // Whoever we call can do everything here.
    const auto peer = Protocol::peerOf(socket->socketDescriptor());
    if (!peer || !peer->isSameUser) {
        qWarning("vantle: %s belongs to another user, who is not talked to", qPrintable(m_invitation.socket));
        return;
    }
    m_connection = std::make_unique<Protocol::Connection>(socket.release());
    connect(m_connection.get(), &Protocol::Connection::disconnected, this, &Agent::stopRecording);
    connect(m_connection.get(), &Protocol::Connection::protocolError, this,
            [](const QString &reason) { qWarning("vantle: lost the tool: %s", qPrintable(reason)); });
    // What the user did last would be lost if it were kept back until a
    // double click is ruled out.
    connect(qApp, &QCoreApplication::aboutToQuit, this, [this] {
        stopRecording();
        m_connection->waitForSent(FarewellTimeout);
    });

    m_connection->onRequest(Protocol::Method::ping, [](const QJsonObject &, const Protocol::Responder &responder) {
        const bool isPlaying = !QtWrapper::InputPlayer::self()->isIdle();
        responder.respond(QJsonObject{{QStringLiteral("playing"), isPlaying}});
    });
    m_connection->onRequest(Protocol::Method::stopRecording,
                            [this](const QJsonObject &, const Protocol::Responder &responder) {
                                // What the user did before asking may still be on its way from
                                // the window system.
                                QGuiApplication::sync();
                                stopRecording();
                                responder.respond();
                            });
    introduceOurselves();
}

void Agent::introduceOurselves()
{
    Protocol::Hello hello;
    hello.token = QString::fromLatin1(m_invitation.token);
    hello.version = QStringLiteral(VANTLE_VERSION);
    hello.pid = QCoreApplication::applicationPid();
    hello.program = QCoreApplication::applicationFilePath();
    hello.qtVersion = QString::fromLatin1(qVersion());
    hello.platform = QGuiApplication::platformName();
    m_connection->sendRequest(Protocol::Method::hello, hello.toJson(),
                              [this](const Protocol::Reply &reply) { handleHelloReply(reply); });
}

void Agent::handleHelloReply(const Protocol::Reply &reply)
{
    if (reply.isError()) {
        qWarning("vantle: the tool turned the agent away: %s", qPrintable(reply.error->message));
        m_connection->close();
        return;
    }
    QString error;
    const auto settings = Protocol::HelloResult::fromJson(reply.result.toObject(), &error);
    if (settings) {
        beginWork(*settings);
    } else {
        qWarning("vantle: the tool's answer makes no sense: %s", qPrintable(error));
        m_connection->close();
    }
}

void Agent::beginWork(const Protocol::HelloResult &settings)
{
    m_host = std::make_unique<Host>(settings, m_connection.get(), QFileInfo(m_invitation.socket).absolutePath());
    m_commands = std::make_unique<Commands>(m_host.get(), m_connection.get());
    if (settings.record)
        m_session = std::make_unique<RecordingSession>(m_host.get(), m_connection.get(), settings.digests);
}

void Agent::stopRecording()
{
    m_session.reset();
}

} // namespace Vantle::Agent
