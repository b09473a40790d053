#pragma once

#include <QtCore/QPoint>

#include <vector>

namespace Vantle::QtWrapper {

/// How long a hand takes from one notch of the wheel to the next, in
/// milliseconds. Flickables gain speed from notches that follow each other
/// closely, so the time between them says how far they go.
constexpr int NotchWait = 50;

/// The notches by which a wheel turns by \p degrees, in eighths of a degree as
/// events tell them. A notch is 15 degrees; the last one is what is left, and
/// is smaller. Wheels that turn farther than anybody would turn one do it by
/// larger notches.
std::vector<QPoint> wheelNotches(QPoint degrees);

} // namespace Vantle::QtWrapper
