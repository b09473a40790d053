#pragma once

#include "hook/object.h"
#include "protocol/objectmessages.h"

namespace Vantle::QtWrapper {
class Application;
}

namespace Vantle::Agent {

/// The program's top-level windows in order of creation.
ObjectList topLevelWindows();

/// What a user sees of \p object, which must be alive.
Protocol::Description describeObject(const SharedPtr<Object> &object);

/// The top-level windows with everything below them. Objects that are nested
/// too deeply for a message are left out.
QList<Protocol::TreeNode> objectTree(QtWrapper::Application *application);

/// Why a user could not act on \p object now; empty when one could.
QString notReadyReason(const SharedPtr<Object> &object);

/// The place of \p object on the screen, in logical pixels.
QRect screenRect(const SharedPtr<Object> &object);

} // namespace Vantle::Agent
