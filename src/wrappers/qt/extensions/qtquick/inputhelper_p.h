#pragma once

#include <QtCore/QObject>
#include <QtQuick/QQuickItem>

namespace Vantle::QtWrapper {

/// What extensions can ask about the input that is being recorded; in QML the
/// singleton "Input" of the host's module.
class InputHelper final : public QObject
{
    Q_OBJECT

public:
    /// Whether the input that goes on now does not mean \p item but something
    /// else at its place. False while there is none.
    Q_INVOKABLE bool passesOver(QQuickItem *item) const;
};

} // namespace Vantle::QtWrapper
