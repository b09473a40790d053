#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QJsonValue>
#include <QtCore/QLatin1String>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

/// The messages of agent and tool as plain records. Each `toJson` gives the
/// parameters (or the result) of a message; each `fromJson` gives the record,
/// or nothing if a field is missing or of a wrong type, and then says in
/// \p error, if given, which one. Fields that are not known are ignored, so
/// that either side may be the newer one.
namespace Vantle::Protocol {

/// Raised when a message changes so that an older peer would misread it.
inline constexpr int protocolVersion = 1;

/// Names of requests and notifications.
namespace Method {
inline constexpr QLatin1String hello("hello");                 ///< request, agent to tool
inline constexpr QLatin1String statement("statement");         ///< notification, agent to tool
inline constexpr QLatin1String comment("comment");             ///< notification, agent to tool
inline constexpr QLatin1String pending("pending");             ///< notification, agent to tool
inline constexpr QLatin1String digest("digest");               ///< notification to the tool, request to the agent
inline constexpr QLatin1String log("log");                     ///< notification, agent to tool
inline constexpr QLatin1String acting("acting");               ///< notification, agent to tool
inline constexpr QLatin1String stopRecording("stopRecording"); ///< request, tool to agent
inline constexpr QLatin1String ping("ping");                   ///< request, tool to agent

// Requests, tool to agent, about the objects of the program. Their parameters
// and results are described in docs/protocol.md.
inline constexpr QLatin1String find("find");
inline constexpr QLatin1String properties("properties");
inline constexpr QLatin1String setProperty("setProperty");
inline constexpr QLatin1String invoke("invoke");
inline constexpr QLatin1String children("children");
inline constexpr QLatin1String describe("describe");
inline constexpr QLatin1String tree("tree");
inline constexpr QLatin1String snapshot("snapshot");
inline constexpr QLatin1String functions("functions");
inline constexpr QLatin1String call("call");
inline constexpr QLatin1String grab("grab");
inline constexpr QLatin1String release("release");
inline constexpr QLatin1String settle("settle");
inline constexpr QLatin1String roundTrip("roundTrip");
inline constexpr QLatin1String quit("quit");
} // namespace Method

/// The agent's first message: who it is.
struct Hello
{
    QString token;
    int protocol = protocolVersion;
    QString version;
    qint64 pid = 0;
    QString program;
    QString qtVersion;
    QString platform;

    QJsonObject toJson() const;
    static std::optional<Hello> fromJson(const QJsonObject &json, QString *error = nullptr);
};

/// The tool's answer to the agent's hello: what the agent is to do.
struct HelloResult
{
    bool record = false;
    int debugCompression = 0;
    QStringList classesWithoutCoordinates;
    QStringList extensionDirectories; ///< further ones, asked in this order
    QString namesFile;                ///< path of the file with the aliases; empty if there is none
    bool standardExtension = true;    ///< let the extension that comes with the library answer
    bool digests = false;             ///< send a digest of what there is with each statement
    bool strict = false;              ///< a name that fits several objects is an error

    QJsonObject toJson() const;
    static std::optional<HelloResult> fromJson(const QJsonObject &json, QString *error = nullptr);
};

/// One argument of a statement. `type` is the class of the argument in the
/// function's signature, e.g. "int" or "Qt::MouseButton"; `value` is a number
/// or a string.
struct StatementArgument
{
    QString name;
    QString type;
    QJsonValue value;
};

/// One recorded statement.
struct Statement
{
    QString function;
    QString object; ///< selector or alias; empty if the function has no object
    QList<StatementArgument> arguments;
    QString time; ///< local time of day, "HH:MM:SS.zzz"

    QJsonObject toJson() const;
    static std::optional<Statement> fromJson(const QJsonObject &json, QString *error = nullptr);
};

/// A remark for the script, at the place where it comes: input that became no
/// statement, and why.
struct Comment
{
    QString text; ///< in plain words; may have several lines
    QString time; ///< as a statement's

    QJsonObject toJson() const;
    static std::optional<Comment> fromJson(const QJsonObject &json, QString *error = nullptr);
};

/// What the recorder would still write if the program ended now. Each one takes
/// the place of the one before, and a statement ends it: what is pending behind
/// the statement is told anew.
struct Pending
{
    QList<Statement> statements; ///< in the order of the script; empty if nothing is pending

    QJsonObject toJson() const;
    static std::optional<Pending> fromJson(const QJsonObject &json, QString *error = nullptr);
};

/// What there is in the program, as a short text that is equal if it is the same.
struct Digest
{
    QString value;
    int objects = 0; ///< how many objects went in

    QJsonObject toJson() const;
    static std::optional<Digest> fromJson(const QJsonObject &json, QString *error = nullptr);
};

/// A line for the tool's log.
struct LogMessage
{
    enum Level {
        Info,
        Warning
    };

    Level level = Info;
    QString message;

    QJsonObject toJson() const;
    static std::optional<LogMessage> fromJson(const QJsonObject &json, QString *error = nullptr);
};

} // namespace Vantle::Protocol
