#pragma once

namespace Vantle {

class Class;

/// The classes of the values that scripts and programs have in common. Each is
/// made at the first call and lives as long as the process.
///
/// Integers turn into doubles, and, for scripts that are not strict about
/// types, into enumerators, doubles without a fraction into integers, and
/// integers into truth values and back.
const Class *integerClass();
const Class *booleanClass();
const Class *doubleClass();
const Class *stringClass();
/// The class of what has no value.
const Class *voidClass();

} // namespace Vantle
