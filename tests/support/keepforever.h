#pragma once

#include <vector>

namespace VantleTest {

/// Keeps \p object, which is to live as long as the process, where the leak
/// checker finds it. Classes and what they describe are such objects.
template<typename T>
T *keepForever(T *object)
{
    static auto *const kept = new std::vector<const void *>;
    kept->push_back(object);
    return object;
}

} // namespace VantleTest
