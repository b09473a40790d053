#include "wrappers/qt/windownames.h"

#include "wrappers/qt/application.h"
#include "wrappers/qt/wrapping.h"

#include <gtest/gtest.h>

#include <QtGui/QWindow>

#include <memory>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

class WindowNames : public testing::Test
{
protected:
    static QMap<QString, QString> name(QWindow *window)
    {
        QMap<QString, QString> texts;
        const ObjectName::Properties properties = WindowNameSource().objectName(window).properties();
        for (auto property = properties.begin(); property != properties.end(); ++property) {
            EXPECT_EQ(property->modifiers(), PropertyValue::Equals);
            texts.insert(property.key(), property->stringValue());
        }
        return texts;
    }

    static QString occurrence(QWindow *window) { return name(window).value(QStringLiteral("occurrence")); }
};

using Texts = QMap<QString, QString>;

const QString type = QStringLiteral("type");
const QString title = QStringLiteral("title");
const QString plainWindow = QStringLiteral("QWindow");

} // namespace

TEST_F(WindowNames, TypeAloneNamesAWindowThatHasNothingElse)
{
    QWindow window;
    EXPECT_EQ(name(&window), (Texts{{type, plainWindow}}));
}

TEST_F(WindowNames, TitleNamesAWindowWithoutObjectName)
{
    QWindow window;
    window.setTitle(QStringLiteral("Über \"uns\""));
    EXPECT_EQ(name(&window), (Texts{{type, plainWindow}, {title, QStringLiteral("Über \"uns\"")}}));
}

TEST_F(WindowNames, ObjectNameComesBeforeTitle)
{
    QWindow window;
    window.setTitle(QStringLiteral("Letters"));
    window.setObjectName(QStringLiteral("main"));
    EXPECT_EQ(name(&window), (Texts{{type, plainWindow}, {QStringLiteral("objectName"), QStringLiteral("main")}}));
}

TEST_F(WindowNames, EqualWindowsAreCountedInOrderOfCreation)
{
    QWindow first;
    QWindow second;
    QWindow third;
    EXPECT_EQ(occurrence(&first), QString());
    EXPECT_EQ(occurrence(&second), QStringLiteral("2"));
    EXPECT_EQ(occurrence(&third), QStringLiteral("3"));
}

TEST_F(WindowNames, ShowingAndActivatingDoesNotChangeTheOrder)
{
    QWindow first;
    QWindow second;
    second.show();
    first.show();
    first.requestActivate();
    second.hide();
    EXPECT_EQ(occurrence(&first), QString());
    EXPECT_EQ(occurrence(&second), QStringLiteral("2"));
}

TEST_F(WindowNames, WindowsWithOtherNamesDoNotCount)
{
    QWindow untitled;
    QWindow letters;
    letters.setTitle(QStringLiteral("Letters"));
    QWindow named;
    named.setObjectName(QStringLiteral("Letters"));
    QWindow moreLetters;
    moreLetters.setTitle(QStringLiteral("Letters"));
    EXPECT_EQ(occurrence(&untitled), QString());
    EXPECT_EQ(occurrence(&letters), QString());
    EXPECT_EQ(occurrence(&named), QString());
    EXPECT_EQ(occurrence(&moreLetters), QStringLiteral("2"));
}

TEST_F(WindowNames, DestroyedWindowsDoNotCount)
{
    auto first = std::make_unique<QWindow>();
    auto second = std::make_unique<QWindow>();
    QWindow third;
    EXPECT_EQ(occurrence(&third), QStringLiteral("3"));
    second.reset();
    EXPECT_EQ(occurrence(&third), QStringLiteral("2"));
    first.reset();
    EXPECT_EQ(occurrence(&third), QString());
}

TEST_F(WindowNames, ChildWindowsAreNeitherCountedNorNumbered)
{
    QWindow parent;
    parent.setTitle(QStringLiteral("Parent"));
    QWindow child(&parent);
    QWindow first;
    QWindow second;
    EXPECT_EQ(occurrence(&child), QString());
    // Their names say nothing but the type, and that fits the parent too.
    EXPECT_EQ(occurrence(&first), QStringLiteral("2"));
    EXPECT_EQ(occurrence(&second), QStringLiteral("3"));
}

TEST_F(WindowNames, ApplicationNamesWindowsFromTheStart)
{
    const Application application;
    QWindow window;
    window.setTitle(QStringLiteral("Letters"));
    EXPECT_EQ(wrapAndRegisterQObject(&window)->scriptName(), QStringLiteral("QWindow[title=\"Letters\"]"));
}
