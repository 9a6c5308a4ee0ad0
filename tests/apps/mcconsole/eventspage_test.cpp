// SPDX-License-Identifier: Apache-2.0
// The page of events by mouse and keys, on a tree of which the test plays the server.
#include <apps/common/eventwait.h>
#include <apps/mcconsole/events/eventspage.h>

#include <platform/values/valueaccess.h>

#include <tests/apps/mcconsole/eventmaker.h>
#include <tests/apps/mcconsole/paintwatcher.h>
#include <tests/support/dialogs/modaldriver.h>
#include <tests/support/doubles/fakevtclient.h>
#include <tests/support/spoken.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QWheelEvent>
#include <QtTest/QTest>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTableView>

#include <chrono>

namespace {

using eventmaker::Make;
using eventmaker::MakeMany;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

QElapsedTimer Elapsed() {
    QElapsedTimer since;
    since.start();
    return since;
}

/// A server that keeps some events, and answers in the next turn.
class KeepingClient final : public FakeVtClient {
  public:
    bool Recall(const QString&, quint64 before, int count, const IVtHistory::Answer& answer) override {
        const qint64 end = before == 0 ? newest + 1 : static_cast<qint64>(before);
        VtHistoryPage page;
        for (qint64 number = end - 1; number >= 1 && page.texts.size() < count; --number) {
            page.texts.prepend(Make(number).ToJson());
            page.next = number > 1 ? static_cast<quint64>(number) : 0;
        }
        QTimer::singleShot(0, [answer, page] { answer(page); });
        return true;
    }
    quint64 GetServerEpoch() const override { return 1; }

    qint64 newest = 0;
};

class EventsPageTest : public testing::Test {
  protected:
    EventsPageTest()
        : m_page({[this] { return static_cast<IVtClient*>(&m_client); }, [] { return S("tower:7450"); },
                  [this] { return m_name; }}) {
        m_event =
            values::ProvideValue<values::Value<QString>>(S("/Server/Status/Event"), QString(), true, nullptr);
        m_event->SetDelivery(values::EDelivery::EveryChange);
        values::ProvideValue<values::Value<int>>(S("/Server/Status/EventHistory"), 2000, true, nullptr);
        m_page.resize(900, 400);
    }

    /// The page shows what the server has kept so far.
    void Open(qint64 kept) {
        m_client.newest = kept;
        m_page.Bind(S("/Server"), AllSegments);
        m_page.show();
        ASSERT_TRUE(WaitUntil([this] { return Rows() > 0 && Table()->viewport()->isVisible(); }));
        QCoreApplication::processEvents();
    }
    /// One more happens, and is there.
    void Happen() {
        const qint64 before = m_page.GetModel().GetList().Count();
        m_event->SetValue(Make(++m_client.newest).ToJson());
        ASSERT_TRUE(WaitUntil([&] { return m_page.GetModel().GetList().Count() == before + 1; }));
        QCoreApplication::processEvents();
    }

