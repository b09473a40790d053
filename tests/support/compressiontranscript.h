#pragma once

#include <string>

namespace VantleTest {

/// Runs the lines of \p transcript that say what happens, and returns them
/// with what the compressor does about each below it. Lines that are such
/// results already are left out first, so that a transcript that is right
/// comes back as it is. Throws EventScriptError with the number of the line.
std::string runTranscript(const std::string &transcript);

} // namespace VantleTest
