#pragma once

#include "protocol/messages.h"

#include <QtCore/QString>

#include <optional>

namespace Vantle::Tool {

/// The line of JavaScript that repeats \p statement, without line end:
/// `mouseClick("Main ToolButton#undo", 12, 9, Qt.LeftButton);`
///
/// Nothing if the function's name is no plain identifier: such a line could
/// mean anything.
std::optional<QString> statementText(const Protocol::Statement &statement);

/// One argument as JavaScript. Enumerations are written with the names of
/// their values; bits without a name are or'ed to these as a number. Values
/// that don't fit the type are written as what they are.
QString argumentText(const Protocol::StatementArgument &argument);

} // namespace Vantle::Tool
