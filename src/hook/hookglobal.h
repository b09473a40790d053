#pragma once

#include <QtCore/qglobal.h>

#ifdef vantlehook_objects_EXPORTS
#  define VANTLEHOOK_EXPORT Q_DECL_EXPORT
#else
#  define VANTLEHOOK_EXPORT Q_DECL_IMPORT
#endif
