// A touch screen for programs on a display that has none: a Qt plugin that
// plays touches through Qt's platform interface, as the plugin of a platform
// does. Loaded by QT_QPA_GENERIC_PLUGINS=touchplayer; reads the named pipe in
// TOUCHPLAYER_PIPE.
//
// A line is one touch event, its words are the fingers: ID:STATE:X:Y with the
// state "down", "move", "still" or "up" and a point in the active window.

#include <QtCore/QFile>
#include <QtCore/QSocketNotifier>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtGui/QPointingDevice>
#include <QtGui/QWindow>
#include <QtGui/qgenericplugin.h>
#include <QtGui/qpa/qwindowsysteminterface.h>

#include <memory>

namespace {

using TouchPoint = QWindowSystemInterface::TouchPoint;

QEventPoint::State stateNamed(const QByteArray &name)
{
    if (name == "down")
        return QEventPoint::State::Pressed;
    if (name == "move")
        return QEventPoint::State::Updated;
    return name == "up" ? QEventPoint::State::Released : QEventPoint::State::Stationary;
}

class TouchPlayer final : public QObject
{
public:
    TouchPlayer()
    {
        // The plugin is made before the application is complete.
        QTimer::singleShot(0, this, [this] { open(); });
    }

private:
    void open()
    {
        m_pipe.setFileName(qEnvironmentVariable("TOUCHPLAYER_PIPE"));
        // For writing too, so that a writer that goes away is no end.
        if (!m_pipe.open(QIODevice::ReadWrite | QIODevice::Unbuffered)) {
            qWarning("touchplayer: can't open the pipe: %s", qPrintable(m_pipe.errorString()));
            return;
        }
        m_notifier = std::make_unique<QSocketNotifier>(m_pipe.handle(), QSocketNotifier::Read);
        connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] { play(m_pipe.readLine().trimmed()); });
        m_screen = new QPointingDevice(
            QStringLiteral("touchplayer"), 4711, QInputDevice::DeviceType::TouchScreen,
            QPointingDevice::PointerType::Finger, QInputDevice::Capability::Position, 10, 0, QString(),
            QPointingDeviceUniqueId(), this);
        QWindowSystemInterface::registerInputDevice(m_screen);
    }

    void play(const QByteArray &line)
    {
        QWindow *const window = QGuiApplication::focusWindow();
        if (!window || line.isEmpty())
            return;
        QList<TouchPoint> points;
        const QList<QByteArray> fingers = line.split(' ');
        for (const QByteArray &finger : fingers) {
            const QList<QByteArray> parts = finger.split(':');
            if (parts.size() != 4) {
                qWarning("touchplayer: '%s' is no finger", finger.constData());
                return;
            }
            TouchPoint point;
            point.id = parts[0].toInt();
            point.state = stateNamed(parts[1]);
            point.pressure = point.state == QEventPoint::State::Released ? 0 : 1;
            const QPointF global = window->mapToGlobal(QPointF(parts[2].toDouble(), parts[3].toDouble()));
            point.area = QRectF(global - QPointF(2, 2), QSizeF(4, 4));
            points.append(point);
        }
        QWindowSystemInterface::handleTouchEvent(window, m_screen, points);
    }

    QFile m_pipe;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QPointingDevice *m_screen = nullptr;
};

class TouchPlayerPlugin final : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "touchplayer.json")

    QObject *create(const QString &, const QString &) override { return new TouchPlayer; }
};

} // namespace

#include "touchplayer.moc"
