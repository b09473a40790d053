#pragma once

#include "hook/objectname.h"

#include <QtCore/QStringView>

#include <vector>

namespace Vantle {

/// The steps of a name's text, outermost first, each as its own properties.
/// Only the first may have a "container", where the text spelled one out.
using ObjectNameSteps = std::vector<ObjectName::Properties>;

/// Reads the text of a name. On failure gives no steps and sets \p *error,
/// which must be clear beforehand; blank text has no steps and is no failure.
ObjectNameSteps readObjectNameSteps(QStringView text, ObjectName::ParseError *error);

/// Whether \p text can stand for a type, an id or a key without quotes: ASCII
/// letters, digits and underscores, no digit first.
bool isPlainIdentifier(QStringView text);

/// Whether \p text can stand behind the @: an identifier that may have dots
/// and hyphens behind its first character.
bool isPlainAlias(QStringView text);

namespace NameKeys {
inline const QString alias = QStringLiteral("alias");
inline const QString column = QStringLiteral("column");
inline const QString container = QStringLiteral("container");
inline const QString id = QStringLiteral("id");
inline const QString occurrence = QStringLiteral("occurrence");
inline const QString row = QStringLiteral("row");
inline const QString type = QStringLiteral("type");
inline const QString visible = QStringLiteral("visible");
} // namespace NameKeys

namespace NameValues {
inline const QString yes = QStringLiteral("true");
inline const QString no = QStringLiteral("false");
} // namespace NameValues

} // namespace Vantle
