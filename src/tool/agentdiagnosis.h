#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace Vantle::Tool {

/// Finds out why the agent did not get into a running program, from what the
/// program has loaded. Empty if that tells nothing, or can't be read.
QString diagnosisOfProcess(qint64 processId);

/// The same from the text of /proc/PID/maps.
QString diagnosisOfMaps(const QByteArray &maps);

/// What there is to say of a program that crashed by itself before the agent
/// called; \p signal names the signal that ended it.
QString crashAtStartText(const QString &program, const QString &signal);

/// The causes to look at when nothing better is known, one a line.
QString likelyCauses(const QString &plugin);

} // namespace Vantle::Tool
