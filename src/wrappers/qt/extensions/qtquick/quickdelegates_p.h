#pragma once

#include "hook/delegates.h"

#include <memory>

namespace Vantle::QtWrapper {

std::unique_ptr<GeometryDelegate> makeItemGeometryDelegate();
std::unique_ptr<InteractionDelegate> makeItemInteractionDelegate();

/// Like those of a plain window, but they know the items of the scene, and
/// that the window may be drawn into another one: then the other one counts.
std::unique_ptr<GeometryDelegate> makeQuickWindowGeometryDelegate();
std::unique_ptr<InteractionDelegate> makeQuickWindowInteractionDelegate();

} // namespace Vantle::QtWrapper
