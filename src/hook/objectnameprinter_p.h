#pragma once

#include "hook/objectnameparser_p.h"

namespace Vantle {

/// The canonical text of a whole name; empty for one without properties.
QString canonicalObjectName(const ObjectName::Properties &name);

/// The canonical text of the name that these steps make, outermost first.
QString canonicalObjectName(const ObjectNameSteps &steps);

} // namespace Vantle
