// SPDX-License-Identifier: Apache-2.0
// Messages that are far too long for the window: whole in the text and in the file, drawn as far as they are
// seen.
#include <tests/devicecontrol/multichannelserver/common/logdisplaytest.h>
#include <tests/support/processortime.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QImage>
#include <QtGui/QTextCursor>
#include <QtWidgets/QScrollBar>

#include <ostream>

namespace {

constexpr int Bound = 65536;  // characters of a message that are shown

QString Words(int count) {
    QString words;
    for (int i = 0; i < count; ++i)
        words += QStringLiteral("word %1, ").arg(i);
    return words;
}

struct LineRow {
    const char* name;
    QString message;
};
void PrintTo(const LineRow& row, std::ostream* stream) {
    *stream << row.name;
}

/// A display beside a text area that draws every line whole.
class LogDisplayLongLine : public LogDisplayTest, public testing::WithParamInterface<LineRow> {
  protected:
    LogDisplayLongLine() {
        m_display.resize(600, 300);
        m_display.show();
        Bind();
        m_whole.setReadOnly(true);
        m_whole.setWordWrapMode(QTextOption::NoWrap);
        m_whole.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        m_whole.setTextInteractionFlags(Area().textInteractionFlags());
        m_whole.resize(Area().size());
        m_whole.show();
        for (const QString& message :
             {QStringLiteral("before"), GetParam().message, QStringLiteral("after")}) {
            Log(message);
            m_whole.append(message);
        }
        Settle();
        QCoreApplication::processEvents();
    }
    void ScrollTo(int x) {
        Area().horizontalScrollBar()->setValue(x);
        m_whole.horizontalScrollBar()->setValue(x);
    }
    void Select(int from, int to) {
        for (QTextEdit* const area : {&Area(), &m_whole}) {
            QTextCursor cursor(area->document());
            cursor.setPosition(from);
            cursor.setPosition(to, QTextCursor::KeepAnchor);
            area->setTextCursor(cursor);
        }
    }
    /// How many dots differ.
    int Differences() {
        const QImage mine = Area().viewport()->grab().toImage();
        const QImage other = m_whole.viewport()->grab().toImage();
        EXPECT_EQ(mine.size(), other.size());
        int count = 0;
        for (int y = 0; y < mine.height(); ++y)
            for (int x = 0; x < mine.width(); ++x)
                count += mine.pixel(x, y) != other.pixel(x, y);
        return count;
    }

