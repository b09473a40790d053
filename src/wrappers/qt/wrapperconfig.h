#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>

namespace Vantle::QtWrapper {

/// How the host wants the wrapper and the libraries above it to behave. Filled
/// in before Application is made and not changed afterwards.
struct WrapperConfig
{
    /// 0 silent; from 1 each recorded event is logged; from 2 every decision.
    quint32 compressionDebugLevel = 0;
    /// Classes whose objects get statements without coordinates: raw or cleaned
    /// class names, derived classes included.
    QList<QByteArray> classesWithoutCoordinates;
};

} // namespace Vantle::QtWrapper