    template <class W>
    W* Find(const char* name) const {
        return m_page.findChild<W*>(QString::fromLatin1(name));
    }
    QTableView* Table() const { return Find<QTableView>("EventsTable"); }
    QScrollBar* Bar() const { return Table()->verticalScrollBar(); }
    QPushButton* Follow() const { return Find<QPushButton>("EventsFollow"); }
    QPushButton* Older() const { return Find<QPushButton>("EventsOlder"); }
    QString State() const { return Find<QLabel>("EventsState")->text(); }
    int Rows() const { return Table()->model()->rowCount(); }
    bool IsAtEnd() const { return Bar()->value() == Bar()->maximum(); }
    void Wheel(int delta) const {
        const QPoint place = Table()->viewport()->rect().center();
        QWheelEvent event(place, Table()->viewport()->mapToGlobal(place), QPoint(), QPoint(0, delta),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(Table()->viewport(), &event);
    }
    /// Exports to \a file as a person types its name.
    void ExportTo(const QString& file) {
        WithModalDialog<QFileDialog>(
            [this] { QTest::mouseClick(Find<QPushButton>("EventsExport"), Qt::LeftButton); },
            [this, &file](QFileDialog& dialog) {
                m_proposed = QFileInfo(dialog.selectedFiles().value(0)).fileName();
                auto* const name = dialog.findChild<QLineEdit*>(S("fileNameEdit"));
                ASSERT_NE(name, nullptr);
                name->setText(file);
                QTest::keyClick(name, Qt::Key_Return);
            });
    }

    values::Tree m_tree;
    KeepingClient m_client;
    QString m_name;      ///< what people call the server
    QString m_proposed;  ///< as the name of the file of the last export
    values::Value<QString>* m_event = nullptr;
    EventsPage m_page;
};

/// How many pixels of a row more than whole rows are in sight.
class ARowInSight : public EventsPageTest, public testing::WithParamInterface<int> {};

// A table that is drawn anew for each of them would cost as much as all its cells.
TEST_P(ARowInSight, OneMoreEventIsDrawnAndNoOther) {
    ASSERT_NO_FATAL_FAILURE(Open(150));
    ASSERT_GT(Bar()->maximum(), 0);
    const int rowHeight = Table()->rowHeight(0);
    const int spare = (Table()->viewport()->height() - GetParam()) % rowHeight;
    m_page.resize(m_page.width(), m_page.height() - spare);
    ASSERT_TRUE(WaitUntil([&] { return Table()->viewport()->height() % rowHeight == GetParam(); }));
    RunTurns(3);
    PaintWatcher watcher(*Table()->viewport());
    constexpr int events = 10;
    for (int i = 0; i < events; ++i) {
        watcher.painted = QRegion();
        ASSERT_NO_FATAL_FAILURE(Happen());
        ASSERT_TRUE(WaitUntil([&] { return !watcher.painted.isEmpty(); }));
    }
    // The event's own row, the one that comes into sight with it, and as many again: of some 15 in sight.
    EXPECT_LE(watcher.heights, events * 4 * rowHeight);
    ASSERT_GT(Table()->viewport()->height(), 10 * rowHeight);
    EXPECT_TRUE(IsAtEnd());
    EXPECT_GE(Table()->rowAt(Table()->viewport()->height() - 1), Rows() - 1);
}

INSTANTIATE_TEST_SUITE_P(Pixels, ARowInSight, testing::Values(0, 1, 10, 12, 21),
                         testing::PrintToStringParamName());

// Where the slider would stand at the same pixels it stays as it is drawn; it costs more than a row.
TEST_F(EventsPageTest, TheScrollBarIsDrawnOnlyWhereItWouldLookDifferent) {
    ASSERT_NO_FATAL_FAILURE(Open(150));
    ASSERT_NO_FATAL_FAILURE(Happen());
    PaintWatcher watcher(*Bar());
    int drawn = 0;
    constexpr int events = 20;
    for (int i = 0; i < events; ++i) {
        watcher.painted = QRegion();
        ASSERT_NO_FATAL_FAILURE(Happen());
        RunTurns(3);
        drawn += watcher.painted.isEmpty() ? 0 : 1;
    }
    EXPECT_LT(drawn, events / 2);
    watcher.painted = QRegion();
    Wheel(240);
    EXPECT_TRUE(WaitUntil([&] { return !watcher.painted.isEmpty(); })) << "it stands elsewhere";
}

// Nobody reads more than some twenty changes a second, and each costs more than its row.
TEST_F(EventsPageTest, TheFirstOfManyIsSeenAtOnceAndTheOthersTogether) {
    ASSERT_NO_FATAL_FAILURE(Open(150));
    for (const bool isInOneTurn : {true, false}) {
        SCOPED_TRACE(isInOneTurn);
        const int before = Rows();
        // Nothing happens meanwhile.
        ASSERT_TRUE(
            eventwait::Until([since = Elapsed()] { return since.elapsed() > EventFeed::BatchTime.count(); },
                             std::chrono::seconds(10), std::chrono::milliseconds(5)));
        PaintWatcher watcher(*Table()->viewport());
        const QElapsedTimer time = Elapsed();
        constexpr int events = 100;
        for (int i = 0; i < events; ++i) {
            m_event->SetValue(Make(++m_client.newest).ToJson());
            if (i == 0) {
                EXPECT_EQ(Rows(), before + 1);
            }
            if (!isInOneTurn) RunTurns(1);
        }
        ASSERT_TRUE(WaitUntil([&] { return Rows() == before + events; }));
        RunTurns(3);
        // The first, one for each time that is over, and the last.
        EXPECT_LE(watcher.times, 2 * (2 + time.elapsed() / EventFeed::BatchTime.count()));
        EXPECT_TRUE(IsAtEnd());
        EXPECT_EQ(m_page.GetModel().LineOf(Rows() - 1).event.number, m_client.newest);
        EXPECT_TRUE(WaitUntil([&] { return State() == S("%1 of %1 events").arg(Rows()); }));
    }
}

TEST_F(EventsPageTest, ManyThatComeTogetherAreCountedWhileWhatIsReadStays) {
    ASSERT_NO_FATAL_FAILURE(Open(150));
    Wheel(240);
    const int place = Bar()->value();
    for (int i = 0; i < 100; ++i)
        m_event->SetValue(Make(++m_client.newest).ToJson());
    EXPECT_TRUE(WaitUntil([this] { return Follow()->text() == S("&Follow (100 new)"); }));
    EXPECT_EQ(Bar()->value(), place);
    QTest::mouseClick(Follow(), Qt::LeftButton);
    EXPECT_TRUE(IsAtEnd());
    EXPECT_EQ(Follow()->text(), S("&Following"));
}

TEST_F(EventsPageTest, AFewEventsAreDrawnWhereTheyAre) {
    ASSERT_NO_FATAL_FAILURE(Open(3));
    ASSERT_EQ(Bar()->maximum(), 0);
    ASSERT_NO_FATAL_FAILURE(Happen());
    PaintWatcher watcher(*Table()->viewport());
    ASSERT_NO_FATAL_FAILURE(Happen());
    const QRect row(0, Table()->rowViewportPosition(4), Table()->viewport()->width(), Table()->rowHeight(4));
    ASSERT_TRUE(WaitUntil([&] { return watcher.painted.intersects(row); }));
    EXPECT_FALSE(watcher.painted.contains(QPoint(5, 5))) << "the first row stays as it is drawn";
}

/// Where in a cell something is drawn.
QRect Drawn(const QAbstractItemDelegate& delegate, const QTableView& table, const QModelIndex& cell,
            int width) {
    QImage image(width, table.rowHeight(0), QImage::Format_RGB32);
    image.fill(Qt::white);
    QStyleOptionViewItem option;
    option.initFrom(&table);
    option.widget = &table;
    option.rect = image.rect();
    option.state = QStyle::State_Enabled | QStyle::State_Active;
    option.decorationSize = QSize(16, 16);
    option.textElideMode = Qt::ElideRight;
    option.displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
    option.decorationAlignment = Qt::AlignCenter;
    QPainter painter(&image);
    delegate.paint(&painter, option, cell);
    painter.end();
    QRegion drawn;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qGray(image.pixel(x, y)) < 200) drawn += QRect(x, y, 1, 1);
    return drawn.boundingRect();
}

// What is worked out once per text stands where the style would draw it, cut where it would cut it.
TEST_F(EventsPageTest, CellsLookAsTheStyleDrawsThem) {
    ASSERT_NO_FATAL_FAILURE(Open(3));
    m_event->SetValue(Make(++m_client.newest, {ECode::IsMaster, {S("Tower west")}}, "MpxORV Tower",
                           EEventSeverity::Warning, "anna on t1 (1.2.3.4:5)")
                          .ToJson());
    ASSERT_TRUE(WaitUntil([this] { return Rows() == 4; }));
    const QStyledItemDelegate style;
    for (int column = 0; column < EventModel::ColumnCount; ++column)
        for (const int width : {400, 60}) {
            SCOPED_TRACE(testing::Message() << column << " in " << width);
            const QModelIndex cell = Table()->model()->index(3, column);
            const QRect expected = Drawn(style, *Table(), cell, width);
            const QRect drawn = Drawn(*Table()->itemDelegate(), *Table(), cell, width);
            ASSERT_FALSE(drawn.isEmpty());
            constexpr int Off = 2;  // pixels that nobody sees
            EXPECT_NEAR(drawn.left(), expected.left(), Off);
            EXPECT_NEAR(drawn.top(), expected.top(), Off);
            EXPECT_NEAR(drawn.bottom(), expected.bottom(), Off);
            if (width == 400) {
                EXPECT_NEAR(drawn.right(), expected.right(), Off);
            }
            EXPECT_LE(drawn.right(), width - 1);
        }
}

TEST_F(EventsPageTest, WhatIsFilteredIsDrawnAnew) {
    ASSERT_NO_FATAL_FAILURE(Open(150));
    PaintWatcher watcher(*Table()->viewport());
    QTest::keyClicks(Find<QLineEdit>("EventsSearch"), S("nobody"));
    ASSERT_TRUE(WaitUntil([this] { return Rows() == 0; }));
    EXPECT_TRUE(WaitUntil([&] { return watcher.painted.contains(QPoint(5, 5)); }));
}

TEST_F(EventsPageTest, WhatWasMissedIsARowOfItsOwn) {
    const QDateTime from(QDate::currentDate(), QTime(14, 3, 5));
    for (const bool wasConnected : {true, false}) {
        ASSERT_NO_FATAL_FAILURE(Open(3));
        m_page.TellMissed(
            {S("/MultiChannelServer/Status"), from.toUTC(), from.addSecs(3).toUTC(), wasConnected});
        const int last = Rows() - 1;
        const QString text = Table()->model()->index(last, EventModel::TextColumn).data().toString();
        EXPECT_EQ(text, wasConnected
                            ? S("What happened from 14:03:05 to 14:03:08 did not come here: lines of the "
                                "log are missing, events were asked for again")
                            : S("Not connected from 14:03:05 to 14:03:08: lines of the log are missing, "
                                "events were asked for again"));
        EXPECT_EQ(Table()->model()->index(last, EventModel::SeverityColumn).data().toString(),
                  wasConnected ? S("Warning") : S("Notice"));
    }
}

TEST_F(EventsPageTest, WhatWasMissedOnAnotherDaySaysWhichDay) {
    const QDateTime from(QDate(2026, 1, 22), QTime(23, 59, 59));
    ASSERT_NO_FATAL_FAILURE(Open(3));
    m_page.TellMissed({S("/MultiChannelServer/Status"), from.toUTC(), from.addSecs(3).toUTC(), false});
    const QString text = Table()->model()->index(Rows() - 1, EventModel::TextColumn).data().toString();
    const auto day = [](int number) {
        return QLocale().toString(QDate(2026, 1, number), QLocale::ShortFormat);
    };
    EXPECT_TRUE(text.startsWith(S("Not connected from %1 23:59:59 to %2 00:00:02:").arg(day(22), day(23))))
        << text.toStdString();
}

TEST_F(EventsPageTest, WhoScrollsUpReadsAndWhoScrollsDownFollows) {
    ASSERT_NO_FATAL_FAILURE(Open(150));
    ASSERT_TRUE(Follow()->isChecked() && IsAtEnd());
    Wheel(240);
    EXPECT_FALSE(Follow()->isChecked());
    const int place = Bar()->value();
    ASSERT_NO_FATAL_FAILURE(Happen());
    ASSERT_NO_FATAL_FAILURE(Happen());
    EXPECT_EQ(Bar()->value(), place) << "what is read stays";
    EXPECT_TRUE(WaitUntil([this] { return Follow()->text() == S("&Follow (2 new)"); }));
    for (int i = 0; i < 20 && !IsAtEnd(); ++i)
        Wheel(-240);
    EXPECT_TRUE(Follow()->isChecked());
    EXPECT_EQ(Follow()->text(), S("&Following"));
    ASSERT_NO_FATAL_FAILURE(Happen());
    EXPECT_TRUE(IsAtEnd());
}

TEST_F(EventsPageTest, OnlyWhatWouldBeSeenIsNew) {
    ASSERT_NO_FATAL_FAILURE(Open(150));
    Wheel(240);
    const auto happens = [this](const char* text) {
        m_event->SetValue(
            Make(++m_client.newest, {ECode::IsMaster, {QString::fromUtf8(text)}}, "MpxORV Van").ToJson());
    };
    QTest::keyClicks(Find<QLineEdit>("EventsSearch"), S("Tower"));
    ASSERT_TRUE(WaitUntil([this] { return Table()->model()->rowCount() == 0; }));
    happens("Van");
    happens("Tower");
    happens("Boat");
    happens("Boat");
    EXPECT_TRUE(WaitUntil([this] { return Follow()->text() == S("&Follow (1 new)"); }))
        << Follow()->text().toStdString();
    Find<QLineEdit>("EventsSearch")->clear();
    EXPECT_TRUE(WaitUntil([this] { return Follow()->text() == S("&Follow (4 new)"); }))
        << Follow()->text().toStdString();
    QTest::keyClicks(Find<QLineEdit>("EventsSearch"), S("nobody"));
    EXPECT_TRUE(WaitUntil([this] { return Follow()->text() == S("&Follow"); })) << "none of them";
}

TEST_F(EventsPageTest, WhoReadsAndSearchesGoesOnReading) {
    ASSERT_NO_FATAL_FAILURE(Open(150));
    Wheel(240);
    ASSERT_FALSE(Follow()->isChecked());
    QTest::keyClicks(Find<QLineEdit>("EventsSearch"), S("nobody"));
    ASSERT_TRUE(WaitUntil([this] { return Table()->model()->rowCount() < 5; }));
    RunTurns(3);
    EXPECT_FALSE(Follow()->isChecked()) << "nobody has scrolled to the end";
}

TEST_F(EventsPageTest, WhoFollowsSeesTheNewestInASmallerWindowToo) {
    ASSERT_NO_FATAL_FAILURE(Open(150));
    m_page.resize(m_page.width(), m_page.height() - 100);
    RunTurns(3);
    EXPECT_TRUE(Follow()->isChecked() && IsAtEnd());
    Wheel(240);
    const int place = Bar()->value();
    m_page.resize(m_page.width(), m_page.height() - 50);
    RunTurns(3);
    EXPECT_EQ(Bar()->value(), place) << "what is read stays";
    EXPECT_FALSE(Follow()->isChecked());
}

TEST_F(EventsPageTest, TheKeysPauseAndGoOnToo) {
    ASSERT_NO_FATAL_FAILURE(Open(150));
    Table()->setFocus();
    QTest::keyClick(Table(), Qt::Key_Up);
    EXPECT_TRUE(IsAtEnd()) << "the keys begin at what is in sight";
    QTest::keyClick(Table(), Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(Bar()->value(), 0);
    EXPECT_FALSE(Follow()->isChecked());
    ASSERT_NO_FATAL_FAILURE(Happen());
    EXPECT_EQ(Bar()->value(), 0);
    QTest::keyClick(Table(), Qt::Key_End, Qt::ControlModifier);
    EXPECT_TRUE(Follow()->isChecked() && IsAtEnd());
    QTest::keyClick(Follow(), Qt::Key_Space);
    EXPECT_FALSE(Follow()->isChecked());
    ASSERT_NO_FATAL_FAILURE(Happen());
    EXPECT_FALSE(IsAtEnd());
    QTest::keyClick(Follow(), Qt::Key_Space);
    EXPECT_TRUE(Follow()->isChecked() && IsAtEnd());
}

TEST_F(EventsPageTest, PauseAndGoOnForAssistiveTechnologyToo) {
    ASSERT_NO_FATAL_FAILURE(Open(150));
    spoken::Toggle(*Follow());
    ASSERT_NO_FATAL_FAILURE(Happen());
    EXPECT_TRUE(WaitUntil([this] { return Follow()->text() == S("&Follow (1 new)"); }));
    EXPECT_FALSE(IsAtEnd());
    spoken::Toggle(*Follow());
    EXPECT_EQ(Follow()->text(), S("&Following"));
    EXPECT_TRUE(IsAtEnd());
}

TEST_F(EventsPageTest, OlderOnesComeOnRequestAndWhatIsReadStays) {
    ASSERT_NO_FATAL_FAILURE(Open(450));
    ASSERT_EQ(Rows(), 200);
    ASSERT_TRUE(Older()->isEnabled());
    Table()->setFocus();
    QTest::keyClick(Table(), Qt::Key_Home, Qt::ControlModifier);
    const int top = Table()->rowAt(1);
    const QString first = Table()->model()->index(top, EventModel::TimeColumn).data().toString();
    QTest::mouseClick(Older(), Qt::LeftButton);
    ASSERT_TRUE(WaitUntil([this] { return Rows() == 300; }));
    EXPECT_EQ(Table()->model()->index(Table()->rowAt(1), EventModel::TimeColumn).data().toString(), first);
    EXPECT_EQ(m_page.GetModel().LineOf(0).event.number, 151);
    Older()->setFocus();
    QTest::keyClick(Older(), Qt::Key_Space);
    ASSERT_TRUE(WaitUntil([this] { return Rows() == 400; }));
    QTest::mouseClick(Older(), Qt::LeftButton);
    ASSERT_TRUE(WaitUntil([this] { return Rows() == 450; }));
    EXPECT_EQ(m_page.GetModel().LineOf(0).event.number, 1);
    EXPECT_FALSE(Older()->isEnabled()) << "there are no older ones";
    EXPECT_EQ(State(), S("450 of 450 events"));
}

TEST_F(EventsPageTest, AreExportedToAFile) {
    ASSERT_NO_FATAL_FAILURE(Open(3));
    const QTemporaryDir directory;
    const QString file = directory.filePath(S("shown.csv"));
    ASSERT_NO_FATAL_FAILURE(ExportTo(file));
    EXPECT_TRUE(m_proposed.startsWith(S("events-tower-7450-"))) << m_proposed.toStdString();
    ASSERT_TRUE(WaitUntil([&file] { return QFile::exists(file); }));
    EXPECT_TRUE(Find<QPushButton>("EventsExport")->isEnabled());
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    const QByteArray bytes = written.readAll();
    EXPECT_TRUE(bytes.startsWith("Severity,Time,Source,Who,What\r\n")) << bytes.toStdString();
    EXPECT_EQ(bytes.count("\r\n"), 4);
}

TEST_F(EventsPageTest, AreExportedAsTextByTheNameOfTheFile) {
    ASSERT_NO_FATAL_FAILURE(Open(3));
    const QTemporaryDir directory;
    const QString file = directory.filePath(S("shown.txt"));
    ASSERT_NO_FATAL_FAILURE(ExportTo(file));
    ASSERT_TRUE(WaitUntil([&file] { return QFile::exists(file); }));
    EXPECT_TRUE(Find<QPushButton>("EventsExport")->isEnabled());
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_TRUE(written.readAll().startsWith("Events of tower:7450, "));
}

TEST_F(EventsPageTest, AreExportedUnderTheNameThatPeopleCallTheServer) {
    m_name = S("Tower 1");
    ASSERT_NO_FATAL_FAILURE(Open(3));
    const QTemporaryDir directory;
    const QString file = directory.filePath(S("shown.txt"));
    ASSERT_NO_FATAL_FAILURE(ExportTo(file));
    EXPECT_TRUE(m_proposed.startsWith(S("events-Tower-1-"))) << m_proposed.toStdString();
    ASSERT_TRUE(WaitUntil([&file] { return QFile::exists(file); }));
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_TRUE(written.readAll().startsWith("Events of Tower 1 (tower:7450), "));
}

TEST_F(EventsPageTest, AFileThatCannotBeWrittenIsToldWithTheReason) {
    ASSERT_NO_FATAL_FAILURE(Open(3));
    const QTemporaryDir directory;
    const QString file = directory.filePath(S("nowhere/shown.csv"));
    ASSERT_NO_FATAL_FAILURE(ExportTo(file));
    QMessageBox* box = nullptr;
    ASSERT_TRUE(WaitUntil([&box] {
        for (QWidget* const top : QApplication::topLevelWidgets())
            if (top->isVisible() && qobject_cast<QMessageBox*>(top) != nullptr)
                box = static_cast<QMessageBox*>(top);
        return box != nullptr;
    }));
    EXPECT_TRUE(box->text().startsWith(S("The file cannot be written: "))) << box->text().toStdString();
    EXPECT_GT(box->text().size(), S("The file cannot be written: ").size());
    delete box;
    EXPECT_FALSE(QFile::exists(file));
}

}  // namespace
