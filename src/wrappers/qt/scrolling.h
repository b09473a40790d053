#pragma once

#include "hook/object.h"
#include "wrappers/qt/wrapperglobal.h"

#include <QtCore/QPoint>
#include <QtCore/QString>

#include <functional>
#include <optional>

namespace Vantle::QtWrapper {

/// What `scrollTo` is to bring into view: an object itself, if nothing else is
/// said, or an entry of the view that the object is.
struct ScrollGoal
{
    std::optional<int> index;
    std::optional<int> row;
    std::optional<int> column;
    std::optional<QString> text; ///< what the entry shows
    /// Where the content of the flickable is to be that the object is or lies
    /// in; no entry is meant then.
    std::optional<QPoint> content;
};

/// Brings \p goal of \p object, which exists, into view. Gives what is wrong in
/// words, empty on success.
using Scroller = std::function<QString(const SharedPtr<Object> &object, const ScrollGoal &goal)>;

/// Makes \p scroller carry out `scrollTo`, in place of any earlier one. For the
/// side that knows the views of its toolkit.
VANTLEQTWRAPPER_EXPORT void registerScroller(Scroller scroller);

/// Has the registered scroller do it; says so if there is none.
QString scroll(const SharedPtr<Object> &object, const ScrollGoal &goal);

} // namespace Vantle::QtWrapper
