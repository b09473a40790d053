#pragma once

#include <QtCore/QJsonObject>

namespace Vantle::QtWrapper {
class Application;
}

namespace Vantle::Agent {

/// Names every object of every window and looks it up again: the result of
/// "roundTrip". Takes its time, as each name and each lookup costs a walk.
QJsonObject checkNames(const QtWrapper::Application *application);

} // namespace Vantle::Agent
