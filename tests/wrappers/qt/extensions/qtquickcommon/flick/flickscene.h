#pragma once

#include "flicksupport.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qteventrecorder.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qtquickflickeventgenerator.h"

#include <QtCore/QByteArray>
#include <QtCore/QPoint>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickWindow>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace VantleTest {

/// A recorded statement as a line of text: `flick "list" 0 120`.
std::string toText(const Vantle::EventData &statement);

/// Shows the events of windows to the recorder, as the host does.
class RecordingFilter : public QObject
{
    Q_OBJECT

public:
    RecordingFilter();
    ~RecordingFilter() override;

    bool eventFilter(QObject *receiver, QEvent *event) override;

    /// Ends recording now.
    void stop();

private:
    Vantle::SharedPtr<Vantle::QtWrapper::QtEventRecorder> m_recorder;
    std::unique_ptr<Vantle::QtWrapper::QtQuickFlickEventGenerator> m_generator;
};

/// A recorded window of 300 x 300 with a scene in it, and a pointer that moves
/// as the window system would move it.
class FlickScene : public testing::Test
{
protected:
    enum class Pointer {
        Mouse,
        Finger
    };

    FlickScene();
    ~FlickScene() override;

    /// Loads \p items, QML text, below the window's content, and shows it.
    void show(const QByteArray &items);
    template<typename T = QQuickFlickable>
    T *find(const char *objectName) const
    {
        return window->findChild<T *>(QLatin1String(objectName));
    }

    /// Each of these is one event, delivered to the scene before the call returns; points are in the window.
    void press(QPoint point);
    void move(QPoint point);
    void release(QPoint point);
    /// A press, a dozen moves at even speed and a release.
    void drag(QPoint from, QPoint to);
    /// The same with a short halt at the end, so that the content doesn't run on.
    void dragAndHalt(QPoint from, QPoint to);

    /// Waits until \p flickable rests.
    static bool waitForRest(const QQuickFlickable *flickable);
    /// Ends recording and gives the statements.
    std::vector<std::string> finish();
    /// The kinds of the records that the recorder was fed with, moves left out.
    std::vector<std::string> recordedKinds() const;

    Pointer pointer = Pointer::Mouse;
    LibraryLog log;
    Vantle::QtWrapper::Application application;
    QQmlEngine engine;
    std::unique_ptr<QQuickWindow> window;
    std::unique_ptr<RecordingFilter> filter;
    std::vector<std::string> statements;

private:
    enum class Step {
        Press,
        Move,
        Release
    };
    void send(Step step, QPoint point);
    void waitForFrame();

    // Of all tests together: Qt knows the speed of a mouse from its last events.
    static inline ulong m_time = 1000;
};

} // namespace VantleTest
