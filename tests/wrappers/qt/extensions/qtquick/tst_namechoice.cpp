#include "wrappers/qt/extensions/qtquick/scene.h"

#include "wrappers/qt/objectnamecache.h"

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

/// Names that recordings choose, with the extensions that come with the library.
class NameChoices : public VantleTest::QuickScene
{
protected:
    /// Makes a window that shows \p content.
    void show(const QByteArray &content)
    {
        load("import QtQuick\nimport QtQuick.Controls\nimport QtQuick.Layouts\n"
             "Window { id: w; width: 400; height: 400; visible: true\n"
             + content + "\n}");
    }

    /// The name without the window ahead of it. The test fails unless the name
    /// leads back to \p object.
    static QString nameOf(QObject *object)
    {
        const QString text = scriptName(object);
        EXPECT_EQ(nativeQObject(Application::self()->objectForName(text)), object) << qPrintable(text);
        const QString window = QStringLiteral("Window#w ");
        EXPECT_TRUE(text.startsWith(window)) << qPrintable(text);
        return text.sliced(window.size()).remove(QStringLiteral(":visible"));
    }

    QString nameOf(const char *property) const
    {
        auto *const item = root()->property(property).value<QQuickItem *>();
        EXPECT_TRUE(item) << property;
        return item ? nameOf(item) : QString();
    }

    static QString name(const char *text) { return QString::fromUtf8(text); }
};

} // namespace

TEST_F(NameChoices, TakeTheFirstThatSinglesOut)
{
    show("property Item a: one; property Item b: two\n"
         "Rectangle { id: one; objectName: 'first' }\n"
         "Rectangle { id: two; property string text: 'Two' }\n"
         "Component { id: part; Rectangle { id: shared; property string text } }\n"
         "Loader { id: l1; sourceComponent: part; onLoaded: item.text = 'Left' }\n"
         "Loader { id: l2; sourceComponent: part; onLoaded: item.text = 'Right' }\n"
         "property Item left: l1.item; property Item right: l2.item");
    EXPECT_EQ(nameOf("a"), name("Rectangle[objectName=\"first\"]"));
    EXPECT_EQ(nameOf("b"), name("Rectangle#two"));
    EXPECT_EQ(nameOf("left"), name("Rectangle[text=\"Left\"]")) << "the id is there twice";
    EXPECT_EQ(nameOf("right"), name("Rectangle[text=\"Right\"]"));
}

TEST_F(NameChoices, SayWhatIsSaidAboutAnItemElsewhere)
{
    show("property Item a: row.children[0]; property Item b: row.children[1]; property Item c: row.children[2]\n"
         "property Item d: row.children[3]; property Item e: row.children[4]\n"
         "Row { id: row\n"
         "Button { icon.name: 'document-open'; ToolTip.text: 'Open' }\n"
         "Button { icon.source: 'qrc:/qt-project.org/imports/QtQuick/Controls/Basic/images/check.png' }\n"
         "Button { Accessible.name: 'Paste'; icon.name: 'edit-paste' }\n"
         "Button { ToolTip.text: 'Undo' }\n"
         "TextField { text: 'typed'; placeholderText: 'Search' } }");
    EXPECT_EQ(nameOf("a"), name("Row#row Button[iconName=\"document-open\"]"));
    EXPECT_EQ(nameOf("b"), name("Row#row Button[iconFile=\"check.png\"]"));
    EXPECT_EQ(nameOf("c"), name("Row#row Button[accessibleName=\"Paste\"]"));
    EXPECT_EQ(nameOf("d"), name("Row#row Button[toolTip=\"Undo\"]"));
    EXPECT_EQ(nameOf("e"), name("TextField[placeholderText=\"Search\"]"));
}

TEST_F(NameChoices, TakeLabelsFromWhereAUserReadsThem)
{
    show(
        "property Item a: grid.children[1]; property Item b: grid.children[3]\n"
        "property Item c: column.children[1]; property Item d: box.children[1]\n"
        "property Item f: marks.children[0]\n"
        "GridLayout { id: grid; columns: 2\n"
        "Label { text: 'Name:' } TextField {} Label { text: 'Street:' } TextField {} }\n"
        "Column { id: column; y: 150; Text { text: 'Volume' } Slider {} }\n"
        "Rectangle { id: box; y: 250; width: 50; height: 20; Text { text: 'OK' } MouseArea { anchors.fill: parent } }\n"
        "Row { id: marks; y: 300; CheckBox {} Text { text: 'Agree' } }");
    EXPECT_EQ(nameOf("a"), name("GridLayout#grid TextField[label=\"Name:\"]"));
    EXPECT_EQ(nameOf("b"), name("GridLayout#grid TextField[label=\"Street:\"]"));
    EXPECT_EQ(nameOf("c"), name("Column#column Slider[label=\"Volume\"]"));
    EXPECT_EQ(nameOf("d"), name("Rectangle#box MouseArea[label=\"OK\"]"));
    EXPECT_EQ(nameOf("f"), name("Row#marks CheckBox[label=\"Agree\"]"));
}

TEST_F(NameChoices, TakeNoLabelThatTellsTheValue)
{
    show("property Item a: column.children[1]; property Item b: row.children[1]\n"
         "Column { id: column; Text { text: 'Volume: 53' } Slider { value: 53; to: 100 } }\n"
         "Row { id: row; y: 100; Text { text: 'Red' } ComboBox { model: ['Red'] } }");
    EXPECT_EQ(nameOf("a"), name("Slider"));
    EXPECT_EQ(nameOf("b"), name("ComboBox"));
}

