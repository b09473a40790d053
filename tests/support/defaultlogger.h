#pragma once

namespace VantleTest {

/// Gives each test a logger to begin with, which writes the library's warnings
/// to standard error. The library itself crashes at its first message without
/// one. Installed by the tests' main(); tests that look at messages set their own.
void installDefaultLogger();

} // namespace VantleTest
