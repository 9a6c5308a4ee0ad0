// SPDX-License-Identifier: Apache-2.0
// The stations that were heard of, as a table.
#include <apps/mcconsole/stations/natsplace.h>
#include <apps/mcconsole/stations/stationmodel.h>

#include <tests/support/doubles/manualclock.h>
#include <tests/support/printing.h>

#include <gmock/gmock.h>

namespace {

using std::chrono_literals::operator""s;

nats::StationInfo Named(const QString& station) {
    nats::StationInfo info;
    info.station = station;
    info.name = QStringLiteral("mcserver");
    info.version = QStringLiteral("0.1");
    info.machine = QStringLiteral("hill");
    info.state = QStringLiteral("connected to vm_1 at localhost");
    info.since = QStringLiteral("2026-11-22T11:03:21Z");
    return info;
}

class StationModelTest : public testing::Test {
  protected:
    using EColumn = StationModel::EColumn;

    QString Cell(int row, EColumn column, int role = Qt::DisplayRole) const {
        return model.index(row, column).data(role).toString();
    }

    ManualClock clock;
    StationModel model{clock};
};

TEST_F(StationModelTest, TellsOfEachWhatItSaysOfItself) {
    model.Add(Named(QStringLiteral("tower")));
    ASSERT_EQ(model.rowCount(), 1);
    const char* const cells[] = {"tower", "mcserver", "0.1", "hill", "connected to vm_1 at localhost", "3 h"};
    for (int column = 0; column < StationModel::ColumnCount; ++column)
        EXPECT_EQ(Cell(0, static_cast<EColumn>(column)), QLatin1String(cells[column]));
}

TEST_F(StationModelTest, OneThatSaysSoAgainIsNoSecondOne) {
    model.Add(Named(QStringLiteral("tower")));
    nats::StationInfo again = Named(QStringLiteral("tower"));
    again.state = QStringLiteral("the device has gone");
    model.Add(again);
    ASSERT_EQ(model.rowCount(), 1);
    EXPECT_EQ(Cell(0, EColumn::Device), QStringLiteral("the device has gone"));
}

TEST_F(StationModelTest, WhoMissedThreeTurnsIsSilentAndComesBack) {
    model.Add(Named(QStringLiteral("tower")));
    clock.Advance(15s);
    model.Tick();
    EXPECT_EQ(Cell(0, EColumn::Device), QStringLiteral("connected to vm_1 at localhost"));
    EXPECT_TRUE(model.index(0, EColumn::Device).data(Qt::DecorationRole).isNull());
    clock.Advance(2s);
    model.Tick();
    EXPECT_EQ(Cell(0, EColumn::Device), QStringLiteral("silent for 17 s"));
    EXPECT_FALSE(model.index(0, EColumn::Device).data(Qt::DecorationRole).isNull()) << "never colour alone";
    model.Add(Named(QStringLiteral("tower")));
    EXPECT_EQ(Cell(0, EColumn::Device), QStringLiteral("connected to vm_1 at localhost"));
}

TEST_F(StationModelTest, WhoIsSilentForAMinuteLeaves) {
    model.Add(Named(QStringLiteral("tower")));
    clock.Advance(30s);
    model.Add(Named(QStringLiteral("mast")));
    clock.Advance(30s);
    model.Tick();
    ASSERT_EQ(model.rowCount(), 1);
    EXPECT_EQ(Cell(0, EColumn::Station), QStringLiteral("mast"));
}

TEST_F(StationModelTest, AClockThatIsAheadMakesNoNegativeAge) {
    nats::StationInfo early = Named(QStringLiteral("tower"));
    early.since = QStringLiteral("2026-11-22T15:00:00Z");
    model.Add(early);
    early.station = QStringLiteral("mast");
    early.since = QStringLiteral("yesterday");
    model.Add(early);
    EXPECT_EQ(Cell(0, EColumn::Running), QStringLiteral("0 s"));
    EXPECT_EQ(Cell(1, EColumn::Running), QStringLiteral("-"));
}

TEST_F(StationModelTest, WhatOthersChoseIsShortAndPlain) {
    nats::StationInfo rude = Named(QStringLiteral("tower"));
    rude.machine = QStringLiteral("<b>hill</b>");
    rude.state = QString(5000, QLatin1Char('x'));
    model.Add(rude);
    EXPECT_LE(Cell(0, EColumn::Device).size(), 100);
    EXPECT_THAT(Cell(0, EColumn::Station, Qt::ToolTipRole).toStdString(),
                testing::HasSubstr("&lt;b&gt;hill"));
}

TEST_F(StationModelTest, StrangersCannotMakeItGrowForEver) {
    for (int i = 0; i < 10'100; ++i)
        model.Add(Named(QStringLiteral("s%1").arg(i)));
    EXPECT_EQ(model.rowCount(), 10'000);
}

struct PlaceRow {
    const char* name;
    const char* text;
    const char* place;    ///< null: it is none
    const char* station;  ///< the address of the station "tower" there
};

class NatsPlaces : public testing::TestWithParam<PlaceRow> {};

TEST_P(NatsPlaces, AreReadAsPeopleWriteThem) {
    NatsPlace place;
    ASSERT_EQ(place.Parse(QLatin1String(GetParam().text)), GetParam().place != nullptr);
    if (GetParam().place == nullptr) return;
    EXPECT_EQ(place.ToText(), QLatin1String(GetParam().place));
    EXPECT_EQ(place.AddressOf(QStringLiteral("tower")).ToText(), QLatin1String(GetParam().station));
}

INSTANTIATE_TEST_SUITE_P(
    All, NatsPlaces,
    testing::Values(PlaceRow{"AHost", "hub", "hub", "nats://hub/tower"},
                    PlaceRow{"BlanksAround", "  hub ", "hub", "nats://hub/tower"},
                    PlaceRow{"AScheme", "nats://hub", "hub", "nats://hub/tower"},
                    PlaceRow{"ASlashBehind", "nats://hub/", "hub", "nats://hub/tower"},
                    PlaceRow{"Tls", "natss://hub:4333", "natss://hub:4333", "natss://hub:4333/tower"},
                    PlaceRow{"SeveralHosts", "a:1,[::1]:2", "a:1,[::1]:2", "nats://a:1,[::1]:2/tower"},
                    PlaceRow{"AStationIsPassedOver", "nats://hub/mast", "hub", "nats://hub/tower"},
                    PlaceRow{"Nothing", "", nullptr, nullptr},
                    PlaceRow{"AnotherScheme", "mcss://hub", nullptr, nullptr},
                    PlaceRow{"Credentials", "alice@hub", nullptr, nullptr},
                    PlaceRow{"NoPort", "hub:70000", nullptr, nullptr}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
