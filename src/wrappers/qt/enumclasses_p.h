#pragma once

namespace Vantle::QtWrapper {

/// Registers the enumerations that stand in the signatures of the interaction
/// functions, by their class names: "WindowState", "Qt::MouseButton" and
/// "Qt::KeyboardModifiers". Further calls do nothing.
void registerEnumClasses();

} // namespace Vantle::QtWrapper
