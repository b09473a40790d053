#pragma once

#include "naivemodel.h"

namespace VantleTest {

// What the rules of several patterns say in the same words.

using E = SyntheticEvent;

inline bool same(const Vantle::SharedPtr<Vantle::Object> &a, const Vantle::SharedPtr<Vantle::Object> &b)
{
    return a->sameAs(b);
}

inline bool modifierKey(const E &e)
{
    return e.type == E::Key && e.keyEventType == E::KeyPress && e.modifiers != 0;
}

inline bool move(const E &e)
{
    return e.type == E::Mouse && e.mouseEventType == E::Move;
}

inline Statement statement(const char *method, const E &e, quint64 time)
{
    Statement s;
    s.method = method;
    s.object = e.object.get();
    s.objectName = e.objectName;
    s.timestamp = time;
    return s;
}

} // namespace VantleTest
