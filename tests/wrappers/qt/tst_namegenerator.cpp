#include "wrappers/qt/namegenerator.h"

#include "hook/class.h"
#include "hook/inspector.h"
#include "wrappers/qt/wrapping.h"

#include <gtest/gtest.h>

#include <QtCore/QTimer>
#include <QtGui/QWindow>

#include <functional>
#include <memory>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

/// Calls every object by one type.
class FixedName : public NameSource
{
public:
    explicit FixedName(const char *type, bool *destroyed = nullptr)
        : m_type(QString::fromLatin1(type)), m_destroyed(destroyed)
    {
    }
    ~FixedName() override
    {
        if (m_destroyed)
            *m_destroyed = true;
    }

    ObjectName objectName(QObject *object) const override
    {
        EXPECT_NE(object, nullptr);
        if (whileNaming)
            whileNaming();
        ObjectName name;
        name.setProperty(QStringLiteral("type"), PropertyValue(m_type, PropertyValue::Equals, PropertyValue::Text));
        return name;
    }

    std::function<void()> whileNaming;

private:
    QString m_type;
    bool *m_destroyed;
};

class CompleteName final : public FixedName
{
public:
    using FixedName::FixedName;
    QString realName(QObject *) const override { return QStringLiteral("complete"); }
};

class NameGeneration : public testing::Test
{
protected:
    void add(const QMetaObject &metaObject, std::unique_ptr<NameSource> source)
    {
        generator.registerSource(classForMetaObject(&metaObject), std::move(source));
    }
    QString nameOf(const SharedPtr<Object> &object) const
    {
        return generator.objectName(object, false).qualifiedName();
    }
    QString nameOf(QObject *object) const { return nameOf(wrapAndRegisterQObject(object)); }

    NameGenerator generator;
    QTimer timer;
};

} // namespace

TEST_F(NameGeneration, WhatNobodyNamesHasNoName)
{
    EXPECT_EQ(nameOf(&timer), QString());
    EXPECT_TRUE(generator.objectName(wrapAndRegisterQObject(&timer), false).isEmpty());
    EXPECT_EQ(generator.realName(wrapAndRegisterQObject(&timer), true), QString());
}

TEST_F(NameGeneration, SourceServesDerivedClassesToo)
{
    add(QObject::staticMetaObject, std::make_unique<FixedName>("Any"));
    EXPECT_EQ(nameOf(&timer), QStringLiteral("Any"));
}

TEST_F(NameGeneration, SourceDoesNotServeOtherClasses)
{
    add(QWindow::staticMetaObject, std::make_unique<FixedName>("Window"));
    EXPECT_EQ(nameOf(&timer), QString());
}

TEST_F(NameGeneration, NearestClassWinsWhateverTheOrder)
{
    add(QTimer::staticMetaObject, std::make_unique<FixedName>("Timer"));
    add(QObject::staticMetaObject, std::make_unique<FixedName>("Any"));
    QObject plain;
    EXPECT_EQ(nameOf(&timer), QStringLiteral("Timer"));
    EXPECT_EQ(nameOf(&plain), QStringLiteral("Any"));
}

TEST_F(NameGeneration, LaterSourceTakesThePlaceOfTheEarlier)
{
    bool destroyed = false;
    add(QObject::staticMetaObject, std::make_unique<FixedName>("First", &destroyed));
    add(QObject::staticMetaObject, std::make_unique<FixedName>("Second"));
    EXPECT_TRUE(destroyed);
    EXPECT_EQ(nameOf(&timer), QStringLiteral("Second"));
}

TEST_F(NameGeneration, SourceMayBeReplacedWhileItNames)
{
    bool destroyed = false;
    auto first = std::make_unique<FixedName>("First", &destroyed);
    first->whileNaming = [&] {
        add(QObject::staticMetaObject, std::make_unique<FixedName>("Second"));
        EXPECT_FALSE(destroyed);
    };
    add(QObject::staticMetaObject, std::move(first));
    EXPECT_EQ(nameOf(&timer), QStringLiteral("First"));
    EXPECT_TRUE(destroyed);
    EXPECT_EQ(nameOf(&timer), QStringLiteral("Second"));
}

TEST_F(NameGeneration, RealNameIsTheTextUnlessTheSourceSaysOtherwise)
{
    add(QObject::staticMetaObject, std::make_unique<FixedName>("Any"));
    add(QTimer::staticMetaObject, std::make_unique<CompleteName>("Timer"));
    QObject plain;
    EXPECT_EQ(generator.realName(wrapAndRegisterQObject(&plain), true), QStringLiteral("Any"));
    EXPECT_EQ(generator.realName(wrapAndRegisterQObject(&timer), true), QStringLiteral("complete"));
    EXPECT_EQ(nameOf(&timer), QStringLiteral("Timer"));
}

TEST_F(NameGeneration, NullDeadAndValueObjectsHaveNoName)
{
    add(QObject::staticMetaObject, std::make_unique<FixedName>("Any"));
    auto object = std::make_unique<QObject>();
    const SharedPtr<Object> dead = wrapAndRegisterQObject(object.get());
    EXPECT_EQ(nameOf(dead), QStringLiteral("Any"));
    object.reset();

    for (const SharedPtr<Object> &nameless :
         {dead, SharedPtr<Object>(), wrapAndRegisterQObject(nullptr), Inspector::self()->createInteger(1)}) {
        EXPECT_EQ(nameOf(nameless), QString());
        EXPECT_EQ(generator.realName(nameless, true), QString());
    }
}
