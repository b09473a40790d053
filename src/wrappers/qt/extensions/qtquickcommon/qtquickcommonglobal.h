#pragma once

#include <QtCore/qglobal.h>

#ifdef vantleqtquickcommon_objects_EXPORTS
#  define VANTLEQTQUICKCOMMON_EXPORT Q_DECL_EXPORT
#else
#  define VANTLEQTQUICKCOMMON_EXPORT Q_DECL_IMPORT
#endif
