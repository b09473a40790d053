#pragma once

#include "protocol/messages.h"

namespace Vantle {
class EventData;
}

namespace Vantle::Agent {

/// A recorded statement in the form in which it travels.
Protocol::Statement toMessage(const EventData &statement);

} // namespace Vantle::Agent
