#include "wrappers/qt/extensions/qtquickcommon/identity/itemids.h"

#include <gtest/gtest.h>

#include <QtCore/QUrl>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>

using Vantle::QtWrapper::normalizeQuickUrlProperty;

namespace {

class UrlProperties : public testing::Test
{
protected:
    /// Puts the item into a document at \p url.
    void setDocument(const char *url)
    {
        m_context.setBaseUrl(QUrl(QString::fromLatin1(url)));
        if (!qmlContext(&item))
            QQmlEngine::setContextForObject(&item, &m_context);
    }

    /// The text that becomes of a URL property with this value.
    std::string normalized(const QUrl &url)
    {
        item.setProperty("source", url);
        QString text = QStringLiteral("before");
        EXPECT_TRUE(normalizeQuickUrlProperty(&item, "source", text));
        return text.toStdString();
    }

    std::string normalized(const char *url) { return normalized(QUrl(QString::fromLatin1(url))); }

    QQmlEngine m_engine;
    QQmlContext m_context{&m_engine};
    QQuickItem item;
};

TEST_F(UrlProperties, aFileBelowTheDocumentIsRelativeToItsDirectory)
{
    setDocument("file:///app/qml/main");
    EXPECT_EQ(normalized("file:///app/qml/images/a.png"), "images/a.png");
    EXPECT_EQ(normalized("file:///app/qml/a.png"), "a.png");
    EXPECT_EQ(normalized("file:///app/qml/x/../images//a.png"), "images/a.png");
    EXPECT_EQ(normalized("file:///app/qml/sp%20ace/%C3%BC.png"), "sp ace/ü.png");
}

TEST_F(UrlProperties, anyOtherLocalFileIsItsPlainPath)
{
    setDocument("file:///app/qml/main.qml");
    EXPECT_EQ(normalized("file:///other/a.png"), "/other/a.png");
    EXPECT_EQ(normalized("file:///app/a.png"), "/app/a.png");
    EXPECT_EQ(normalized("file:///APP/qml/a.png"), "/APP/qml/a.png");
    EXPECT_EQ(normalized("file:///app/qml/../a.png"), "/app/a.png");
}

TEST_F(UrlProperties, aNeighbourWhoseNameBeginsLikeTheDirectoryIsRelativeToo)
{
    setDocument("file:///a/b/main.qml");
    EXPECT_EQ(normalized("file:///a/bc/x"), "../bc/x");
    EXPECT_EQ(normalized("file:///a/b"), ".");
}

TEST_F(UrlProperties, aLocalFileInADocumentThatIsNotKeepsItsScheme)
{
    setDocument("qrc:/qml/main.qml");
    EXPECT_EQ(normalized("file:///app/qml/a.png"), "file:///app/qml/a.png");
    setDocument("http://example.org/main.qml");
    EXPECT_EQ(normalized("file:///app/qml/a.png"), "file:///app/qml/a.png");
}

TEST_F(UrlProperties, otherSchemesStayAsTheyAre)
{
    for (const char *document : {"file:///app/qml/main.qml", "qrc:/qml/main.qml"}) {
        setDocument(document);
        EXPECT_EQ(normalized("qrc:/qml/images/a.png"), "qrc:/qml/images/a.png");
        EXPECT_EQ(normalized("https://example.org/a.png?b=c#d"), "https://example.org/a.png?b=c#d");
        EXPECT_EQ(normalized("image://provider/a"), "image://provider/a");
        EXPECT_EQ(normalized("images/a.png"), "images/a.png");
    }
}

TEST_F(UrlProperties, withoutAContextTheTextIsTheUrl)
{
    EXPECT_EQ(normalized("file:///app/qml/a.png"), "file:///app/qml/a.png");
}

TEST_F(UrlProperties, anEmptyUrlIsAnEmptyText)
{
    EXPECT_EQ(normalized(QUrl()), "");
    setDocument("file:///app/qml/main.qml");
    EXPECT_EQ(normalized(QUrl()), "");
}

TEST_F(UrlProperties, aLocalUrlWithoutAPathStaysAsItIs)
{
    setDocument("file:///app/qml/main.qml");
    const QUrl url(QStringLiteral("file:"));
    EXPECT_EQ(normalized(url), url.toString().toStdString());
}

TEST_F(UrlProperties, aRelativeLocalPathIsKept)
{
    setDocument("file:///app/qml/main.qml");
    EXPECT_EQ(normalized("file:images/a.png"), "images/a.png");
}

TEST_F(UrlProperties, aTextThatHoldsAUrlIsLeftAlone)
{
    setDocument("file:///app/qml/main.qml");
    item.setProperty("source", QStringLiteral("file:///app/qml/a.png"));
    QString text = QStringLiteral("before");
    EXPECT_FALSE(normalizeQuickUrlProperty(&item, "source", text));
    EXPECT_EQ(text, QStringLiteral("before"));
}

TEST_F(UrlProperties, aPropertyThatDoesNotExistIsLeftAlone)
{
    QString text = QStringLiteral("before");
    EXPECT_FALSE(normalizeQuickUrlProperty(&item, "source", text));
    EXPECT_EQ(text, QStringLiteral("before"));
}

TEST_F(UrlProperties, anyPropertyOfUrlTypeCounts)
{
    setDocument("file:///app/qml/main.qml");
    item.setProperty("picture", QUrl(QStringLiteral("file:///app/qml/a.png")));
    QString text;
    EXPECT_TRUE(normalizeQuickUrlProperty(&item, "picture", text));
    EXPECT_EQ(text, QStringLiteral("a.png"));
}

} // namespace
