#include "hook/touchbuilder.h"

#include <QtCore/QXmlStreamReader>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <initializer_list>
#include <system_error>

namespace Vantle {

namespace {

const QLatin1String gestureElement("gesture");
const QLatin1String stepElement("step");
const QLatin1String pointElement("point");
const QLatin1String noElement;

const QLatin1String pixelsName("pixels");

template<typename T>
QByteArray shortestText(T number)
{
    char digits[64];
    const std::to_chars_result result = std::to_chars(std::begin(digits), std::end(digits), number);
    return QByteArray(digits, result.ptr - digits);
}

template<typename T>
QByteArray attribute(const char *name, T number)
{
    return QByteArray(" ") + name + "=\"" + shortestText(number) + '"';
}

QByteArray unitText(TouchBuilder::Unit unit)
{
    if (unit == TouchBuilder::Pixels)
        return pixelsName.latin1();
    return shortestText(static_cast<qint32>(unit));
}

QByteArray pointXml(const TouchBuilder::Point &point)
{
    QByteArray xml = "<point" + attribute("id", point.id) + attribute("x", point.x) + attribute("y", point.y)
        + attribute("pressure", point.pressure) + attribute("size", point.size);
    if (point.reserved != 0)
        xml += attribute("reserved", point.reserved);
    return xml + "/>\n";
}

/// Reads one document. The first failure ends the reading and is the one reported.
class GestureReader
{
public:
    explicit GestureReader(const QByteArray &xml) : m_text(QString::fromUtf8(xml)), m_reader(m_text)
    {
        // A namespace declaration is then an attribute like any other, hence refused.
        m_reader.setNamespaceProcessing(false);
    }

    std::optional<TouchBuilder::MultiTouchInfo> read()
    {
        std::optional<TouchBuilder::MultiTouchInfo> gesture;
        if (expectChild(QString(), gestureElement))
            gesture = readGesture();
        while (!failed() && !m_reader.atEnd())
            readToken();
        if (failed())
            gesture.reset();
        return gesture;
    }

    QString error() const { return m_error; }

private:
    bool failed() const { return !m_error.isEmpty(); }

    void fail(const QString &message)
    {
        if (failed())
            return;
        const QStringView ahead = QStringView(m_text).first(m_place);
        m_error = QStringLiteral("line %1, column %2: %3")
                      .arg(QString::number(ahead.count(u'\n') + 1),
                           QString::number(ahead.size() - ahead.lastIndexOf(u'\n')), message);
    }

    void readToken()
    {
        m_place = position();
        m_reader.readNext();
        // A tag is behind the reader now, while people look for its beginning.
        const QStringView behind = QStringView(m_text).first(position());
        if (m_reader.hasError()) {
            m_place = behind.size();
            fail(m_reader.errorString());
        } else if (m_reader.isStartElement()) {
            m_place = behind.lastIndexOf(u'<');
        } else if (m_reader.isDTD()) {
            m_place = behind.lastIndexOf(u"<!DOCTYPE");
            fail(QStringLiteral("a document type is not allowed"));
        }
    }

    qsizetype position() const { return std::clamp<qsizetype>(m_reader.characterOffset(), 0, m_text.size()); }

    /// Goes to the next element inside \p parent. False at the parent's end and
    /// on failure; elements but \p name, and any text, are failures.
    bool expectChild(const QString &parent, QLatin1String name)
    {
        while (!failed() && !m_reader.atEnd()) {
            readToken();
            if (failed() || m_reader.isEndElement())
                return false;
            if (m_reader.isCharacters() && !m_reader.isWhitespace()) {
                fail(QStringLiteral("expected no text in <%1>").arg(parent));
            } else if (m_reader.isStartElement()) {
                if (m_reader.qualifiedName() == name)
                    return true;
                fail(name.isEmpty()
                         ? QStringLiteral("expected nothing in <%1>, found <%2>").arg(parent, m_reader.qualifiedName())
                         : QStringLiteral("expected <%1>, found <%2>").arg(name, m_reader.qualifiedName()));
            }
        }
        return false;
    }

    TouchBuilder::MultiTouchInfo readGesture()
    {
        refuseOtherAttributes({QLatin1String("width"), QLatin1String("height"), QLatin1String("unit")});
        const auto width = number<float>(QLatin1String("width"));
        const auto height = number<float>(QLatin1String("height"));
        if (const QString unit = text(QLatin1String("unit")); unit != pixelsName)
            fail(QStringLiteral("expected \"pixels\" for \"unit\" of <gesture>, found \"%1\"").arg(unit));
        TouchBuilder::MultiTouchInfo gesture(width, height, TouchBuilder::Pixels);
        while (expectChild(gestureElement, stepElement))
            gesture.steps.push_back(readStep());
        return gesture;
    }

