#pragma once

#include "tool/replay/results.h"
#include "tool/replay/scriptsource.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QHash>
#include <QtCore/QObject>

namespace Vantle::Tool::Replay {

/// Keeps the record of one script while it runs: its steps with their places
/// in the source, and what is said meanwhile. Lives on the thread of its script.
class StepRecorder : public QObject
{
    Q_OBJECT

public:
    /// \p file is the script as it was given, \p path its full path.
    StepRecorder(const QString &file, const QString &path, const ScriptSource &source, QObject *parent = nullptr);

    /// Opens a step; \p stack is the stack of the script at the call. Gives its
    /// number, from 1 on. While a quiet step is open, what it calls is no step
    /// of its own: the number is 0 then, and all that follows for it is
    /// without effect.
    int begin(Step::Kind kind, const QString &function, const QString &stack);

    /// As begin(), and everything up to the end of this step is a part of it.
    int beginQuiet(Step::Kind kind, const QString &function, const QString &stack);

    /// The open step of that number; a step that nobody sees for 0.
    Step &step(int number);

    /// Closes a step.
    void end(int number, Step::State state, const QString &message = QString());

    /// Remembers why something failed; the number that is given leads to it
    /// later, also if it belonged to no step.
    int addFailure(int step, const QString &message, const Explanation &explanation);
    Explanation explanationOfFailure(int failure) const { return m_failures.value(failure).explanation; }

    /// The error that ended the script: marks its step, or adds one of its own
    /// if it came from none, and gives its number. Every other step with an
    /// error was caught by the script.
    int endByError(const QString &message, const QString &stack, int failure);

    /// All steps with an error were caught: the script came to its end.
    void endWell();

    /// Takes a line for the log of the step that is open, or else was last.
    void log(bool isWarning, const QString &text);

    /// The line of the `import` that is under way, for what comes from line 0
    /// of the script, where the imports are gathered; 0 if there is none.
    void setImportLine(int line) { m_importLine = line; }

    /// Milliseconds since the script began.
    qint64 now() const { return m_clock.elapsed(); }

    ScriptResult &result() { return m_result; }
    PictureStore &pictures() { return m_result.pictures; }

    /// Directory of the script, for the files that it names.
    QString directory() const;

Q_SIGNALS:
    void progressed(const Vantle::Tool::Replay::Progress &progress);
    /// A check has failed, or an error has ended the script.
    void failed(const Vantle::Tool::Replay::Step &step);

private:
    struct Failure
    {
        int step = 0;
        Explanation explanation;
    };

    void place(Step *step, const QString &stack);
    const ScriptSource &sourceOf(const QString &path);
    void reportProgress(const QList<Position> &stack, const QString &source);
    void reportFailure(int number);
    void markCaught(int exceptStep);

    const QString m_path;
    QHash<QString, ScriptSource> m_sources;
    QHash<int, Failure> m_failures;
    ScriptResult m_result;
    Progress m_progress;
    Step m_unseen;
    QElapsedTimer m_clock;
    int m_quietStep = 0;
    int m_openStep = 0;
    int m_importLine = 0;
};

} // namespace Vantle::Tool::Replay
