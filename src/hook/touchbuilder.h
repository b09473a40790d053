#pragma once

#include "hook/hookglobal.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>
#include <vector>

namespace Vantle {

/// Types that describe a touch gesture step by step.
struct VANTLEHOOK_EXPORT TouchBuilder
{
    /// What the coordinates of a gesture are measured in.
    enum Unit : qint32 {
        Pixels = 0, ///< pixels of the gesture area
    };

    /// One finger at one moment.
    struct Point
    {
        qint32 id = 0;
        float x = 0;
        float y = 0;
        float pressure = 0;
        float size = -1; ///< diameter of the contact; -1 when it is not known
        quint32 reserved = 0;

        bool operator==(const Point &) const = default;
    };

    /// All fingers at one moment.
    struct Step
    {
        quint32 time = 0; ///< milliseconds since the gesture began
        std::vector<Point> points;

        bool operator==(const Step &) const = default;
    };

    /// A gesture: the area that it was made in, and its steps in order.
    class VANTLEHOOK_EXPORT MultiTouchInfo
    {
    public:
        MultiTouchInfo(float areaWidth, float areaHeight, Unit unit);
        ~MultiTouchInfo();

        float areaWidth() const noexcept { return m_areaWidth; }
        float areaHeight() const noexcept { return m_areaHeight; }
        Unit unit() const noexcept { return m_unit; }

        /// The gesture as XML in UTF-8:
        ///
        ///     <gesture width="640" height="480" unit="pixels">
        ///       <step time="0">
        ///         <point id="1" x="12.5" y="40" pressure="1" size="-1"/>
        ///       </step>
        ///     </gesture>
        ///
        /// Every line begins with \p level times \p indent and ends in a line
        /// feed; steps and points get one and two more. A null \p indent or a
        /// negative \p level indents nothing. Numbers have the fewest digits
        /// from which exactly the same number is read. Points whose reserved
        /// word isn't 0 have it as the attribute "reserved".
        QByteArray toXml(const char *indent, int level) const;

        /// Reads what toXml() writes, as UTF-8 whatever it declares. An XML declaration, comments, processing
        /// instructions and white space may stand anywhere that XML allows; all
        /// else is refused: other elements and attributes, text, a document
        /// type, missing attributes ("reserved" alone may be missing), other
        /// units, numbers that are not finite or do not fit. On failure gives
        /// nothing and says in \p error, if not null, what is wrong and at
        /// which line and column, both counted from 1.
        static std::optional<MultiTouchInfo> fromXml(const QByteArray &xml, QString *error = nullptr);

        bool operator==(const MultiTouchInfo &) const = default;

    private:
        float m_areaWidth;
        float m_areaHeight;
        Unit m_unit;

    public:
        std::vector<Step> steps;
    };
};

} // namespace Vantle
