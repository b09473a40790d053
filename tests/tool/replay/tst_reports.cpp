// The files that a replay leaves behind.

#include "replayfixture.h"

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtCore/QXmlStreamReader>
#include <QtGui/QImage>

using VantleTest::contentOf;
using VantleTest::Replay;
using VantleTest::ToolRun;

namespace {

/// What stands in an XML file, as far as the tests ask for it.
struct Element
{
    QString name;
    QMap<QString, QString> attributes;
    QString text;
};

class Reports : public Replay
{
protected:
    /// All elements of a file in the order of their ends; none if it is not
    /// well-formed.
    QList<Element> elementsOf(const char *file) const
    {
        QXmlStreamReader xml(contentOf(path(file)));
        QList<Element> open;
        QList<Element> result;
        while (!xml.atEnd()) {
            switch (xml.readNext()) {
            case QXmlStreamReader::StartElement: {
                Element element{xml.name().toString(), {}, {}};
                for (const QXmlStreamAttribute &attribute : xml.attributes())
                    element.attributes.insert(attribute.name().toString(), attribute.value().toString());
                open.append(element);
                break;
            }
            case QXmlStreamReader::Characters: open.last().text += xml.text(); break;
            case QXmlStreamReader::EndElement: result.append(open.takeLast()); break;
            default: break;
            }
        }
        EXPECT_FALSE(xml.hasError()) << file << ":" << xml.lineNumber() << ": " << qPrintable(xml.errorString());
        return xml.hasError() ? QList<Element>() : result;
    }

    QList<Element> elementsOf(const char *file, const char *name) const
    {
        QList<Element> result = elementsOf(file);
        result.removeIf([&](const Element &element) { return element.name != QLatin1String(name); });
        return result;
    }

