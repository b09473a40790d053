#pragma once

#include <QtCore/QUrl>
#include <QtQuick/QQuickItem>

#include <functional>

namespace VantleTest {

/// Runs an action each time that one of its properties is read. The action may
/// destroy the item.
class ActingItem : public QQuickItem
{
    Q_OBJECT
    Q_PROPERTY(int acting READ acting)
    Q_PROPERTY(QUrl source READ source)

public:
    using QQuickItem::QQuickItem;

    int acting() const
    {
        act();
        return 0;
    }
    QUrl source() const
    {
        const QUrl url = file;
        act();
        return url;
    }

    std::function<void()> action;
    QUrl file;

private:
    void act() const
    {
        // A copy, since the item may take its own along.
        if (const std::function<void()> running = action)
            running();
    }
};

} // namespace VantleTest
