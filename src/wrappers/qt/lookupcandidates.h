#pragma once

#include "hook/object.h"
#include "hook/objectname.h"
#include "wrappers/qt/wrapperglobal.h"

#include <QtCore/QList>
#include <QtCore/QString>

namespace Vantle::QtWrapper {

class NameGenerator;

/// One property in which an object differs from a name.
struct PropertyDifference
{
    QString key;
    QString expected; ///< as a selector has it: `"text"`, `*="text"`, `=/expression/`
    QString found;    ///< the object's text in quotes, or that it has no such property
};

/// An object that a name might have meant.
struct LookupCandidate
{
    SharedPtr<Object> object;
    QList<PropertyDifference> differences;
};

/// Those of \p objects that come closest to \p properties, the closest first and
/// at most \p limit. Those that differ in fewer properties come first, of these
/// the ones with the more similar texts, and then the earlier ones. Ahead of all
/// come those that only can't be seen. An object that differs in nothing is one too many: it differs in its occurrence.
///
/// For telling why a lookup failed; costs a comparison of all objects, and runs
/// code of the program as a lookup does.
QList<LookupCandidate> closestCandidates(const NameGenerator &generator, const ObjectList &objects,
                                         const ObjectName::Properties &properties, qsizetype limit);

/// Whether \p candidate fits but for being visible.
VANTLEQTWRAPPER_EXPORT bool isOnlyHidden(const LookupCandidate &candidate);

/// All objects below \p container, parents first, but no windows and nothing
/// inside of them.
VANTLEQTWRAPPER_EXPORT ObjectList objectsBelow(const SharedPtr<Object> &container);

} // namespace Vantle::QtWrapper