    QStringList reports() const
    {
        return {QStringLiteral("--junit"), path("junit.xml"),           QStringLiteral("--report"),
                path("report.html"),       QStringLiteral("--timeout"), QStringLiteral("0.1")};
    }
};

const QByteArray mixedScript = "test.compare(1, 1, 'fine');\n"
                               "mouseClick('Main Button#save', 1, 1, Qt.LeftButton);\n"
                               "test.compare('<&>\"', \"]]>\\u0001\\ud800\");\n"
                               "console.log('a <message>');\n"
                               "mouseClick('Main Button#nowhere', 1, 1, Qt.LeftButton);\n";

TEST_F(Reports, junitCountsWhatItLists)
{
    EXPECT_TRUE(endsWith(1, replay(mixedScript, reports(), {QStringLiteral("print:the <program> speaks")})));
    const QList<Element> suites = elementsOf("junit.xml", "testsuite");
    ASSERT_EQ(suites.size(), 1);
    const QMap<QString, QString> &suite = suites.first().attributes;
    EXPECT_EQ(suite.value(QStringLiteral("name")), path("script.js"));
    EXPECT_EQ(suite.value(QStringLiteral("tests")), QStringLiteral("4"));
    EXPECT_EQ(suite.value(QStringLiteral("failures")), QStringLiteral("1"));
    EXPECT_EQ(suite.value(QStringLiteral("errors")), QStringLiteral("2"));
    static const QRegularExpression seconds(QStringLiteral("^\\d+\\.\\d{3}$"));
    EXPECT_TRUE(suite.value(QStringLiteral("time")).contains(seconds));
    static const QRegularExpression time(QStringLiteral("^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d$"));
    EXPECT_TRUE(suite.value(QStringLiteral("timestamp")).contains(time));

    EXPECT_EQ(elementsOf("junit.xml", "testcase").size(), 4);
    EXPECT_EQ(elementsOf("junit.xml", "failure").size(), 1);
    const QList<Element> errors = elementsOf("junit.xml", "error");
    ASSERT_EQ(errors.size(), 2) << "the script, which did not run to its end, and the statement";
    for (const Element &error : errors) {
        EXPECT_EQ(error.attributes.value(QStringLiteral("message")),
                  QStringLiteral("there is no object Main Button#nowhere"));
        EXPECT_TRUE(error.text.contains(QStringLiteral("script.js:5:1")));
    }
    EXPECT_EQ(elementsOf("junit.xml", "system-out").first().text, QStringLiteral("a <message>"));
    EXPECT_TRUE(
        elementsOf("junit.xml", "system-err").first().text.startsWith(QStringLiteral("the <program> speaks\n")));
    EXPECT_EQ(elementsOf("junit.xml", "testsuites").first().attributes.value(QStringLiteral("tests")),
              QStringLiteral("4"));
}

TEST_F(Reports, junitHasAnErrorForAProgramThatDiesAndForOneThatCannotBeStarted)
{
    EXPECT_TRUE(endsWith(2, replay("crash();\n", reports())));
    const QList<Element> errors = elementsOf("junit.xml", "error");
    ASSERT_EQ(errors.size(), 2);
    EXPECT_EQ(errors.first().attributes.value(QStringLiteral("message")),
              QStringLiteral("the program ended with signal 11 (SIGSEGV)"));
    EXPECT_TRUE(errors.first().text.contains(QStringLiteral("about to crash")));

    write("script.js", "");
    EXPECT_TRUE(endsWith(3,
                         start(QStringList{QStringLiteral("--offscreen")} + reports()
                               + QStringList{path("script.js"), QStringLiteral("--"), QStringLiteral("/nowhere")})));
    EXPECT_EQ(elementsOf("junit.xml", "error").size(), 1);
}

TEST_F(Reports, aScriptWithoutChecksCounts)
{
    EXPECT_TRUE(passes("mouseClick('Main Button#save', 1, 1, Qt.LeftButton);\n", reports()));
    const QList<Element> cases = elementsOf("junit.xml", "testcase");
    ASSERT_EQ(cases.size(), 1);
    EXPECT_EQ(cases.first().attributes.value(QStringLiteral("name")), QStringLiteral("runs to its end"));
}

TEST_F(Reports, theHtmlIsWellFormedAndListsEveryStep)
{
    EXPECT_TRUE(endsWith(1, replay(mixedScript, reports())));
    QMap<QString, int> steps;
    for (const Element &element : elementsOf("report.html", "li"))
        ++steps[element.attributes.value(QStringLiteral("class"))];
    const QMap<QString, int> expected{{QStringLiteral("step passed"), 2},
                                      {QStringLiteral("step failed"), 1},
                                      {QStringLiteral("step broken"), 1},
                                      {QStringLiteral("step message"), 1}};
    EXPECT_EQ(steps, expected);
}

TEST_F(Reports, theHtmlNeedsNothingFromOutside)
{
    EXPECT_TRUE(endsWith(1, replay(mixedScript, reports())));
    const QList<Element> elements = elementsOf("report.html");
    ASSERT_FALSE(elements.isEmpty());
    for (const Element &element : elements) {
        EXPECT_NE(element.name, QStringLiteral("link"));
        EXPECT_NE(element.name, QStringLiteral("iframe"));
        EXPECT_FALSE(element.attributes.contains(QStringLiteral("src"))) << qPrintable(element.name);
        const QString target = element.attributes.value(QStringLiteral("href"));
        EXPECT_TRUE(target.isEmpty() || target.startsWith(QLatin1Char('#'))) << qPrintable(target);
    }
    const QString html = contentOf(path("report.html"));
    for (const char *outside : {"http://", "https://", "@import", "url("})
        EXPECT_FALSE(html.contains(QLatin1String(outside))) << outside;
}

TEST_F(Reports, everyPictureThatIsShownIsThereOnce)
{
    EXPECT_TRUE(endsWith(1,
                         replay("mouseClick('Main Button#save', 1, 1, Qt.LeftButton);\n"
                                "mouseClick('Main Button#save', 1, 1, Qt.LeftButton);\n"
                                "test.compareImage('Main Button#save', 'kept.png');\n",
                                reports())));
    const QString html = contentOf(path("report.html"));
    static const QRegularExpression shown(QStringLiteral("data-picture=\"([0-9a-f]+)\""));
    QStringList keys;
    auto matches = shown.globalMatch(html);
    while (matches.hasNext())
        keys.append(matches.next().captured(1));
    // Before and after of each click, and what was compared.
    EXPECT_EQ(keys.size(), 5);
    EXPECT_EQ(keys.at(1), keys.at(2)) << "the end of one click is the beginning of the next";
    keys.removeDuplicates();
    EXPECT_EQ(keys.size(), 4);
    for (const QString &key : keys) {
        const QRegularExpression kept(QStringLiteral("\"%1\":\"([A-Za-z0-9+/=]+)\"").arg(key));
        EXPECT_EQ(html.count(kept), 1);
        const QByteArray png = QByteArray::fromBase64(kept.match(html).captured(1).toLatin1());
        EXPECT_FALSE(QImage::fromData(png).isNull());
    }
}

TEST_F(Reports, thePointOfActionIsMarkedInPartsOfThePicture)
{
    // At (30, 20) of 160×100.
    EXPECT_TRUE(passes("mouseClick('Main Button#save', 1, 1, Qt.LeftButton);\n", reports()));
    EXPECT_TRUE(contentOf(path("report.html"))
                    .contains(QStringLiteral("<span class=\"point\" style=\"left:18.75%;top:20.00%\">")));
}

TEST_F(Reports, picturesOfAScriptStayInItsFolderUnlessPathsAreAllowed)
{
    const QTemporaryDir elsewhere;
    ASSERT_TRUE(QFile::link(elsewhere.path(), path("link")));
    const QString outside[] = {elsewhere.filePath(QStringLiteral("a.png")),
                               QStringLiteral("../") + QFileInfo(elsewhere.path()).fileName()
                                   + QStringLiteral("/b.png"),
                               QStringLiteral("link/c.png")};
    for (const QString &file : outside) {
        const QByteArray script = QStringLiteral("test.screenshot('Main Button#save', '%1');\n").arg(file).toUtf8();
        EXPECT_TRUE(endsWith(1, replay(script.constData())));
    }
    EXPECT_TRUE(endsWith(1, replay("test.compareImage('Main Button#save', '../outside.png');\n")));
    EXPECT_TRUE(QDir(elsewhere.path()).isEmpty());
    EXPECT_TRUE(passes("test.screenshot('Main Button#save', 'new/folder/a.png');\n"));
    const QByteArray script = QStringLiteral("test.screenshot('Main Button#save', '%1');\n").arg(outside[0]).toUtf8();
    EXPECT_TRUE(passes(script.constData(), {QStringLiteral("--allow-paths")}));
    EXPECT_TRUE(QFile::exists(outside[0]));
}

TEST_F(Reports, withoutAReportNoPicturesAreTaken)
{
    // The program logs every request for a picture.
    EXPECT_TRUE(passes("mouseClick('Main Button#save', 1, 1, Qt.LeftButton);\n",
                       {QStringLiteral("--junit"), path("junit.xml")}));
    EXPECT_EQ(elementsOf("junit.xml", "system-err").first().text.count(QStringLiteral("picture taken")), 0);
    EXPECT_TRUE(passes("mouseClick('Main Button#save', 1, 1, Qt.LeftButton);\n", reports()));
    EXPECT_EQ(elementsOf("junit.xml", "system-err").first().text.count(QStringLiteral("picture taken")), 2);
}

TEST_F(Reports, withJUnitAloneThePictureOfAFailureIsKept)
{
    write("b.js", "test.pass();\n");
    const QByteArray text = "test.pass();\nmouseClick('Dialog Button#ok', 1, 1, Qt.LeftButton);\n"
                            "test.fail();\nmouseClick('Main Button#nowhere', 1, 1, Qt.LeftButton);\n";
    EXPECT_TRUE(endsWith(1, replay(text, {QStringLiteral("--junit"), path("results.xml")})));
    EXPECT_EQ(elementsOf("results.xml", "system-err").first().text.count(QStringLiteral("picture taken")), 2);
    EXPECT_TRUE(elementsOf("results.xml", "failure")
                    .first()
                    .text.endsWith(QStringLiteral("  picture: results-pictures/script-step3.png")));
    EXPECT_TRUE(elementsOf("results.xml", "error")
                    .last()
                    .text.endsWith(QStringLiteral("  picture: results-pictures/script-step4.png")));
    EXPECT_EQ(QImage(path("results-pictures/script-step3.png")).size(), QSize(160, 100));
    EXPECT_EQ(QDir(path("results-pictures")).entryList(QDir::Files).size(), 2);
}

TEST_F(Reports, picturesOfScriptsOfOneNameAreKeptApart)
{
    QDir(path(".")).mkdir(QStringLiteral("sub"));
    write("a.js", "test.fail();\n");
    write("sub/a.js", "mouseClick('Main Button#save', 1, 1, Qt.LeftButton);\ntest.fail();\n");
    EXPECT_TRUE(
        endsWith(1, replayFiles({path("a.js"), path("sub/a.js")}, {QStringLiteral("--junit"), path("results.xml")})));
    const QStringList files = QDir(path("results-pictures")).entryList(QDir::Files);
    EXPECT_EQ(files, (QStringList{QStringLiteral("a-2-step2.png"), QStringLiteral("a-step1.png")}));
}

TEST_F(Reports, thePicturesAreOfTheWindowOfTheObject)
{
    // At (30, 20) of 60×40.
    EXPECT_TRUE(passes("mouseClick('Dialog Button#ok', 1, 1, Qt.LeftButton);\n", reports()));
    EXPECT_TRUE(contentOf(path("report.html"))
                    .contains(QStringLiteral("<span class=\"point\" style=\"left:50.00%;top:50.00%\">")));
    EXPECT_TRUE(passes("mouseClick(findObject('Dialog Button#ok'), 1, 1, Qt.LeftButton);\n", reports()));
    EXPECT_TRUE(contentOf(path("report.html")).contains(QStringLiteral("style=\"left:50.00%;top:50.00%\">")));

    EXPECT_TRUE(endsWith(1,
                         replay("findObject('Dialog Button#ok').absent();\n",
                                {QStringLiteral("--junit"), path("results.xml")})));
    EXPECT_TRUE(endsWith(1,
                         replay("waitForObject('Main Button#covered', 5);\n",
                                {QStringLiteral("--junit"), path("results.xml")})));
    EXPECT_EQ(QImage(path("results-pictures/script-step1.png")).size(), QSize(160, 100));
    EXPECT_TRUE(
        endsWith(1, replay("findObject('Dialog').readOnly = 1;\n", {QStringLiteral("--junit"), path("results.xml")})));
    EXPECT_EQ(QImage(path("results-pictures/script-step1.png")).size(), QSize(60, 40));
}

TEST_F(Reports, picturesWaitForTheirObject)
{
    const QStringList wait{QStringLiteral("--timeout"), QStringLiteral("5")};
    EXPECT_TRUE(passes("test.screenshot('Main Button#late', 'late.png');\n"
                       "test.screenshot('Main Button#drifting', 'still.png');\n",
                       wait));
    EXPECT_EQ(QImage(path("late.png")).size(), QSize(20, 10));
    // It rests from the fourth look on, and the fifth one tells.
    EXPECT_EQ(QImage(path("still.png")).size(), QSize(25, 10));
}

TEST_F(Reports, whatKeepsAPictureFromBeingTakenIsExplained)
{
    const QStringList wait{QStringLiteral("--timeout"), QStringLiteral("0.2")};
    for (const char *text :
         {"test.screenshot('Main Button#nowhere');\n", "test.compareImage('Main Button#nowhere', 'a.png');\n"}) {
        ToolRun &run = replay(text, wait);
        EXPECT_TRUE(endsWith(1, run)) << text;
        EXPECT_TRUE(says(run, QStringLiteral("closest:    Main Button#save (QQuickButton)"))) << text;
    }
    ToolRun &run = replay("test.screenshot('Main Button#hidden');\n", wait);
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("cannot take a picture of Main Button#hidden: it is not visible")));
    EXPECT_TRUE(passes("let names = [];\n"
                       "for (const name of ['Main Button#nowhere', 'Main Button#hidden'])\n"
                       "    try { test.screenshot(name); } catch (error) { names.push(error.name); }\n"
                       "test.compare(names, ['ObjectNotFound', 'ObjectNotReady']);\n",
                       wait));
}

