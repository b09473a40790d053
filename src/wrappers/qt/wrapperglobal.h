#pragma once

#include <QtCore/qglobal.h>

#ifdef vantleqtwrapper_objects_EXPORTS
#  define VANTLEQTWRAPPER_EXPORT Q_DECL_EXPORT
#else
#  define VANTLEQTWRAPPER_EXPORT Q_DECL_IMPORT
#endif
