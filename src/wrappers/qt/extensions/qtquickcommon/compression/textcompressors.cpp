#include "wrappers/qt/extensions/qtquickcommon/compression/textcompressors.h"

#include "wrappers/qt/extensions/qtquickcommon/compression/eventpredicates_p.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/statementrecorder.h"

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

/// Angle brackets enclose the names of keys in a text, so that one at its
/// start would be read as the beginning of a name.
bool isOpeningBracket(const SyntheticEvent &key)
{
    return key.text == "<";
}

bool isSpecialKey(const SyntheticEvent &key)
{
    return key.text.size() > 1;
}

/// Whether \p event belongs to the run of keys that begins with \p head, which always does.
bool continuesTyping(const SyntheticEvent &event, const SyntheticEvent &head)
{
    return &event == &head || (event.type == SyntheticEvent::Key && isSameObject(event.object, head.object));
}

} // namespace

Compressor::MatchResult InputMethodCompressor::match(const EventQueue &queue, Modifier::Value, quint64) const
{
    if (queue.empty())
        return NoMatch;
    return queue.front().type == SyntheticEvent::InputMethod ? CompleteMatch : NoMatch;
}

EventIterator InputMethodCompressor::compress(const EventQueue &queue, Modifier::Value,
                                              StatementRecorder *recorder) const
{
    const SyntheticEvent &head = queue.front();
    recorder->type(head.object, head.objectName, head.inputMethodText, head.timestamp);
    return std::next(queue.begin());
}

const char *InputMethodCompressor::name() const
{
    return "InputMethodCompressor";
}

Compressor::MatchResult TextInputCompressor::match(const EventQueue &queue, Modifier::Value, quint64) const
{
    if (queue.empty() || !isKeyPress(queue.front()))
        return NoMatch;

    // The release of a special key decides, not its press, so that everything
    // up to that key is at hand when the text is put together.
    bool firstRelease = true;
    for (const SyntheticEvent &event : queue) {
        if (!continuesTyping(event, queue.front()))
            return CompleteMatch;
        if (event.keyEventType != SyntheticEvent::KeyRelease)
            continue;
        if ((firstRelease && isOpeningBracket(event)) || isSpecialKey(event))
            return CompleteMatch;
        firstRelease = false;
    }
    // Typing that is flushed is complete.
    return finishing ? CompleteMatch : PartialMatch;
}

EventIterator TextInputCompressor::compress(const EventQueue &queue, Modifier::Value, StatementRecorder *recorder) const
{
    const SyntheticEvent &head = queue.front();
    const auto writeTyped = [&head, recorder](const QByteArray &typed) {
        if (!typed.isEmpty())
            recorder->type(head.object, head.objectName, typed, head.timestamp);
    };

    QByteArray typed;
    EventIterator event = queue.begin();
    for (; event != queue.end() && continuesTyping(*event, head); ++event) {
        if (event->keyEventType == SyntheticEvent::KeyRelease)
            continue;
        if ((typed.isEmpty() && isOpeningBracket(*event)) || isSpecialKey(*event)) {
            writeTyped(typed);
            recorder->type(event->object, event->objectName, event->text, event->timestamp);
            return std::next(event);
        }
        typed += event->text;
    }
    writeTyped(typed);
    return event;
}

const char *TextInputCompressor::name() const
{
    return "TextInputCompressor";
}
