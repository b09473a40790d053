#pragma once

#include "tool/replay/results.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace Vantle::Tool::Replay {

/// A step that failed, for people, a line each: its place, the statement, what
/// was expected and what was there.
QStringList failureLines(const Step &step);

/// What a step's failure says about itself, without place and statement.
QStringList reasonLines(const Step &step);

/// A verdict in a word or two: "passed", "the program died".
QString verdictText(Verdict verdict);

/// `12 steps, 3 checks, 1 failed, 2.4 s`.
QString countsText(const ScriptResult &result);

/// A number of things: "1 step", "2 steps".
QString counted(qsizetype count, const QString &thing);

/// A duration in a form that people read: "42 ms", "1.20 s", "12.3 s",
/// "2 min 05 s".
QString durationText(qint64 milliseconds);

/// \p text without what no XML document may hold, not even escaped: controls,
/// and halves of surrogate pairs.
QString documentText(const QString &text);

/// The last lines of what a program printed.
QStringList lastLines(const QString &output, qsizetype count);

} // namespace Vantle::Tool::Replay