    QTextEdit m_whole;
};

INSTANTIATE_TEST_SUITE_P(
    , LogDisplayLongLine,
    testing::Values(
        LineRow{"OfWords", Words(800)},
        LineRow{"OfTabulators", Words(800).replace(QLatin1Char(','), QLatin1Char('\t'))},
        LineRow{"OfColours",
                QStringLiteral("<b>x</b><font color=\"#c00000\">%1</font><i>%1</i>").arg(Words(400))},
        LineRow{"OfLargeLetters",
                QStringLiteral("small <span style='font-size:30pt'>%1</span>").arg(Words(500))},
        LineRow{"OfOtherLetters",
                QString::fromUtf8("\xD0\xB4\xD0\xBB\xD0\xB8\xD0\xBD\xD0\xBD\xD0\xBE ").repeated(900)},
        LineRow{"OfLettersFromRightToLeft",
                QString::fromUtf8("\xD7\x90\xD7\x91\xD7\x92 \xD7\x93\xD7\x94 ").repeated(800)},
        LineRow{"OfWordsInBothDirections",
                QString::fromUtf8("some words \xD7\x90\xD7\x91\xD7\x92 \xD7\x93\xD7\x94 12 ").repeated(300)},
        LineRow{"OfPictures", Words(600) + QString::fromUtf8("\xF0\x9F\x93\xA1").repeated(300)},
        LineRow{"OfSeveralLines", Words(600) + QChar(QChar::LineSeparator) + Words(10) +
                                      QChar(QChar::LineSeparator) + Words(500)},
        LineRow{"OfRightAlignedWords", QStringLiteral("<p align=right>%1</p>").arg(Words(600))}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_P(LogDisplayLongLine, IsDrawnAsItWouldBeWhole) {
    const int width = m_whole.horizontalScrollBar()->maximum();
    ASSERT_GT(width, 10000);
    for (const int x : {0, 1, 777, width / 3, width / 2, width - 1, width}) {
        ScrollTo(x);
        EXPECT_EQ(Differences(), 0) << "at " << x;
    }
}

TEST_P(LogDisplayLongLine, IsDrawnAsItWouldBeSelected) {
    for (const auto& range : {std::make_pair(3, 30), std::make_pair(20, 2000), std::make_pair(0, 4000)}) {
        Select(range.first, range.second);
        ScrollTo(0);
        EXPECT_EQ(Differences(), 0) << range.first << " to " << range.second;
        ScrollTo(5000);
        EXPECT_EQ(Differences(), 0) << range.first << " to " << range.second << ", further right";
    }
}

TEST_P(LogDisplayLongLine, IsDrawnInAnotherFont) {
    QFont font = Area().font();
    font.setPointSize(font.pointSize() + 5);
    for (QTextEdit* const area : {&Area(), &m_whole})
        area->setFont(font);
    QCoreApplication::processEvents();
    ScrollTo(3000);
    EXPECT_EQ(Differences(), 0);
}

class LogDisplayLong : public LogDisplayTest {
  protected:
    LogDisplayLong() {
        m_display.resize(600, 300);
        m_display.show();
        Bind();
        QCoreApplication::processEvents();
    }
    int CountShown() const {
        int shown = 0;
        for (QTextBlock block = Area().document()->begin(); block.isValid(); block = block.next())
            shown += block.isVisible() && block.layout()->lineCount() > 0;
        return shown;
    }
};

// The window is drawn again and again, for example when it is resized or comes to the front.
TEST_F(LogDisplayLong, CostsNoMoreToDrawThanAShortOne) {
    for (int i = 0; i < 40; ++i)
        Log(QString(Bound, QLatin1Char('x')));
    Settle();
    const double start = ProcessorMilliseconds();
    for (int i = 0; i < 10; ++i)
        Area().viewport()->repaint();
    EXPECT_LT((ProcessorMilliseconds() - start) / 10, 100);  // drawn whole they take four times as long
}

TEST_F(LogDisplayLong, OfManyAFewAreLaidOutAtATime) {
    const QString line(Bound, QLatin1Char('x'));
    for (int i = 0; i < 20; ++i)
        Log(line);
    Log(QStringLiteral("the last"));
    EXPECT_EQ(Area().toPlainText().size(), 20 * (Bound + 1) + 8);
    Area().viewport()->repaint();
    EXPECT_GE(CountShown(), 1);
    EXPECT_LE(CountShown(), 5);
    EXPECT_TRUE(WaitUntil([this] { return CountShown() == 21; }));
    EXPECT_EQ(Lines().size(), 21);
}

TEST_F(LogDisplayLong, ThoseThatWaitAreClearedLikeAllOthers) {
    const QString line(Bound, QLatin1Char('x'));
    for (int i = 0; i < 10; ++i)
        Log(line);
    Area().viewport()->repaint();
    m_display.SlotClear();
    EXPECT_EQ(Area().toPlainText(), QString());
    Log(QStringLiteral("the next"));
    Settle();
    EXPECT_EQ(CountShown(), 1);
    Log(line);
    m_display.SetMaxMessages(1);
    EXPECT_EQ(Area().toPlainText(), QString());
}

// All of them would be laid out once more.
TEST_F(LogDisplayLong, TheWidthDoesNotChangeWhileTheyCome) {
    Log(QStringLiteral("short"));
    Settle();
    EXPECT_FALSE(Area().verticalScrollBar()->isVisible());
    Log(QString(Bound, QLatin1Char('x')));
    Settle();
    const int width = Area().viewport()->width();
    LogLines(100);
    Settle();
    EXPECT_GT(Area().verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(Area().viewport()->width(), width);
    m_display.SlotClear();
    EXPECT_FALSE(Area().verticalScrollBar()->isVisible());
}

TEST_F(LogDisplayLong, TablesDoNotWaitForThem) {
    const QString line(Bound, QLatin1Char('x'));
    for (int i = 0; i < 10; ++i)
        Log(line);
    Log(QStringLiteral("<table><tr><td>cell</td></tr></table>"));
    EXPECT_FALSE(Area().document()->rootFrame()->childFrames().isEmpty());
    EXPECT_TRUE(Area().document()->find(QStringLiteral("cell")).block().isVisible());
    EXPECT_TRUE(WaitUntil([this] { return CountShown() == Area().document()->blockCount(); }));
}

// A document of more than 8,388,607 pixels does not find its end any more.
TEST_F(LogDisplayLong, ManyVeryHighOnesAreKeptButNotAllShown) {
    const QString lines(Bound - 1, QChar(QChar::LineSeparator));
    for (int i = 0; i < 8; ++i) {
        Log(lines);
        Settle();
    }
    EXPECT_EQ(Area().toPlainText().size(), 8 * Bound - 1);
    EXPECT_LT(Area().verticalScrollBar()->maximum(), 8000000);
    Log(QStringLiteral("the next"));
    Settle();
    EXPECT_EQ(Area().verticalScrollBar()->value(), Area().verticalScrollBar()->maximum());
    EXPECT_TRUE(Area().document()->lastBlock().isVisible());
}

}  // namespace