TEST_F(Reports, logLinesOfTheAgentStandWithTheirStep)
{
    EXPECT_TRUE(passes("test.pass();\nmouseClick('Main Button#save', 1, 1, Qt.LeftButton);\n", reports(),
                       {QStringLiteral("log:beware of <this>")}));
    const QString html = contentOf(path("report.html"));
    const QString step = html.section(QStringLiteral("id=\"s1-2\""), 1).section(QStringLiteral("</li>"), 0, 0);
    EXPECT_TRUE(step.contains(QStringLiteral("<span class=\"warning\">beware of &lt;this&gt;</span>")));
}

TEST_F(Reports, screenshotsAreWrittenBesideTheScript)
{
    EXPECT_TRUE(passes("test.screenshot();\n"
                       "test.screenshot('Main Button#save', 'button.png');\n"
                       "test.screenshot(findObject('Main'), 'window.png');\n"));
    EXPECT_EQ(QImage(path("button.png")).size(), QSize(20, 10));
    EXPECT_EQ(QImage(path("window.png")).size(), QSize(160, 100));
    EXPECT_TRUE(passes("test.screenshot('Main', 'deep/er/window.png');\n"));
    EXPECT_EQ(QImage(path("deep/er/window.png")).size(), QSize(160, 100));
}

TEST_F(Reports, keptPicturesAreComparedAndUpdated)
{
    const QByteArray text = "mouseClick('Main Button#save', 1, 1, Qt.LeftButton);\n"
                            "test.compareImage('Main Button#save', 'kept.png');\n";
    EXPECT_TRUE(endsWith(1, replay(text)));
    EXPECT_TRUE(passes(text, {QStringLiteral("--update-images")}));
    EXPECT_TRUE(passes(text));
    // One click more makes it another blue, by 20.
    ToolRun &run = replay(text.left(text.indexOf('\n') + 1) + text, reports());
    EXPECT_TRUE(endsWith(1, run));
    EXPECT_TRUE(says(run, QStringLiteral("200 of 200 pixels differ, by up to 20, within 20×10 at (0, 0)")));
    const QString html = contentOf(path("report.html"));
    for (const char *caption : {"Found", "Kept", "Difference"})
        EXPECT_TRUE(html.contains(QStringLiteral("<figcaption>%1</figcaption>").arg(QLatin1String(caption))))
            << caption;
    QByteArray tolerant = text.left(text.indexOf('\n') + 1) + text;
    tolerant.replace("'kept.png'", "'kept.png', {tolerance: 20}");
    EXPECT_TRUE(passes(tolerant));
}

} // namespace
