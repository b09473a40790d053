#pragma once

#include "hook/delegates.h"

#include <memory>

namespace Vantle::QtWrapper {

std::unique_ptr<GeometryDelegate> makeItemGeometryDelegate();
std::unique_ptr<InteractionDelegate> makeItemInteractionDelegate();

/// Like that of a plain window, but it knows the items of the scene. A Quick
/// window is ready when any window would be.
std::unique_ptr<GeometryDelegate> makeQuickWindowGeometryDelegate();

} // namespace Vantle::QtWrapper
