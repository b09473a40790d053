#pragma once

#include "protocol/objectmessages.h"
#include "tool/programundertest.h"

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QMetaType>
#include <QtCore/QPointF>
#include <QtCore/QSizeF>
#include <QtCore/QString>

#include <optional>

/// What a replay has found out: plain records, filled while scripts run and
/// read by the terminal and the reports. Times are in milliseconds.
namespace Vantle::Tool::Replay {

/// A place in a script. Lines and columns count from 1; 0 is unknown.
struct Position
{
    QString file;
    int line = 0;
    int column = 0;
};

/// Why an object was not found or could not be used.
struct Explanation
{
    QString lookedFor;
    QString reason;
    QString coveredBy;
    QList<Protocol::Candidate> candidates; ///< closest first

    bool isEmpty() const { return lookedFor.isEmpty() && reason.isEmpty() && candidates.isEmpty(); }
};

struct LogLine
{
    bool isWarning = false;
    QString text;
};

/// A picture of a window or an object.
struct Picture
{
    QByteArray png;
    QSizeF size;       ///< in device-independent pixels
    qint64 window = 0; ///< handle of the window that it shows; 0 if unknown
};

/// Pictures by key; equal pictures are kept once.
class PictureStore
{
public:
    /// Keeps a picture and gives its key; an empty key for an empty picture.
    QString add(const Picture &picture);

    const Picture *find(const QString &key) const;
    const QHash<QString, Picture> &all() const { return m_pictures; }

private:
    QHash<QString, Picture> m_pictures;
};

/// One thing that a script did: a call of a function, a check, a message.
struct Step
{
    enum Kind {
        Action,
        Wait,
        Write,
        Check,
        Screenshot,
        Message,
        Problem
    };
    enum State {
        Running,
        Passed,
        Failed,
        Broken,
        Caught
    };

    int number = 0;
    Kind kind = Action;
    State state = Running;
    QString function;
    QString source; ///< the statement as it stands in the script
    QString call;   ///< the same with the values of its arguments; empty if it says nothing more
    Position position;
    /// What people are shown: what was called with which values, if that says more
    /// than the line of the script.
    QString statement() const { return call.isEmpty() ? source : call; }
    QList<Position> callers; ///< from where the function that holds it was called
    qint64 start = 0;        ///< since the start of the script
    qint64 duration = 0;
    QString message;
    Explanation explanation;
    QList<Protocol::Difference> values; ///< of a comparison that failed
    QList<LogLine> log;
    QString before; ///< keys of pictures
    QString after;
    QString kept; ///< the pictures of a comparison of pictures
    QString difference;
    QString pictureFile;          ///< where the picture of a failure was kept, as reports name it
    std::optional<QPointF> point; ///< of the action, in the window that is shown
};

/// How a script ended.
enum class Verdict {
    Passed,
    Failed,      ///< a check failed, or an error ended the script
    ProgramDied, ///< the program under test crashed or ended too early
    NotRun,      ///< the script could not be begun, or the user stopped it
};

/// Everything about one script.
struct ScriptResult
{
    QString file; ///< as it was given
    Verdict verdict = Verdict::NotRun;
    QString message; ///< what ended the script, if it did not come to its end
    QDateTime startedAt;
    qint64 duration = 0;
    QList<Step> steps;
    QList<LogLine> log; ///< what belongs to no step
    PictureStore pictures;
    QString programWords;
    QString programOutput;                ///< its end, if it is long
    std::optional<ProgramEnd> programEnd; ///< how the last program ended by itself, if it did

    int count(Step::Kind kind) const;
    int count(Step::Kind kind, Step::State state) const;

    /// The steps that did not go as they should have.
    QList<Step> failures() const;
};

/// What is known of a script while it runs.
struct Progress
{
    int linesDone = 0; ///< lines of code
    int lineCount = 0;
    int steps = 0;
    int failures = 0;
    QString source; ///< the statement under way
};

} // namespace Vantle::Tool::Replay

Q_DECLARE_METATYPE(Vantle::Tool::Replay::ScriptResult)
Q_DECLARE_METATYPE(Vantle::Tool::Replay::Progress)
Q_DECLARE_METATYPE(Vantle::Tool::Replay::Step)
