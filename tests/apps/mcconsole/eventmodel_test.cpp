// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/events/eventexporter.h>
#include <apps/mcconsole/events/eventmodel.h>

#include <tests/apps/mcconsole/eventmaker.h>
#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtTest/QSignalSpy>

#include <algorithm>

namespace {

using eventmaker::Make;
using eventmaker::MakeMany;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

class EventModelTest : public testing::Test {
  protected:
    std::vector<qint64> Numbers() const {
        std::vector<qint64> numbers;
        for (int row = 0; row < m_model.rowCount(); ++row)
            numbers.push_back(m_model.LineOf(row).event.number);
        return numbers;
    }
    void FinishFiltering() {
        while (m_model.IsFiltering())
            QCoreApplication::processEvents();
    }
    void Filter(const EventFilter& filter) {
        m_model.SetFilter(filter);
        FinishFiltering();
    }
    /// What is in a file after an export.
    QByteArray Exported(eventexport::EFormat format, const QString& server, const QDateTime& now) {
        const QTemporaryDir directory;
        EventExporter exporter(m_model);
        exporter.Start(directory.filePath(S("events")), format, server, now);
        EXPECT_TRUE(WaitUntil([&] { return !exporter.IsRunning(); }));
        QFile file(directory.filePath(S("events")));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    EventModel m_model;
};

TEST_F(EventModelTest, ShowsWhatHappenedInFiveColumns) {
    m_model.Append({Make(1, {ECode::IsMaster, {S("A")}}, "MpxORV A", EEventSeverity::Warning,
                         "mcconsole on tower1 (10.0.0.5:50000)")});
    const auto text = [this](int column) { return m_model.index(0, column).data().toString(); };
    EXPECT_EQ(text(EventModel::SeverityColumn), S("Warning"));
    EXPECT_EQ(text(EventModel::TimeColumn),
              m_model.LineOf(0).event.time.toLocalTime().toString(S("yyyy-MM-dd HH:mm:ss")));
    EXPECT_EQ(text(EventModel::SourceColumn), S("MpxORV A"));
    EXPECT_EQ(text(EventModel::WhoColumn), S("mcconsole on tower1"));
    EXPECT_EQ(m_model.index(0, EventModel::WhoColumn).data(Qt::ToolTipRole).toString(),
              S("mcconsole on tower1 (10.0.0.5:50000)"));
    EXPECT_EQ(text(EventModel::TextColumn), S("A is master"));
}

/// How an event looks by what happened and how grave that is.
struct LookRow {
    const char* name;
    ECode code;
    EEventSeverity severity;
    EEventLook look;
    const char* word;
};

class EventLooks : public testing::TestWithParam<LookRow> {};

INSTANTIATE_TEST_SUITE_P(
    , EventLooks,
    testing::Values(
        LookRow{"ADoneRequest", ECode::RequestDone, EEventSeverity::Info, EEventLook::Done, "Info"},
        LookRow{"AGrant", ECode::Tuned, EEventSeverity::Info, EEventLook::Done, "Info"},
        LookRow{"ADeviceThatIsThere", ECode::DeviceConnected, EEventSeverity::Notice, EEventLook::Done,
                "Notice"},
        LookRow{"ADeviceThatIsNotThere", ECode::DeviceNotConnected, EEventSeverity::Notice,
                EEventLook::Notice, "Notice"},
        LookRow{"WhoComes", ECode::Connected, EEventSeverity::Info, EEventLook::Told, "Info"},
        LookRow{"ARefusal", ECode::RequestRefused, EEventSeverity::Notice, EEventLook::Refused, "Refused"},
        LookRow{"ARefusalThatIsAnAlarm", ECode::RequestRefused, EEventSeverity::Alarm, EEventLook::Alarm,
                "Alarm"},
        LookRow{"WhoIsNotAdmitted", ECode::NotAdmitted, EEventSeverity::Warning, EEventLook::Warning,
                "Warning"},
        LookRow{"AGrantThatNobodyWatches", ECode::TunedUnsupervised, EEventSeverity::Warning,
                EEventLook::Warning, "Warning"},
        LookRow{"ALostConnection", ECode::ConnectionLost, EEventSeverity::Alarm, EEventLook::Alarm, "Alarm"}),
    [](const auto& row) { return row.param.name; });

TEST_P(EventLooks, IsThatOfWhatHappened) {
    const Event event = Make(1, {GetParam().code, {S("A"), S("B")}}, "config", GetParam().severity);
    EXPECT_EQ(eventlook::Of(event), GetParam().look);
    EXPECT_EQ(eventlook::Word(event), S(GetParam().word));
    EventModel model;
    model.Append({event});
    EXPECT_EQ(model.index(0, EventModel::SeverityColumn).data().toString(), S(GetParam().word));
    const auto icon = model.index(0, 0).data(Qt::DecorationRole).value<QIcon>();
    EXPECT_FALSE(icon.isNull());
}

TEST(EventLooksAtAll, ARefusalFromANewerServerIsOneToo) {
    Event event = Make(1, CodedText(), "MpxORV A", EEventSeverity::Notice);
    event.code = S("request-refused");  // with an argument that is not known here
    event.text = S("A: refused: something new");
    EXPECT_EQ(eventlook::Of(event), EEventLook::Refused);
}

TEST(EventLooksAtAll, AModuleThatAnswersAgainAndIsNotInUseIsNothingDone) {
    const EEventSeverity severity = eventcodes::Of(ECode::ModuleAnswersAgain).severity;
    const Event event =
        Make(1, {ECode::ModuleAnswersAgain, {S("North"), S("10.0.0.1")}}, "suppression", severity);
    EXPECT_EQ(eventlook::Of(event), EEventLook::Warning);
    EXPECT_EQ(eventlook::Word(event), S("Warning"));
}

/// The colour that is most seen in a sign; grey ones do not count.
QColor ColourOf(const QIcon& icon) {
    const QImage sign = icon.pixmap(32).toImage();
    long long red = 0, green = 0, blue = 0;
    for (int y = 0; y < sign.height(); ++y)
        for (int x = 0; x < sign.width(); ++x)
            if (const QColor pixel = sign.pixelColor(x, y); pixel.alpha() > 128 && pixel.saturation() > 60) {
                red += pixel.red();
                green += pixel.green();
                blue += pixel.blue();
            }
    const long long most = std::max({red, green, blue, 1LL});
    const auto part = [most](long long sum) { return static_cast<int>(255 * sum / most); };
    return QColor(part(red), part(green), part(blue));
}

TEST(EventLooksAtAll, OnlyWhatIsDoneIsGreen) {
    const eventlook::Icons icons;
    for (int i = 0; i < static_cast<int>(EEventLook::Count); ++i) {
        const auto look = static_cast<EEventLook>(i);
        const QColor colour = ColourOf(icons.Of(look));
        const bool isGreen = colour.green() > colour.red() && colour.green() > colour.blue();
        EXPECT_EQ(isGreen, look == EEventLook::Done) << i << ' ' << colour.name().toStdString();
    }
    const QColor refused = ColourOf(icons.Of(EEventLook::Refused));
    EXPECT_GT(refused.green(), refused.red() / 3) << "nor is it red, as an alarm is";
}

// Each time they go all that is in sight is drawn anew, so it is not with every event.
TEST_F(EventModelTest, OfTooManyTheOldestGoManyAtATime) {
    constexpr int AtOnce = EventList::GoAtOnce;
    m_model.Append(MakeMany(1, EventList::MaxKept));
    QSignalSpy gone(&m_model, &EventModel::FirstRowsGone);
    for (int i = 1; i < AtOnce; ++i)
        m_model.Append({Make(EventList::MaxKept + i)});
    EXPECT_EQ(gone.count(), 0);
    EXPECT_EQ(m_model.LineOf(0).event.number, 1);
    m_model.Append({Make(EventList::MaxKept + AtOnce)});
    EXPECT_EQ(m_model.rowCount(), EventList::MaxKept);
    EXPECT_EQ(m_model.LineOf(0).event.number, AtOnce + 1);
    EXPECT_EQ(m_model.LineOf(EventList::MaxKept - 1).event.number, EventList::MaxKept + AtOnce);
    ASSERT_EQ(gone.count(), 1);
    EXPECT_EQ(gone[0][0].toInt(), AtOnce);
}

TEST_F(EventModelTest, OlderOnesComeBeforeTheOthers) {
    m_model.Append(MakeMany(11, 12));
    m_model.Prepend(MakeMany(9, 10));
    m_model.Append(MakeMany(13, 13));
    EXPECT_EQ(Numbers(), (std::vector<qint64>{9, 10, 11, 12, 13}));
}

TEST_F(EventModelTest, ThereIsNoRoomForOlderOnesWhereItIsFull) {
    m_model.Append(MakeMany(101, EventList::MaxKept + 98));
    m_model.Prepend(MakeMany(91, 100));
    EXPECT_EQ(m_model.rowCount(), EventList::MaxKept);
    EXPECT_EQ(m_model.LineOf(0).event.number, 99);
}

TEST_F(EventModelTest, MayBeAddedToWhereNothingIsLeftOfWhatCame) {
    m_model.Append(MakeMany(1, EventList::MaxKept + 150));
    EXPECT_EQ(m_model.LineOf(0).event.number, 151);
    m_model.Clear();
    m_model.Append(MakeMany(1, 2));
    EXPECT_EQ(Numbers(), (std::vector<qint64>{1, 2}));
}

struct FilterRow {
    const char* name;
    EventFilter filter;
    std::vector<qint64> taken;
};

class EventFilters : public EventModelTest, public testing::WithParamInterface<FilterRow> {};

TEST_P(EventFilters, TakeOfWhatIsThereAndOfWhatComes) {
    const std::vector<Event> events = {
        Make(1, {ECode::IsMaster, {S("Tower")}}, "MpxORV Tower", EEventSeverity::Notice,
             "anna on t1 (1.2.3.4:5)"),
        Make(2, ECode::ConfigSaved, "config"),
        Make(3, {ECode::IsMaster, {S("Van")}}, "MpxORV Van", EEventSeverity::Warning),
        Make(4, ECode::ServerEnds, "server", EEventSeverity::Alarm)};
    m_model.Append(events);
    Filter(GetParam().filter);
    EXPECT_EQ(Numbers(), GetParam().taken);
    m_model.Clear();
    m_model.Append(events);
    EXPECT_EQ(Numbers(), GetParam().taken);
    m_model.Clear();
    m_model.Prepend(events);
    EXPECT_EQ(Numbers(), GetParam().taken);
}

INSTANTIATE_TEST_SUITE_P(
    All, EventFilters,
    testing::Values(FilterRow{"All", {}, {1, 2, 3, 4}},
                    FilterRow{"NoticesAndAbove", {EEventSeverity::Notice, {}, {}}, {1, 3, 4}},
                    FilterRow{"Warnings", {EEventSeverity::Warning, {}, {}}, {3, 4}},
                    FilterRow{"Alarms", {EEventSeverity::Alarm, {}, {}}, {4}},
                    FilterRow{"OneSource", {EEventSeverity::Info, S("config"), {}}, {2}},
                    FilterRow{"AllMpxOrvs", {EEventSeverity::Info, S("MpxORV"), {}}, {1, 3}},
                    FilterRow{"NoSourceThatOnlyBeginsSo", {EEventSeverity::Info, S("conf"), {}}, {}},
                    FilterRow{"TextInAnyCase", {EEventSeverity::Info, {}, S("IS MASTER")}, {1, 3}},
                    FilterRow{"Who", {EEventSeverity::Info, {}, S("anna")}, {1}},
                    FilterRow{"TheNameOfTheSource", {EEventSeverity::Info, {}, S("van")}, {3}},
                    FilterRow{"AllAtOnce", {EEventSeverity::Warning, S("MpxORV"), S("van")}, {3}},
                    FilterRow{"NoneOfThem", {EEventSeverity::Info, {}, S("nowhere")}, {}}),
    [](const auto& row) { return std::string(row.param.name); });

// 16 ms are enough for some thousand rows on any machine that shows windows: so it is rows that are counted.
TEST_F(EventModelTest, AFilterOverAllLooksAtAFewInATurn) {
    m_model.Append(MakeMany(1, EventList::MaxKept));
    qint64 looked = m_model.CountLookedAt();
    m_model.SetFilter({EEventSeverity::Info, {}, S("configuration")});
    EXPECT_LE(m_model.CountLookedAt() - looked, EventModel::RowsPerSlice);
    EXPECT_EQ(m_model.LineOf(m_model.rowCount() - 1).event.number, EventList::MaxKept)
        << "the newest at once";
    int turns = 0;
    for (; m_model.IsFiltering(); ++turns) {
        looked = m_model.CountLookedAt();
        QCoreApplication::processEvents();
        EXPECT_LE(m_model.CountLookedAt() - looked, 2 * EventModel::RowsPerSlice);
        ASSERT_LT(turns, 1000);
    }
    EXPECT_EQ(m_model.rowCount(), EventList::MaxKept);
}

TEST_F(EventModelTest, WhatComesIsLookedAtAloneHoweverManyThereAre) {
    m_model.Append(MakeMany(1, EventList::MaxKept));
    const qint64 looked = m_model.CountLookedAt();
    QSignalSpy inserted(&m_model, &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(&m_model, &QAbstractItemModel::rowsRemoved);
    m_model.Append(MakeMany(EventList::MaxKept + 1, EventList::MaxKept + 150));
    EXPECT_EQ(m_model.CountLookedAt() - looked, 150);
    EXPECT_EQ(inserted.count(), 1);
    EXPECT_EQ(removed.count(), 1);
}

TEST_F(EventModelTest, WhatComesWhileAFilterIsAtItFindsItsPlace) {
    m_model.Append(MakeMany(2001, 7000));
    m_model.SetFilter({EEventSeverity::Info, {}, S("configuration")});
    m_model.Append(MakeMany(7001, 7002));
    m_model.Prepend(MakeMany(1999, 2000));
    FinishFiltering();
    const std::vector<qint64> numbers = Numbers();
    ASSERT_EQ(numbers.size(), 5004U);
    for (std::size_t i = 0; i < numbers.size(); ++i)
        ASSERT_EQ(numbers[i], 1999 + qint64(i));
}

TEST_F(EventModelTest, IsExportedAsATable) {
    m_model.Append({Make(1, {ECode::IsMaster, {S("A, \"B\"")}}, "MpxORV A, \"B\""),
                    Make(2, {ECode::DeviceLog, {S("x")}}, "device", EEventSeverity::Info, "=cmd (1)")});
    const QString time = EventModel::TextOf(m_model.LineOf(0), EventModel::TimeColumn);
    const QString later = EventModel::TextOf(m_model.LineOf(1), EventModel::TimeColumn);
    const QByteArray bytes = Exported(eventexport::EFormat::Csv, S("tower"), QDateTime());
    EXPECT_EQ(QString::fromUtf8(bytes), S("Severity,Time,Source,Who,What\r\n"
                                          "Info,%1,\"MpxORV A, \"\"B\"\"\",,\"A, \"\"B\"\" is master\"\r\n"
                                          "Info,%2,Device,'=cmd (1),ORV: x\r\n")
                                            .arg(time, later));
}

TEST_F(EventModelTest, IsExportedAsTextNamedWithServerAndDate) {
    m_model.Append({Make(1)});
    const QDateTime now(QDate(2026, 11, 22), QTime(15, 0));
    const QString time = EventModel::TextOf(m_model.LineOf(0), EventModel::TimeColumn);
    EXPECT_EQ(QString::fromUtf8(Exported(eventexport::EFormat::Text, S("tower:7450"), now)),
              S("Events of tower:7450, 2026-11-22 15:00:00\n\n%1  Info  Configuration  the configuration is "
                "saved\n")
                  .arg(time));
    EXPECT_EQ(eventexport::ProposedName(S("mcss://[::1]:7450"), now.date(), eventexport::EFormat::Csv),
              S("events-mcss------1--7450-2026-11-22.csv"));
}

// As many as are kept would hold up the window for longer than one sees.
TEST_F(EventModelTest, ManyAreExportedInTurnsWhateverComesAndGoesMeanwhile) {
    m_model.Append(MakeMany(1, EventList::MaxKept));
    const QTemporaryDir directory;
    QFile file(directory.filePath(S("events")));
    EventExporter exporter(m_model);
    const QSignalSpy ended(&exporter, &EventExporter::Ended);
    exporter.Start(file.fileName(), eventexport::EFormat::Csv, S("tower"), QDateTime());
    m_model.Append(MakeMany(EventList::MaxKept + 1, EventList::MaxKept + 700));
    ASSERT_EQ(m_model.LineOf(0).event.number, 701);
    int passed = 0;
    while (exporter.IsRunning()) {
        RunTurns(1);
        EXPECT_LE(exporter.CountPassed() - passed, EventExporter::RowsPerTurn);
        EXPECT_EQ(file.exists(), !exporter.IsRunning()) << "there is no half of it";
        passed = exporter.CountPassed();
    }
    ASSERT_EQ(ended.count(), 1);
    EXPECT_EQ(ended.at(0).at(0).toString(), QString());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll().count("\r\n"), 1 + EventList::MaxKept - 700);
}

}  // namespace
