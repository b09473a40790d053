#pragma once

#include "hook/object.h"
#include "protocol/connection.h"

#include <optional>

class QObject;

namespace Vantle::Protocol {
class FieldReader;
}

namespace Vantle::QtWrapper {
class Application;
}

namespace Vantle::Agent {

class ObjectHandles;

/// What a request is about: an object by its handle, or a name.
struct Target
{
    int handle = 0; ///< 0 for a name
    QString name;

    /// Reads the fields "object" and "name", of which there must be one.
    static Target readFrom(Protocol::FieldReader *reader);
    /// Whether the parameters say what they are about at all.
    static bool isIn(const Protocol::FieldReader &reader);
};

/// What was found, or the error with which a request for it is answered.
struct Found
{
    SharedPtr<Object> object;
    std::optional<Protocol::Error> error;
};

/// Finds the objects that requests are about.
class TargetFinder
{
public:
    /// Both must outlive the finder. If \p strict, a name that leaves open which of
    /// several objects it means finds none.
    TargetFinder(const QtWrapper::Application *application, const ObjectHandles *handles, bool strict = false)
        : m_application(application)
        , m_handles(handles)
        , m_strict(strict)
    {
    }

    /// The object, alive, as far as one look can tell. Looking for a name runs
    /// code of the program.
    Found find(const Target &target) const;
    /// Same, without the costly error: null if there is none.
    SharedPtr<Object> look(const Target &target) const;
    /// Whether waiting makes sense: not for a text that is no name.
    static bool mayAppear(const Target &target);
    /// The error for a target that look() doesn't find.
    Protocol::Error failure(const Target &target) const;

private:
    std::optional<Protocol::Error> ambiguityIn(const Target &target) const;

    const QtWrapper::Application *m_application;
    const ObjectHandles *m_handles;
    bool m_strict;
};

} // namespace Vantle::Agent
