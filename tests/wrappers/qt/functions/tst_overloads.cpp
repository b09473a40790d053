#include "wrappers/qt/overloads.h"

#include "hook/inspector.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/bynamefunctions.h"
#include "wrappers/qt/wrapping.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtGui/QWindow>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;

namespace {

std::string signatureText(const Method *method)
{
    std::string text = method->name().toStdString() + '(';
    for (const Argument &argument : method->signature().arguments()) {
        if (text.back() != '(')
            text += ", ";
        text += argument.name().toStdString() + ": " + argument.type()->className().toStdString();
    }
    return text + ')';
}

SharedPtr<Object> answer(const ObjectList &arguments, const Class *)
{
    return Inspector::self()->createInteger(static_cast<int>(arguments.size()));
}

class Overloads : public testing::Test
{
protected:
    Overloads() : m_before(methods().size()) {}

    static const QList<const GlobalMethod *> &methods() { return Inspector::self()->globalClass()->methods(); }

    std::vector<std::string> added() const
    {
        std::vector<std::string> texts;
        for (qsizetype i = m_before; i < methods().size(); ++i)
            texts.push_back(signatureText(methods().at(i)));
        return texts;
    }

    Application application;

private:
    qsizetype m_before;
};

} // namespace

TEST_F(Overloads, OfTheInteractionFunctionsTakeWhatThoseByNameTakeWithAnObjectInPlaceOfTheName)
{
    // Registered for good, so the class must stay too.
    const auto *const type = new Class(QStringLiteral("Widget"));
    registerInteractionOverloadsFor(type);
    EXPECT_THAT(added(),
                IsSupersetOf({
                    "type(object: Widget, text: QString)",
                    "mouseClick(object: Widget)",
                    "mouseClick(object: Widget, x: int, y: int, modifiers: Qt::KeyboardModifiers, "
                    "button: Qt::MouseButton)",
                    "mouseDrag(object: Widget, x: int, y: int, dx: int, dy: int, "
                    "modifiers: Qt::KeyboardModifiers, button: Qt::MouseButton)",
                    "touchAndDrag(object: Widget, x: int, y: int, dx: int, dy: int, "
                    "modifiers: Qt::KeyboardModifiers, delay: int)",
                    "gesture(object: Widget, gesture: QString)",
                }));
    EXPECT_EQ(added().size(), 48U);
    for (const char *window : {"closeWindow", "moveWindow", "setWindowSize", "setWindowState", "flick"}) {
        EXPECT_THAT(added(), Not(Contains(testing::StartsWith(window))));
    }
    for (const GlobalMethod *method : methods().last(48)) {
        EXPECT_EQ(method->signature().arguments().first().passing(), 2U);
        EXPECT_EQ(method->signature().arguments().first().flags(), 0);
    }
}

TEST_F(Overloads, OfTheInteractionFunctionsAreFoundByObjectAndButtonAsANumber)
{
    registerInteractionOverloadsFor(classForMetaObject(&QWindow::staticMetaObject));
    Inspector *const inspector = Inspector::self();
    QWindow window;
    const GlobalMethod *const method = inspector->findGlobalMethod(QStringLiteral("mouseClick"),
                                                                   {wrapAndRegisterQObject(&window),
                                                                    inspector->createInteger(3),
                                                                    inspector->createInteger(4),
                                                                    inspector->createInteger(Qt::RightButton)});
    ASSERT_NE(method, nullptr);
    EXPECT_EQ(signatureText(method), "mouseClick(object: QWindow, x: int, y: int, button: Qt::MouseButton)");
}

TEST_F(Overloads, ForNoClassAreNone)
{
    registerInteractionOverloadsFor(nullptr);
    const Class *const windowClass = classForMetaObject(&QWindow::staticMetaObject);
    registerDragAndDropOverloadsWithTarget(nullptr, windowClass);
    registerDragAndDropOverloadsWithTarget(windowClass, nullptr);
    EXPECT_TRUE(added().empty());
}

TEST_F(Overloads, OfDragAndDropGoFromTheFirstClassToTheSecond)
{
    const auto *const source = new Class(QStringLiteral("Source"));
    const auto *const target = new Class(QStringLiteral("Target"));
    registerDragAndDropOverloadsWithTarget(source, target);
    EXPECT_THAT(added(),
                ElementsAre("dragAndDrop(object: Source, target: Target)",
                            "dragAndDrop(object: Source, x: int, y: int, target: Target, targetX: int, "
                            "targetY: int)"));
}

TEST_F(Overloads, OfFlickCallTheirFunction)
{
    const Argument object(QStringLiteral("list"), classForMetaObject(&QWindow::staticMetaObject), Argument::ByPointer,
                          0);
    registerFlickODOverload(answer, object);
    EXPECT_THAT(added(), ElementsAre("flick(list: QWindow, dx: int, dy: int)"));
    Inspector *const inspector = Inspector::self();
    QWindow window;
    const SharedPtr<Object> result = inspector->callGlobalMethod(QStringLiteral("flick"),
                                                                 {wrapAndRegisterQObject(&window),
                                                                  inspector->createInteger(1),
                                                                  inspector->createInteger(2)});
    ASSERT_FALSE(result.isNull()) << inspector->takeError().toStdString();
    EXPECT_TRUE(result->sameAs(inspector->createInteger(3)));
}

TEST_F(Overloads, ByNameTakeNumbersForStatesButtonsAndModifiers)
{
    Inspector *const inspector = Inspector::self();
    EXPECT_EQ(inspector->findGlobalMethod(QStringLiteral("setWindowState"),
                                          {inspector->createString("w"), inspector->createInteger(2)}),
              setWindowStateByNameFn());
    EXPECT_EQ(inspector->findGlobalMethod(QStringLiteral("mouseClick"),
                                          {inspector->createString("w"), inspector->createInteger(0),
                                           inspector->createInteger(Qt::RightButton)}),
              mouseClickOBMByNameFn());
    const Class *const states = inspector->classByName(QStringLiteral("WindowState"));
    ASSERT_EQ(states->enums().size(), 1);
    EXPECT_STREQ(states->enums().first()->nameOf(4), "Fullscreen");
}
