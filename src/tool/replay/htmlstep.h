#pragma once

#include "tool/replay/results.h"

#include <QtCore/QString>

namespace Vantle::Tool::Replay {

/// Text as HTML. Controls that no document may hold are left out.
QString htmlText(const QString &text);

/// Lines of a log.
QString logHtml(const QList<LogLine> &log);

/// One step as an entry of the report's list, with \p id as its anchor.
QString stepHtml(const Step &step, const PictureStore &pictures, const QString &id);

} // namespace Vantle::Tool::Replay
