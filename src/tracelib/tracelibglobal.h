#pragma once

// This library needs nothing but the standard library, so that it can follow
// what happens before Qt is up and after it has gone.
#if defined(_WIN32)
#ifdef tracelib_objects_EXPORTS
#define CORVALINE_TRACELIB_EXPORT __declspec(dllexport)
#else
#define CORVALINE_TRACELIB_EXPORT __declspec(dllimport)
#endif
#else
#define CORVALINE_TRACELIB_EXPORT __attribute__((visibility("default")))
#endif
