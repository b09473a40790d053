#pragma once

#include "protocol/messages.h"

namespace Vantle::Agent {

/// What shows in the program now, in short; docs/protocol.md says what goes in.
/// Reads a few properties of each item that is visible, and nothing else.
Protocol::Digest digestOfScene();

} // namespace Vantle::Agent
