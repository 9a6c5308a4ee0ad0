// SPDX-License-Identifier: Apache-2.0
#include <tests/devicecontrol/multichannelserver/common/logdisplaytest.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>

#include <ostream>

namespace {

constexpr int Bound = 2000;  // characters of a message that are shown

QString Repeated(const char* text, int times) {
    return QString::fromUtf8(text).repeated(times);
}

class LogDisplayInput : public LogDisplayTest {
  protected:
    LogDisplayInput() {
        m_display.resize(1000, 700);
        m_display.show();
        Bind();
    }
    /// How long the window is not served for \a message, in ms.
    qint64 Cost(const QString& message) {
        QElapsedTimer time;
        time.start();
        Log(message);
        m_display.repaint();
        return time.elapsed();
    }
};

TEST_F(LogDisplayInput, MarkupIsShownAsWhatItFormats) {
    Log(QStringLiteral("<b>boot</b> <font color=\"#ff0000\">failed</font>"));
    EXPECT_EQ(Lines(), QStringList{QStringLiteral("boot failed")});
    QTextCursor cursor(Area().document());
    cursor.setPosition(1);
    EXPECT_EQ(cursor.charFormat().fontWeight(), int(QFont::Bold));
}

TEST_F(LogDisplayInput, TheFormatOfAMessageEndsWithIt) {
    Log(QStringLiteral("<b>bold"));
    Log(QString(Bound + 1, QLatin1Char('x')));
    QTextCursor cursor(Area().document());
    cursor.movePosition(QTextCursor::End);
    EXPECT_EQ(cursor.charFormat().fontWeight(), int(QFont::Normal));
}

TEST_F(LogDisplayInput, ThePlaceOfAMessageEndsWithIt) {
    Log(QStringLiteral("<p>left</p><p align=\"right\">right</p>"));
    EXPECT_TRUE(Area().document()->lastBlock().blockFormat().alignment() & Qt::AlignRight);
    Log(QString(Bound + 1, QLatin1Char('x')));
    EXPECT_EQ(Area().document()->lastBlock().blockFormat().alignment(), Qt::AlignLeft);
}

TEST_F(LogDisplayInput, OfManyTagsTheSourceIsShown) {
    Log(Repeated("<b>x", 100));
    EXPECT_EQ(Lines().last(), Repeated("x", 100));
    Log(Repeated("<b>x", 101));
    EXPECT_EQ(Lines().last(), Repeated("<b>x", 101));
}

TEST_F(LogDisplayInput, ALongLineIsCutAndSaysHowLongItWas) {
    Log(QString(Bound, QLatin1Char('a')));
    EXPECT_EQ(Lines().last(), QString(Bound, QLatin1Char('a')));
    Log(QString(Bound + 1, QLatin1Char('b')));
    EXPECT_EQ(Lines().last(),
              QString(Bound, QLatin1Char('b')) + QStringLiteral("... [cut, 2001 characters in all]"));
    Log(QString(50000, QLatin1Char('c')));
    EXPECT_TRUE(Lines().last().endsWith(QStringLiteral("c... [cut, 50000 characters in all]")));
    EXPECT_EQ(Lines().size(), 3);
}

TEST_F(LogDisplayInput, ALongLineOfMarkupIsCutAsPlainText) {
    Log(Repeated("<b>x</b>%2%n", 1000));
    EXPECT_EQ(Lines(), QStringList{Repeated("<b>x</b>%2%n", 1000).left(Bound) +
                                   QStringLiteral("... [cut, 12000 characters in all]")});
}

TEST_F(LogDisplayInput, ALineIsNotCutWithinACharacter) {
    Log(QStringLiteral("x") + Repeated("\xF0\x9F\x93\xA1", Bound));
    const QString shown = Lines().last().section(QStringLiteral("..."), 0, 0);
    EXPECT_EQ(shown.size(), Bound - 1);
    EXPECT_TRUE(shown.at(shown.size() - 1).isLowSurrogate());
}

struct FloodRow {
    const char* name;
    QString message;
};
void PrintTo(const FloodRow& row, std::ostream* stream) {
    *stream << row.name;
}

class LogDisplayFlood : public LogDisplayInput, public testing::WithParamInterface<FloodRow> {};

// What is shown of it is bounded, and with that the time; some of these would take for ever otherwise.
TEST_P(LogDisplayFlood, DoesNotFreezeTheWindow) {
    EXPECT_LT(Cost(GetParam().message), 5000);
    EXPECT_LE(Area().toPlainText().size(), Bound + 100);
}

INSTANTIATE_TEST_SUITE_P(
    Messages, LogDisplayFlood,
    testing::Values(
        FloodRow{"AMegabyteOfText", Repeated("word ", 210000)},
        FloodRow{"AMegabyteWithoutABlank", Repeated("x", 1 << 20)},
        FloodRow{"AMegabyteOfLines", Repeated("\n", 1 << 20)},
        FloodRow{"AMegabyteOfComposedLetters", Repeated("a\xCC\x81\xCC\x82\xD8\xA8\xD7\x90", 150000)},
        FloodRow{"AMegabyteOfTags", Repeated("<b>x", 1 << 18)},
        FloodRow{"AMegabyteOfTables", Repeated("<table><tr><td>", 70000)},
        FloodRow{"TablesInTables", Repeated("<table><tr><td>", 130)},
        FloodRow{"TablesInTablesSpelledOddly", Repeated("< TABLE ><TR><TD>", 100)},
        FloodRow{"TablesInTablesByEntities", QStringLiteral("<b>") + Repeated("<&#116;able><tr><td>", 90)},
        FloodRow{"TablesInTablesByQuotes", QStringLiteral("<b>") + Repeated("<\"table\"><tr><td>", 90)},
        FloodRow{"ManyRowsOfManyColumns",
                 QStringLiteral("<table>") + Repeated("<td>", 240) + Repeated("<tr>", 240)},
        FloodRow{"AHugeSpanOfColumns",
                 QStringLiteral("<table><tr><td colspan=2000000000>x<tr><td>y</table>")},
        FloodRow{
            "AHugeSpanByEntities",
            QStringLiteral(
                "<table><tr><td colspan=\"&#57;&#57;&#57;&#57;&#57;&#57;&#57;&#57;\">x<tr><td>y</table>")},
        FloodRow{"AHugeSpanBehindAnEndInQuotes",
                 QStringLiteral("<table><tr><td title=\">\" colspan=99999999>x<tr><td>y</table>")},
        FloodRow{"AHugeSpanOfRows", QStringLiteral("<table><tr><td rowspan=2000000000>x<tr><td>y</table>")},
        FloodRow{"ManySpans", QStringLiteral("<table><tr>") + Repeated("<td colspan=999>", 60) +
                                  Repeated("<tr><td>", 100)},
        FloodRow{"CellsInCells", Repeated("<td><thead>", 180)},
        FloodRow{"ParagraphsInParagraphs", Repeated("<pre>x", 330)},
        FloodRow{"HugeLines", Repeated("<dl style='line-height:9999%;font-size:9999pt'>x", 40)},
        FloodRow{"ListsInLists", Repeated("<ul><li>", 240)},
        FloodRow{"HugeLetters", QStringLiteral("<span style='font-size:99999999pt'>xyz</span>")},
        FloodRow{"AHugePicture", QStringLiteral("<b>x</b><img src=x width=999999999 height=999999999>")}),
    [](const auto& row) { return std::string(row.param.name); });

struct SourceRow {
    const char* name;
    const char* message;
};
void PrintTo(const SourceRow& row, std::ostream* stream) {
    *stream << row.name;
}

class LogDisplaySource : public LogDisplayInput, public testing::WithParamInterface<SourceRow> {};

TEST_P(LogDisplaySource, IsShownAsItIs) {
    const QString message = QString::fromUtf8(GetParam().message);
    Log(message);
    EXPECT_EQ(Lines(), QStringList{message});
}

INSTANTIATE_TEST_SUITE_P(
    OfMessages, LogDisplaySource,
    testing::Values(SourceRow{"Pictures", "<b>x</b><img src='file:///etc/hostname'>"},
                    SourceRow{"Tables", "<table><tr><td>x</td></tr></table>"},
                    SourceRow{"CellsWithoutATable", "<td>x<td>y"},
                    SourceRow{"NumbersThatAreSpelled", "<span style='font-size:&#57;&#57;pt'>x</span>"},
                    SourceRow{"LargeNumbers", "<span style='font-size:1000pt'>x</span>"},
                    SourceRow{"StyleSheets", "<link rel='stylesheet' href='x.css'><b>x</b>"},
                    SourceRow{"Styles", "<style>p{font-size:99pt}</style><p>x</p>"},
                    SourceRow{"BackgroundsFromElsewhere",
                              "<p style='background-image:url(file:///tmp/x.png)'>x</p>"},
                    SourceRow{"Frames", "<p style='-qt-block-indent:9'>x</p>"},
                    SourceRow{"EscapesInStyles", "<p style='\\66ont-size:9pt'>x</p>"},
                    SourceRow{"Scripts", "<script>x</script>"}, SourceRow{"UnknownTags", "<blink>x</blink>"},
                    SourceRow{"UnfinishedTags", "<b>x</b> <i"}, SourceRow{"Comments", "<b>x</b><!-- y -->"},
                    SourceRow{"ValuesWithTags", "<b title='<i>'>x</b>"},
                    SourceRow{"ComparisonsBesideTags", "<b>a</b> < b"}),
    [](const auto& row) { return std::string(row.param.name); });

struct FormattedRow {
    const char* name;
    const char* message;
    const char* read;
};
void PrintTo(const FormattedRow& row, std::ostream* stream) {
    *stream << row.name;
}

class LogDisplayFormatted : public LogDisplayInput, public testing::WithParamInterface<FormattedRow> {};

TEST_P(LogDisplayFormatted, IsReadWithoutItsMarkup) {
    Log(QString::fromUtf8(GetParam().message));
    EXPECT_EQ(Area().toPlainText().trimmed(), QString::fromUtf8(GetParam().read));
}

INSTANTIATE_TEST_SUITE_P(
    OfMessages, LogDisplayFormatted,
    testing::Values(
        FormattedRow{"LettersOfAllKinds", "<i>a</i><u>b</u><STRONG>c</STRONG><tt>d</tt><sub>e</sub>",
                     "abcde"},
        FormattedRow{
            "Colours",
            "<span style=\"color:#0096ED; font-weight:bold\">x</span> <font color='#100000'>y</font>", "x y"},
        FormattedRow{"LargeNumbersBesideTags", "<b>Tuned</b> to 100000000 Hz", "Tuned to 100000000 Hz"},
        FormattedRow{"Entities", "<b>a &lt; b &amp;&amp; c</b>", "a < b && c"},
        FormattedRow{"Links", "<a href=\"http://localhost/?a=1&b=2\">manual</a>", "manual"},
        FormattedRow{"LineBreaks", "<p>a<br/>b</p>", "a\nb"},
        FormattedRow{"WholeDocuments", "<html><body bgcolor=\"#fff\"><p>x</p></body></html>", "x"},
        FormattedRow{"PlainText", "a < b and <b> later", "a < b and <b> later"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(LogDisplayInput, NothingIsLoadedFromOutside) {
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("picture.png"));
    QImage picture(30, 30, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(path));
    for (const QUrl& url :
         {QUrl::fromLocalFile(path), QUrl(path), QUrl(QStringLiteral("http://localhost/x.png"))}) {
        const QVariant found = Area().document()->resource(QTextDocument::ImageResource, url);
        EXPECT_EQ(found.value<QImage>().size(), QSize(1, 1)) << url.toString().toStdString();
        EXPECT_EQ(Area().document()->resource(QTextDocument::StyleSheetResource, url).toByteArray(),
                  QByteArray());
    }
}

TEST_F(LogDisplayInput, TextOfAnyCharactersIsShown) {
    for (const ushort character : {ushort(0), ushort(1), ushort(0xFFFC), ushort(0xFDD0), ushort(0xFDD1),
                                   ushort(0xD800), ushort(0xFFFF)}) {
        Log(QStringLiteral("a") + QChar(character) + QStringLiteral("b"));
        EXPECT_TRUE(Area().toPlainText().endsWith(QLatin1Char('b'))) << character;
    }
}

}  // namespace