TEST_F(NameChoices, CallEntriesOfViewsByTheirTextAndThenByTheirIndex)
{
    show("property ListView view: view; property ListView blank: blank\n"
         "ListView { id: view; width: 100; height: 100; model: ['Ada', 'Bob', 'Bob']\n"
         "delegate: ItemDelegate { id: row; required property string modelData; text: modelData; height: 30 } }\n"
         "ListView { id: blank; y: 100; width: 100; height: 100; model: 3\n"
         "delegate: Rectangle { id: entry; width: 9; height: 9; MouseArea { id: area; anchors.fill: parent } } }");
    auto *const view = root()->property("view").value<QQuickItem *>();
    auto *const blank = root()->property("blank").value<QQuickItem *>();
    const auto entry = [](QQuickItem *list, int index) {
        QQuickItem *item = nullptr;
        QMetaObject::invokeMethod(list, "itemAtIndex", Q_RETURN_ARG(QQuickItem *, item), Q_ARG(int, index));
        EXPECT_TRUE(item) << index;
        return item;
    };
    EXPECT_EQ(nameOf(entry(view, 0)), name("ListView#view ItemDelegate[text=\"Ada\"]"));
    EXPECT_EQ(nameOf(entry(view, 1)), name("ListView#view ItemDelegate[index=\"1\"]"));
    EXPECT_EQ(nameOf(entry(view, 2)), name("ListView#view ItemDelegate[index=\"2\"]"));
    EXPECT_EQ(nameOf(entry(blank, 1)), name("ListView#blank Rectangle[index=\"1\"]"));
    EXPECT_EQ(nameOf(entry(blank, 1)->childItems().value(0)),
              name("ListView#blank Rectangle[index=\"1\"] MouseArea#area"));
}

TEST_F(NameChoices, OfReusedDelegatesFollowTheRow)
{
    show("property ListView view: view\n"
         "ListView { id: view; width: 100; height: 100; model: 100; reuseItems: true; cacheBuffer: 0\n"
         "delegate: Rectangle { width: 100; height: 25 } }");
    auto *const view = root()->property("view").value<QQuickItem *>();
    const auto shown = [&] {
        QStringList names;
        const QList<QQuickItem *> items = view->property("contentItem").value<QQuickItem *>()->childItems();
        for (QQuickItem *item : items) {
            if (item->isVisible())
                names.append(nameOf(item));
        }
        return names;
    };
    EXPECT_TRUE(shown().contains(name("ListView#view Rectangle[index=\"2\"]")));
    QMetaObject::invokeMethod(view, "positionViewAtIndex", Q_ARG(int, 60), Q_ARG(int, 0));
    QMetaObject::invokeMethod(view, "forceLayout");
    EXPECT_TRUE(shown().contains(name("ListView#view Rectangle[index=\"61\"]")));
}

TEST_F(NameChoices, CallCellsByRowAndColumn)
{
    show("property TableView table: table\n"
         "ListModel { id: rows; ListElement { name: 'a' } ListElement { name: 'b' } }\n"
         "TableView { id: table; width: 200; height: 100; model: rows\n"
         "delegate: TextField { implicitWidth: 50; implicitHeight: 20; text: 'typed' } }");
    auto *const table = root()->property("table").value<QQuickItem *>();
    QQuickItem *cell = nullptr;
    ASSERT_TRUE(VantleTest::waitUntil([&] {
        QMetaObject::invokeMethod(table, "itemAtCell", Q_RETURN_ARG(QQuickItem *, cell), Q_ARG(int, 0), Q_ARG(int, 1));
        return cell;
    }));
    EXPECT_EQ(nameOf(cell), name("TableView#table TextField[row=\"1\"][column=\"0\"]"));
}

TEST_F(NameChoices, CallNamelessPartsBelowTheirControl)
{
    show("property Item b: card.children[0]\n"
         "Rectangle { id: card; MouseArea {} } Rectangle { MouseArea {} }");
    EXPECT_EQ(nameOf("b"), name("Rectangle#card MouseArea"));
}

TEST_F(NameChoices, CountOnlyAsALastResort)
{
    show("property Item a: row.children[1]\n Row { id: row; Rectangle { MouseArea {} } Rectangle {} Rectangle {} }");
    EXPECT_EQ(nameOf("a"), name("Row#row Rectangle:nth(2)"));
}

TEST_F(NameChoices, TextsOfReadOnlyFieldsAreTexts)
{
    show("property Item b: row.children[0]; property Item c: row.children[1]\n"
         "Row { id: row; TextInput { readOnly: true; text: 'Fixed' } TextInput { text: 'typed' } }");
    EXPECT_EQ(nameOf("b"), name("TextInput[text=\"Fixed\"]"));
    EXPECT_EQ(nameOf("c"), name("Row#row TextInput:nth(2)"));
}

TEST_F(NameChoices, LineBreaksOfAllKindsMakeAPage)
{
    show("property Item a: row.children[0]; property Item b: row.children[1]; property Item c: row.children[2]\n"
         "Row { id: row; Text { text: 'a\\rb' } Text { text: 'a\\u2028b' } Text { text: 'a\\u2029b' } }");
    EXPECT_EQ(nameOf("a"), name("Row#row Text"));
    EXPECT_EQ(nameOf("b"), name("Row#row Text:nth(2)"));
    EXPECT_EQ(nameOf("c"), name("Row#row Text:nth(3)"));
}

TEST_F(NameChoices, ForMovesLookAtNothingElse)
{
    show("property Item a: row.children[1]\n Row { id: row; Text { text: 'a' } Text { text: 'a' } }");
    auto *const item = root()->property("a").value<QQuickItem *>();
    const UnverifiedNames unverified;
    EXPECT_EQ(scriptName(item), name("Window#w Text[text=\"a\"]:visible"));
}