    TouchBuilder::Step readStep()
    {
        refuseOtherAttributes({QLatin1String("time")});
        TouchBuilder::Step step;
        step.time = number<quint32>(QLatin1String("time"));
        while (expectChild(stepElement, pointElement))
            step.points.push_back(readPoint());
        return step;
    }

    TouchBuilder::Point readPoint()
    {
        const QLatin1String reserved("reserved");
        refuseOtherAttributes({QLatin1String("id"), QLatin1String("x"), QLatin1String("y"),
                               QLatin1String("pressure"), QLatin1String("size"), reserved});
        TouchBuilder::Point point;
        point.id = number<qint32>(QLatin1String("id"));
        point.x = number<float>(QLatin1String("x"));
        point.y = number<float>(QLatin1String("y"));
        point.pressure = number<float>(QLatin1String("pressure"));
        point.size = number<float>(QLatin1String("size"));
        if (m_reader.attributes().hasAttribute(reserved))
            point.reserved = number<quint32>(reserved);
        expectChild(pointElement, noElement);
        return point;
    }

    void refuseOtherAttributes(std::initializer_list<QLatin1String> known)
    {
        const QXmlStreamAttributes attributes = m_reader.attributes();
        for (const QXmlStreamAttribute &attribute : attributes) {
            if (std::find(known.begin(), known.end(), attribute.qualifiedName()) == known.end())
                fail(QStringLiteral("<%1> has no attribute \"%2\"")
                         .arg(m_reader.qualifiedName(), attribute.qualifiedName()));
        }
    }

    QString text(QLatin1String name)
    {
        const QXmlStreamAttributes attributes = m_reader.attributes();
        if (!attributes.hasAttribute(name))
            fail(QStringLiteral("<%1> lacks the attribute \"%2\"").arg(m_reader.qualifiedName(), name));
        return attributes.value(name).toString();
    }

    template<typename T>
    T number(QLatin1String name)
    {
        const QString found = text(name);
        const QByteArray digits = found.toUtf8();
        T value{};
        const auto [end, code] = std::from_chars(digits.cbegin(), digits.cend(), value);
        if (code == std::errc() && end == digits.cend() && isFinite(value))
            return value;
        const QString expected = std::is_floating_point_v<T> ? QStringLiteral("a finite 32-bit number")
            : std::is_signed_v<T> ? QStringLiteral("a 32-bit integer")
                                  : QStringLiteral("an unsigned 32-bit integer");
        fail(QStringLiteral("expected %1 for \"%2\" of <%3>, found \"%4\"")
                 .arg(expected, QString(name), m_reader.qualifiedName().toString(), found));
        return T{};
    }

    template<typename T>
    static bool isFinite(T value)
    {
        if constexpr (std::is_floating_point_v<T>)
            return std::isfinite(value);
        else
            return true;
    }

    QString m_text;
    QXmlStreamReader m_reader;
    qsizetype m_place = 0; ///< what a failure is about, in characters from the beginning
    QString m_error;
};

} // namespace

TouchBuilder::MultiTouchInfo::MultiTouchInfo(float areaWidth, float areaHeight, Unit unit)
    : m_areaWidth(areaWidth)
    , m_areaHeight(areaHeight)
    , m_unit(unit)
{
}

TouchBuilder::MultiTouchInfo::~MultiTouchInfo() = default;

QByteArray TouchBuilder::MultiTouchInfo::toXml(const char *indent, int level) const
{
    const QByteArray oneLevel(indent);
    const QByteArray gestureIndent = oneLevel.repeated(std::max(level, 0));
    const QByteArray stepIndent = gestureIndent + oneLevel;
    const QByteArray pointIndent = stepIndent + oneLevel;

    QByteArray xml = gestureIndent + "<gesture" + attribute("width", m_areaWidth) + attribute("height", m_areaHeight)
        + " unit=\"" + unitText(m_unit) + "\">\n";
    for (const Step &step : steps) {
        xml += stepIndent + "<step" + attribute("time", step.time) + ">\n";
        for (const Point &point : step.points)
            xml += pointIndent + pointXml(point);
        xml += stepIndent + "</step>\n";
    }
    return xml + gestureIndent + "</gesture>\n";
}

std::optional<TouchBuilder::MultiTouchInfo> TouchBuilder::MultiTouchInfo::fromXml(const QByteArray &xml,
                                                                                 QString *error)
{
    GestureReader reader(xml);
    std::optional<MultiTouchInfo> gesture = reader.read();
    if (error)
        *error = reader.error();
    return gesture;
}

} // namespace Vantle
