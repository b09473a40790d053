#pragma once

#include "tool/programundertest.h"

#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

/// Whether a recorded script leads to where the recording ended.
namespace Vantle::Tool::Verify {

/// A line of the script, and what there was in the program behind it.
struct RecordedStatement
{
    int line = 0; ///< in the script, from 1 on
    QString text;
    QStringList digests; ///< any of these will do; empty if nobody knows
};

/// What a recording leaves to hold its replay against.
struct Evidence
{
    QString script;
    QList<RecordedStatement> statements;
    QJsonObject snapshot;          ///< of the end; empty if the program had ended before
    QJsonObject laterSnapshot;     ///< of a moment later, when nobody had done anything
    std::optional<ProgramEnd> end; ///< how the program ended by itself, if it did
};

} // namespace Vantle::Tool::Verify
