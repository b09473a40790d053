#pragma once

#include "support/syntheticevents.h"

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace VantleTest {

/// A line that says what it should not.
class EventScriptError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Events as lines of text, such as `@1000 press item LeftButton 10/20`, and
/// the objects that they name. The README in the folder of the golden files
/// of compression describes the lines.
class EventScript
{
public:
    using Words = std::vector<std::string>;

    /// The words of a line. A text in double quotes is one word, which keeps its opening quote as a mark.
    static Words split(const std::string &line);

    /// Reads `object NAME CLASS [< BASE] [at X/Y] [same-as OTHER]`.
    void declareObject(const Words &words);
    void addObject(const TestObjectPtr &object);

    /// Reads the words of an event line. Throws EventScriptError.
    SyntheticEvent read(const Words &words) const;

    /// The object of that name. Throws EventScriptError if there is none.
    TestObjectPtr object(const std::string &name) const;

    /// The line that reads as \p event, for events as the functions of
    /// syntheticevents.h make them on objects of this script.
    std::string write(const SyntheticEvent &event) const;
    /// The declaration that makes \p object.
    static std::string writeDeclaration(const TestObject &object);

private:
    SyntheticEvent readKind(const std::string &kind, const TestObjectPtr &target, quint64 time, Words &words) const;
    SyntheticEvent readTouch(SyntheticEvent::TouchEventType type, const TestObjectPtr &target, quint64 time,
                             Words &words) const;

    std::map<std::string, TestObjectPtr> m_objects;
};

} // namespace VantleTest
