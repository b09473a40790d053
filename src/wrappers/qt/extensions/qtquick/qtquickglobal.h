#pragma once

#include <QtCore/qglobal.h>

#ifdef vantleqtquick_objects_EXPORTS
#  define VANTLEQTQUICK_EXPORT Q_DECL_EXPORT
#else
#  define VANTLEQTQUICK_EXPORT Q_DECL_IMPORT
#endif
