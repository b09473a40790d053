#pragma once

#include "tool/programundertest.h"

#include <QtCore/QString>

#include <chrono>

namespace Vantle::Tool::Inspect {

/// What `vantle inspect` was asked to do.
struct InspectOptions
{
    enum Subject {
        Tree,      ///< every object of every window
        OneObject, ///< the one called \c name
        Functions, ///< what scripts can call
        Names,     ///< whether every object is found by its name
    };

    LaunchOptions launch;
    Subject subject = Tree;
    QString name;
    bool asJson = false;
    std::chrono::milliseconds limit{10000}; ///< for the first window, and for the object
};

} // namespace Vantle::Tool::Inspect
