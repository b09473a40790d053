#pragma once

namespace Vantle::QtWrapper {

/// Registers the delegates with which plain QWindows are recorded, and what
/// counts as their children.
void registerWindowDelegates();

} // namespace Vantle::QtWrapper
