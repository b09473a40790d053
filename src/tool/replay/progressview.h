#pragma once

#include "tool/replay/results.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QTimer>

#include <vector>

namespace Vantle::Tool::Replay {

/// Shows on standard output what scripts are doing: on a terminal a line with
/// a bar for each that runs, below what is said for good; elsewhere plain
/// lines only. Colours only on a terminal, and not if NO_COLOR is set.
class ProgressView : public QObject
{
    Q_OBJECT

public:
    explicit ProgressView(const QStringList &scripts, QObject *parent = nullptr);

    void begin(int index);
    void update(int index, const Vantle::Tool::Replay::Progress &progress);
    void showFailure(int index, const Vantle::Tool::Replay::Step &step);
    void end(int index, const ScriptResult &result);

    /// The user has asked for the end.
    void showStopping();

    /// The last word, after the last script.
    void finish(const std::vector<ScriptResult> &results, qint64 duration);

private:
    struct Running
    {
        Progress progress;
        QElapsedTimer clock;
    };

    enum Colour {
        Red = 31,
        Green = 32,
        Yellow = 33,
        Grey = 90
    };

    /// Writes lines that stay, above those that change.
    void say(const QStringList &lines);
    void redraw();
    QString eraseText() const;
    QString barLine(int index, const Running &running, qsizetype width) const;
    QString coloured(const QString &text, Colour colour) const;

    const QStringList m_scripts;
    QMap<int, Running> m_running;
    QTimer m_timer;
    qsizetype m_shownLines = 0;
    const bool m_isTerminal;
    const bool m_hasColours;
};

} // namespace Vantle::Tool::Replay
