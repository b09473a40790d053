#pragma once

#include <QtCore/QJsonObject>

namespace Vantle::QtWrapper {
class Application;
}

namespace Vantle::Agent {

/// Everything there is in the program, to be held against another run of it: the
/// objects by their names with what can be read of them, and pictures of the
/// windows. The answer to the request of that name; docs/protocol.md says what
/// it holds and what it leaves out.
///
/// Names each object and reads its properties, so it may run code of the program
/// and takes its time in a large scene.
QJsonObject snapshotOf(QtWrapper::Application *application);

} // namespace Vantle::Agent
