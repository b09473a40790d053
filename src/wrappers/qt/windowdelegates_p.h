#pragma once

namespace Vantle::QtWrapper {

/// Registers the delegates with which plain QWindows are recorded.
void registerWindowDelegates();

} // namespace Vantle::QtWrapper
