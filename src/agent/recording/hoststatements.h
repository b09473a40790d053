#pragma once

#include "hook/eventdata.h"
#include "hook/object.h"

#include <chrono>

namespace Vantle::QtWrapper {
struct SyntheticEvent;
}

/// Statements about what no pattern knows, as calls of functions that scripts
/// have too. Each goes out at once, behind what the recorder has given so far,
/// so whoever calls these lets the recorder come to an end first.
///
/// Records tell the object, its name, the point in it, the button and the time.
namespace Vantle::Agent::HostStatements {

/// The pointer comes to rest at a point.
void mouseMove(const QtWrapper::SyntheticEvent &place);
void mousePress(const QtWrapper::SyntheticEvent &press);
/// What was pressed by \p press is let go at \p release, which tells where on the screen.
void mouseRelease(const QtWrapper::SyntheticEvent &press, const QtWrapper::SyntheticEvent &release);
/// Nothing happens for \p time; told by \p record when.
void snooze(std::chrono::milliseconds time, const QtWrapper::SyntheticEvent &record);
/// A key by its name in angle brackets.
void keyPress(const QtWrapper::SyntheticEvent &focus, const char *key);
void keyRelease(const QtWrapper::SyntheticEvent &focus, const char *key);
/// \p statement, a mouseWheel over \p object, with the place where the content ends
/// that it moved: how far a flickable goes depends on the pace of the hand. Any
/// other statement, and one over no flickable, as it is.
EventData withContentPosition(const EventData &statement, const SharedPtr<Object> &object);
/// What was pressed is dropped at \p target by the window system.
void dragAndDrop(const QtWrapper::SyntheticEvent &press, const QtWrapper::SyntheticEvent &target);

} // namespace Vantle::Agent::HostStatements
