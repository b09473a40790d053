#pragma once

#include "protocol/objectmessages.h"

namespace Vantle::Agent {

/// Every function that scripts can call, with its overloads, in the order in
/// which they were registered.
QList<Protocol::FunctionDescription> allFunctions();

} // namespace Vantle::Agent
