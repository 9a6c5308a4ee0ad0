// SPDX-License-Identifier: Apache-2.0
#include <tests/devicecontrol/multichannelserver/common/logdisplaytest.h>
#include <tests/support/processortime.h>

#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>

#include <ostream>

namespace {

constexpr int Bound = 65536;            // characters of a message that are shown
constexpr int MostMilliseconds = 1000;  // of the processor, in any build: 250 in what is delivered

QString Repeated(const char* text, int times) {
    return QString::fromUtf8(text).repeated(times);
}
/// One after the other, with the numbers from 1 on.
QString Numbered(const char* text, int times) {
    QString all;
    for (int i = 1; i <= times; ++i)
        all += QString::fromUtf8(text).arg(i);
    return all;
}
/// As many as fit into a message.
QString Filled(const char* text) {
    const QString unit = QString::fromUtf8(text);
    return unit.repeated(Bound / unit.size());
}

class LogDisplayInput : public LogDisplayTest {
  protected:
    LogDisplayInput() {
        m_display.resize(1000, 700);
        m_display.show();
        Bind();
    }
    /// How long the processor works on \a message, in ms.
    double Cost(const QString& message) {
        const double start = ProcessorMilliseconds();
        Log(message);
        Area().viewport()->repaint();
        return ProcessorMilliseconds() - start;
    }
};

TEST_F(LogDisplayInput, MarkupIsShownAsWhatItFormats) {
    Log(QStringLiteral("<b>boot</b> <font color=\"#ff0000\">failed</font>"));
    EXPECT_EQ(Lines(), QStringList{QStringLiteral("boot failed")});
    QTextCursor cursor(Area().document());
    cursor.setPosition(1);
    EXPECT_EQ(cursor.charFormat().fontWeight(), int(QFont::Bold));
}

TEST_F(LogDisplayInput, NothingIsCutUpToTheBound) {
    Log(QString(Bound, QLatin1Char('a')));
    EXPECT_EQ(Lines().last(), QString(Bound, QLatin1Char('a')));
    Log(QString(Bound + 1, QLatin1Char('b')));
    EXPECT_EQ(Lines().last(),
              QString(Bound, QLatin1Char('b')) + QStringLiteral("... [cut, 65537 characters in all]"));
    EXPECT_EQ(Lines().size(), 2);
}

TEST_F(LogDisplayInput, MarkupThatIsCutIsStillShownAsWhatItFormats) {
    Log(QStringLiteral("<p>%1</p>").arg(Filled("word ")));
    const QString note = QStringLiteral("... [cut, %1 characters in all]").arg(Bound / 5 * 5 + 7);
    EXPECT_TRUE(Lines().last().endsWith(note)) << Lines().last().right(100).toStdString();
    EXPECT_TRUE(Lines().last().startsWith(QLatin1String("word word")));
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

// Some of these would take for ever otherwise.
TEST_P(LogDisplayFlood, DoesNotFreezeTheWindow) {
    EXPECT_LT(Cost(GetParam().message), MostMilliseconds);
    EXPECT_LT(Cost(QStringLiteral("the next")), MostMilliseconds);
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
        FloodRow{"AHugePicture", QStringLiteral("<b>x</b><img src=x width=999999999 height=999999999>")},
        FloodRow{"TagsInTags", Filled("<b>x")}, FloodRow{"ManyPictures", Filled("<img src=x>")},
        FloodRow{"ManyPicturesInALongLine", Repeated("x", 30000) + Repeated("<img src=x>", 3000)},
        FloodRow{"ManyPicturesBesideTheText", Filled("<img src=x width=9 height=9 align=left>")},
        FloodRow{"ManyItems", QStringLiteral("<ul>") + Repeated("<li>x", 13000)},
        FloodRow{"ManyTags", Filled("<b>x</b> ")}, FloodRow{"ManyBreaks", Filled("x<br>")},
        FloodRow{"MuchTextInTables", Repeated("<table><tr><td>", 9) + Repeated("some words ", 5000)},
        FloodRow{"ManyRulesForManyTags", QStringLiteral("<style>") + Repeated("*{color:red}", 2500) +
                                             QStringLiteral("</style>") + Repeated("<b>x</b>", 4000)},
        FloodRow{"ManyRulesForTagsInTags", QStringLiteral("<style>") + Repeated("b b b i{color:red}", 1500) +
                                               QStringLiteral("</style>") + Repeated("<b><i>x</i>", 2000)},
        FloodRow{"ManyFormatsOfARule", QStringLiteral("<style>*{") + Repeated("font-size:9pt;", 2500) +
                                           QStringLiteral("}</style>") + Repeated("<b><i>x</i></b>", 1500)},
        FloodRow{"ManyRulesForAttributes", QStringLiteral("<style>") + Repeated("*[q]{color:red}", 800) +
                                               QStringLiteral("</style><b ") + Repeated("x ", 15000) +
                                               QStringLiteral(">") + Repeated("<i>x</i>", 1500)},
        FloodRow{"ManyFonts", Numbered("<font face='font%1'>x</font>", 1900)},
        FloodRow{"ManySizes", Numbered("<font style='font-size:%1px'>x</font>", 1500)},
        FloodRow{"HugeMargins", Repeated("<p style='margin:100000px'>x", 200)},
        FloodRow{"HugeCells", QStringLiteral("<table cellpadding=1000000000 border=1><tr><td>x</table>")},
        FloodRow{"HugeGapsBetweenCells",
                 QStringLiteral("<table cellspacing=1000000000 border=1><tr><td>x</table>")},
        FloodRow{"HugePadding",
                 QStringLiteral("<table border=1><tr><td style='padding:1000000000px'>x</table>")},
        FloodRow{"TagsInWhatIsHidden", Filled("<title><p>x")},
        FloodRow{"ParagraphsThatAreNone", Filled("<b><p style='display:inline'>x")},
        FloodRow{"ParagraphsThatASheetMakesNone",
                 QStringLiteral("<style>p{d\\69splay:inline}</style>") + Repeated("<b><p>x", 9000)},
        FloodRow{"ManyRowsOfManyColumnsByStyles",
                 QStringLiteral("<table><tr>") + Repeated("<td style='display:inline'><p><table><p>", 240) +
                     Repeated("<tr><p><table><p>", 240)},
        FloodRow{"PicturesBehindLettersWithoutBlanks",
                 QStringLiteral("<b>x</b>") + Repeated("\xE0\xB8\x81", 20000) + Repeated("<html><img>", 400)},
        FloodRow{"ParagraphsInMarkup", QStringLiteral("<b>x</b>") + Repeated("\xE2\x80\xA9", 65000)},
        FloodRow{"MarksUponALetter", QStringLiteral("a") + Repeated("\xCC\x81", Bound - 1)},
        FloodRow{"AScriptForEachLetter", Filled("a\xD7\x90")},
        FloodRow{"LettersWithoutBlanks", Filled("\xE0\xB8\x81")},
        FloodRow{"DirectionsInDirections", Filled("\xE2\x81\xA7"
                                                  "a\xE2\x81\xA9")},
        FloodRow{"Tabulators", Filled("\t")}, FloodRow{"ManyLines", Filled("x\xE2\x80\xA8")},
        FloodRow{"ManyEmptyLines", Filled("\xE2\x80\xA8")}),
    [](const auto& row) { return std::string(row.param.name); });

struct FormattedRow {
    const char* name;
    const char* message;
};
void PrintTo(const FormattedRow& row, std::ostream* stream) {
    *stream << row.name;
}

class LogDisplayFormatted : public LogDisplayInput, public testing::WithParamInterface<FormattedRow> {
  protected:
    LogDisplayFormatted() {
        m_plain.setReadOnly(true);
        m_plain.setUndoRedoEnabled(false);
        m_plain.setWordWrapMode(QTextOption::NoWrap);
    }
    QTextEdit m_plain;
};

// Before and after other messages, since the format of a paragraph goes on in the next.
TEST_P(LogDisplayFormatted, IsShownAsAnyTextAreaShowsIt) {
    for (const QString& message : {QString::fromUtf8(GetParam().message), QStringLiteral("plain"),
                                   QString::fromUtf8(GetParam().message)}) {
        Log(message);
        m_plain.append(message);
    }
    EXPECT_EQ(Area().toHtml().toStdString(), m_plain.toHtml().toStdString());
    EXPECT_EQ(Area().toPlainText(), m_plain.toPlainText());
    EXPECT_EQ(Area().document()->blockCount(), m_plain.document()->blockCount());
}

INSTANTIATE_TEST_SUITE_P(
    OfMessages, LogDisplayFormatted,
    testing::Values(
        FormattedRow{"LettersOfAllKinds", "<i>a</i><u>b</u><STRONG>c</STRONG><tt>d</tt><sub>e</sub>"},
        FormattedRow{
            "Colours",
            "<span style=\"color:#0096ED; font-weight:bold\">x</span> <font color='#100000'>y</font>"},
        FormattedRow{"LargeNumbers", "<b>Tuned</b> to 100000000 Hz"},
        FormattedRow{"AttributesWithAYear", "<p title='2026-11-21'>x</p><a href='2026.html'>y</a>"},
        FormattedRow{"Entities", "<b>a &lt; b &amp;&amp; c &#8364;</b>"},
        FormattedRow{"Links", "<a href=\"http://localhost/?a=1&b=2\">manual</a>"},
        FormattedRow{"LineBreaks", "<p>a<br/>b</p>"},
        FormattedRow{"Paragraphs", "<p>a</p><p>b</p><div>c</div>"},
        FormattedRow{"Headings", "<h1>a</h1><h4>b</h4>c"},
        FormattedRow{"WholeDocuments",
                     "<!DOCTYPE html><html><head><title>t</title></head><body "
                     "bgcolor=\"#fff\"><p>x</p></body></html>"},
        FormattedRow{"Lists", "<ul><li>a<li>b<ol><li>c</ol></ul>"},
        FormattedRow{"Tables",
                     "<table border=1 width='80%'><tr><th>a</th><th>b</th></tr>"
                     "<tr><td colspan=2>c</td></tr></table>"},
        FormattedRow{"TablesInTables", "<table><tr><td><table><tr><td>x<td>y</table></table>z"},
        FormattedRow{"CellsWithoutATable", "<td>x<td>y"},
        FormattedRow{"StyleSheets", "<style>p{font-size:20pt} .a{color:red}</style><p class=a>x</p><p>y</p>"},
        FormattedRow{"StyleSheetsFromElsewhere", "<link rel='stylesheet' href='x.css'><b>x</b>"},
        FormattedRow{"LargeLetters", "<span style='font-size:100pt'>x</span>"},
        FormattedRow{"NumbersThatAreSpelled", "<span style='font-size:&#57;&#57;pt'>x</span>"},
        FormattedRow{"Alignments", "<p align=right>x</p>"}, FormattedRow{"Rulers", "a<hr>b<hr width=50>"},
        FormattedRow{"Preformatted", "<pre>a\n  b</pre>"}, FormattedRow{"Scripts", "<script>x</script>y"},
        FormattedRow{"UnknownTags", "<blink>x</blink>"}, FormattedRow{"UnfinishedTags", "<b>x</b> <i"},
        FormattedRow{"Comments", "<b>x</b><!-- y -->"},
        FormattedRow{"ValuesWithTags", "<b title='<i>'>x</b>"},
        FormattedRow{"ComparisonsBesideTags", "<b>a</b> < b"},
        FormattedRow{"Backgrounds", "<p style='background-color:yellow'>x</p>"},
        FormattedRow{"PlainText", "a < b and <b> later"}, FormattedRow{"SeveralLines", "a\nb\n\nc"}),
    [](const auto& row) { return std::string(row.param.name); });

struct PlainRow {
    const char* name;
    QString message;
    QString read;
};
void PrintTo(const PlainRow& row, std::ostream* stream) {
    *stream << row.name;
}

class LogDisplayText : public LogDisplayInput, public testing::WithParamInterface<PlainRow> {};

// What would take for ever keeps its text, whole.
TEST_P(LogDisplayText, IsKeptWhereTheFormatsAreNot) {
    Log(QStringLiteral("before"));
    Log(GetParam().message);
    Log(QStringLiteral("after"));
    EXPECT_EQ(Area().toPlainText().simplified(),
              QStringLiteral("before %1 after").arg(GetParam().read.simplified()));
    EXPECT_EQ(Area().document()->lastBlock().text(), QStringLiteral("after"));
}

INSTANTIATE_TEST_SUITE_P(
    OfMessages, LogDisplayText,
    testing::Values(
        PlainRow{"TablesInTables", Repeated("<table><tr><td>x", 130), Repeated("x ", 130)},
        PlainRow{"TagsInTags", Repeated("<i>x &lt; y ", 5461), Repeated("x < y ", 5461)},
        PlainRow{"ManyRowsOfManyColumns",
                 QStringLiteral("<table>") + Repeated("<td>a &amp; b", 100) + Repeated("<tr><td>c", 100),
                 Repeated("a & b ", 100) + Repeated("c ", 100)},
        PlainRow{"AHugeSpan", QStringLiteral("<table><tr><td colspan=99999999>x y<tr><td>z</table>"),
                 QStringLiteral("x y z")},
        PlainRow{"HugeLetters", QStringLiteral("<style>p{font-size:5000pt}</style><p>x</p><p>y</p>"),
                 QStringLiteral("x y")},
        PlainRow{"HugeMargins", QStringLiteral("<div style='margin:99999px'>x<br>y</div>"),
                 QStringLiteral("x y")},
        PlainRow{"ManyRules",
                 QStringLiteral("<style>") + Repeated("*{color:red}", 2000) + QStringLiteral("</style>") +
                     Repeated("<b>x</b> ", 2000),
                 Repeated("x ", 2000)}),
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
