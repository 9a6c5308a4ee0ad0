// SPDX-License-Identifier: Apache-2.0
// The page that an operator works on, by mouse and keys.
#include <apps/mcconsole/overview/frequencyline.h>
#include <apps/mcconsole/overview/lastevents.h>
#include <apps/mcconsole/overview/overviewpage.h>
#include <apps/mcconsole/overview/trendplot.h>
#include <apps/pages/severitylook.h>

#include <tests/apps/mcconsole/eventmaker.h>
#include <tests/apps/mcconsole/overviewfixture.h>
#include <tests/support/spoken.h>
#include <tests/support/waituntil.h>

#include <gmock/gmock.h>

#include <qwt_plot_marker.h>
#include <qwt_plot_zoneitem.h>

#include <QtCore/QRegularExpression>
#include <QtGui/QWheelEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QToolButton>

#include <algorithm>
#include <set>

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

namespace {

class OverviewPageTest : public OverviewTest {
  protected:
    OverviewPageTest() : page(clock, tuning, book, *situation) {
        page.resize(1000, 420);
        page.Bind(ServerTree::BasePath(), AllSegments);
        page.BindMpxOrv(ServerTree::OwnPath());
        page.show();
        QApplication::setActiveWindow(&page);
        Settle();
    }

    void Settle() {
        clock.Advance(200ms);
        QCoreApplication::processEvents();
    }
    void MakeUser(const char* name, double hz, bool isMaster) {
        const std::string path = std::string("StaticMpxORVs/") + name;
        server.Number((path + "/Status/TunedFrequency").c_str(), hz);
        server.Text((path + "/Status/TunedSince").c_str(), "");
        server.Flag((path + "/Status/IsMaster").c_str(), isMaster);
        page.Bind(ServerTree::BasePath(), AllSegments);
        Settle();
    }

    template <class W>
    W* Find(const char* name) const {
        return page.findChild<W*>(QString::fromLatin1(name));
    }
    std::string Text(const char* name) const { return Find<QLabel>(name)->text().toStdString(); }
    FrequencyLine* Line() const { return Find<FrequencyLine>("FrequencyLine"); }
    QLineEdit* Field() const { return Find<QLineEdit>("Frequency"); }
    QPoint PlaceOf(double hz) const {
        return QPoint(qRound(Line()->PixelOf(hz)), Line()->canvas()->height() / 2);
    }
    std::string DetailAt(double hz) const { return Line()->DetailAt(PlaceOf(hz)).toStdString(); }
    void Click(const char* name) { QTest::mouseClick(Find<QAbstractButton>(name), Qt::LeftButton); }
    std::vector<std::string> Labels() const {
        std::vector<std::string> labels;
        for (const QwtPlotItem* item : Line()->itemList(QwtPlotItem::Rtti_PlotMarker))
            if (!static_cast<const QwtPlotMarker*>(item)->label().isEmpty())
                labels.push_back(static_cast<const QwtPlotMarker*>(item)->label().text().toStdString());
        return labels;
    }
    std::vector<std::string> Events() const {
        std::vector<std::string> lines;
        const QAbstractItemModel* const model = Find<LastEvents>("LastEvents")->model();
        for (int i = 0; i < model->rowCount(); ++i)
            lines.push_back(model->index(i, 0).data().toString().toStdString());
        return lines;
    }
    OverviewPage page;
};

TEST_F(OverviewPageTest, ShowsTheOwnFrequencyInOneLargeLine) {
    EXPECT_EQ(Text("OwnFrequency"), "NOT TUNED");
    EXPECT_GT(Find<QLabel>("OwnFrequency")->font().pointSizeF(), 1.5 * page.font().pointSizeF());
    Tune("121.5");
    Grant();
    EXPECT_EQ(Text("OwnFrequency"), "121.500 MHz");
    EXPECT_FALSE(Find<QPushButton>("RetryWhenSilent")->isEnabled());
}

struct AnswerRow {
    const char* name;
    const char* answer;
    const char* shown;
    ESeverity severity;
};

class OverviewAnswers : public OverviewPageTest, public testing::WithParamInterface<AnswerRow> {};

TEST_P(OverviewAnswers, StandBelowTheFieldWithTimeAndIcon) {
    Answer()->SetValue(QString::fromLatin1(GetParam().answer));
    EXPECT_EQ(Text("AnswerText"), GetParam().shown);
    EXPECT_EQ(Text("AnswerTime"), "14:03:21");
    const QPixmap icon = Find<QLabel>("AnswerIcon")->pixmap(Qt::ReturnByValue);
    const int size = page.style()->pixelMetric(QStyle::PM_SmallIconSize);
    EXPECT_EQ(icon.toImage(), severitylook::Icon(GetParam().severity, *page.style()).pixmap(size).toImage());
    EXPECT_EQ(Find<QLabel>("AnswerText")->palette().color(QPalette::WindowText),
              severitylook::Colour(GetParam().severity, page.palette()));
}

INSTANTIATE_TEST_SUITE_P(
    , OverviewAnswers,
    testing::Values(AnswerRow{"Granted", "done: tuned to 121.5 MHz", "done: tuned to 121.5 MHz",
                              ESeverity::Ok},
                    AnswerRow{"NotSupervised", "done, not supervised: tuned to 121.5 MHz",
                              "done, not supervised: tuned to 121.5 MHz", ESeverity::Look},
                    AnswerRow{"Refused", "refused: needs MayCal", "refused: needs MayCal", ESeverity::Act},
                    AnswerRow{"Ended", "ended: the ORV is not connected", "ended: the ORV is not connected",
                              ESeverity::Act},
                    AnswerRow{"Unknown", "something else", "something else", ESeverity::Unknown}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(OverviewPageTest, GreysWhatAnMpxOrvWasAnsweredThatIsNoMore) {
    Answer()->SetValue(QStringLiteral("done: tuned to 121.5 MHz"));
    page.BindMpxOrv(QString());
    EXPECT_EQ(Text("AnswerText"), "done: tuned to 121.5 MHz");
    page.BindMpxOrv(ServerTree::OwnPath());
    EXPECT_EQ(Find<QLabel>("AnswerText")->palette().color(QPalette::WindowText),
              severitylook::Colour(ESeverity::Unknown, page.palette()));
}

TEST_F(OverviewPageTest, TakesTheCodeOfAnotherAnswerForNone) {
    server.Text("DynamicMpxORVs/Console/Request/AnswerCode", R"({"code":"done","args":["something else"]})");
    Answer()->SetValue(QStringLiteral("done: tuned to 121.5 MHz"));
    EXPECT_EQ(Text("AnswerText"), "done: tuned to 121.5 MHz");
}

TEST_F(OverviewPageTest, WaitsForSilenceWhenAskedToAndSaysSo) {
    server.Suppress(2, 2, {121.5e6}, {});
    Tune("121.5");
    Refuse("121.5 MHz is blanked");
    auto* const retry = Find<QPushButton>("RetryWhenSilent");
    ASSERT_TRUE(retry->isEnabled());
    Click("RetryWhenSilent");
    EXPECT_EQ(retry->text(), QStringLiteral("Waits until 121.5 MHz is silent: cancel"));
    EXPECT_TRUE(retry->isChecked());
    server.Suppress(2, 2, {}, {});
    clock.Advance(SilentRetry::SilentTime);
    EXPECT_THAT(Asked(), ElementsAre(121.5, 121.5));
    EXPECT_FALSE(retry->isChecked());
    EXPECT_FALSE(retry->isEnabled());
}

TEST_F(OverviewPageTest, WaitsForSilenceWhenAssistiveTechnologyAsksForIt) {
    server.Suppress(2, 2, {121.5e6}, {});
    Tune("121.5");
    Refuse("121.5 MHz is blanked");
    spoken::Toggle(*Find<QPushButton>("RetryWhenSilent"));
    EXPECT_EQ(Find<QPushButton>("RetryWhenSilent")->text(),
              QStringLiteral("Waits until 121.5 MHz is silent: cancel"));
    server.Suppress(2, 2, {}, {});
    clock.Advance(SilentRetry::SilentTime);
    EXPECT_THAT(Asked(), ElementsAre(121.5, 121.5));
}

TEST_F(OverviewPageTest, CancelsTheWaitingByTheSameButton) {
    server.Suppress(2, 2, {121.5e6}, {});
    Tune("121.5");
    Refuse("121.5 MHz is blanked");
    Click("RetryWhenSilent");
    Click("RetryWhenSilent");
    EXPECT_FALSE(Find<QPushButton>("RetryWhenSilent")->isChecked());
    server.Suppress(2, 2, {}, {});
    EXPECT_THAT(Asked(), ElementsAre(121.5));
}

TEST_F(OverviewPageTest, OffersWhatWasHeldBeforeALoss) {
    EXPECT_FALSE(Find<QWidget>("RestoreOffer")->isVisible());
    Tune("127.5");
    Grant();
    BeMaster(true);
    LoseDevice();
    EXPECT_FALSE(Find<QWidget>("RestoreOffer")->isVisible());
    BringDeviceBack();
    ASSERT_TRUE(Find<QWidget>("RestoreOffer")->isVisible());
    EXPECT_EQ(Text("RestoreText"), "Was job master and at 127.5 MHz until 14:03:21");
    Click("Restore");
    EXPECT_TRUE(AsksToBeMaster());
    EXPECT_THAT(Asked(), ElementsAre(127.5, 127.5));
    BeMaster(true);
    Grant();
    EXPECT_FALSE(Find<QWidget>("RestoreOffer")->isVisible());
}

TEST_F(OverviewPageTest, DismissesTheOffer) {
    Tune("127.5");
    Grant();
    LoseDevice();
    BringDeviceBack();
    Click("DismissRestore");
    EXPECT_FALSE(Find<QWidget>("RestoreOffer")->isVisible());
    EXPECT_THAT(Asked(), ElementsAre(127.5));
}

TEST_F(OverviewPageTest, NamesWhoIsOnWhichFrequency) {
    MakeUser("Tower", 118.4e6, true);
    MakeUser("Van", 127.5e6, false);
    Tune("121.5");
    Grant();
    Settle();
    EXPECT_THAT(Labels(), ElementsAre("Console", "Tower (master)", "Van"));
    EXPECT_EQ(DetailAt(118.4e6), "Tower: 118.4 MHz, job master");
    EXPECT_EQ(DetailAt(121.5e6), "Console: 121.5 MHz, this console");
    EXPECT_EQ(DetailAt(124e6), "");
    EXPECT_THAT(Line()->accessibleDescription().toStdString(), HasSubstr("Van: 127.5 MHz"));
    server.Number("StaticMpxORVs/Van/Status/TunedFrequency", 0);
    Settle();
    EXPECT_THAT(Labels(), ElementsAre("Console", "Tower (master)"));
}

TEST_F(OverviewPageTest, AClickOnTheLineMeansAChannelInWholeHertz) {
    for (int x = 5; x < Line()->canvas()->width(); x += 7) {
        QTest::mouseClick(Line()->canvas(), Qt::LeftButton, Qt::NoModifier, QPoint(x, 5));
        static const QRegularExpression channel(QStringLiteral(R"(^\d+\.\d{3} MHz$)"));
        EXPECT_TRUE(channel.match(Field()->text()).hasMatch()) << Field()->text().toStdString();
    }
}

TEST_F(OverviewPageTest, ShowsTheNamesOfOneFrequencyBelowEachOther) {
    MakeUser("Tower", 118.4e6, false);
    MakeUser("Van", 118.4e6, false);
    MakeUser("Boat", 118.4e6, false);
    std::set<double> heights;
    for (const QwtPlotItem* item : Line()->itemList(QwtPlotItem::Rtti_PlotMarker)) {
        const auto* const marker = static_cast<const QwtPlotMarker*>(item);
        if (marker->label().isEmpty()) continue;
        EXPECT_EQ(marker->lineStyle(), QwtPlotMarker::NoLine) << "the label of a line stands in its middle";
        heights.insert(marker->yValue());
    }
    EXPECT_EQ(heights.size(), 3U);
}

TEST_F(OverviewPageTest, TellsOfTransmittersByWordAndByWho) {
    server.Text("Status/Suppression/Modules/0/Name", "North");
    server.Text("Status/Suppression/Modules/0/Reason", "no answer");
    server.Number("Status/Suppression/Modules/0/Inputs/0/Frequency", 118.4e6);
    server.Text("Status/Suppression/Modules/0/Inputs/0/Name", "Tower 1");
    server.Suppress(2, 1, {121.5e6}, {118.4e6});
    Settle();
    EXPECT_THAT(Labels(), ElementsAre("not supervised", "keyed"));
    EXPECT_EQ(DetailAt(118.4e6), "118.4 MHz: not supervised\nNorth, Tower 1: no answer");
    EXPECT_EQ(DetailAt(121.5e6), "121.5 MHz: keyed");
    const QwtPlotItemList zones = Line()->itemList(QwtPlotItem::Rtti_PlotZone);
    EXPECT_EQ(std::count_if(zones.begin(), zones.end(),
                            [](const QwtPlotItem* zone) {
                                const QwtInterval there =
                                    static_cast<const QwtPlotZoneItem*>(zone)->interval();
                                return there.minValue() > 100 && there.maxValue() < 200;
                            }),
              2);
}

TEST_F(OverviewPageTest, NamesWhoIsWhereATransmitterIsBesideIt) {
    MakeUser("Tower", 121.5e6, false);
    server.Suppress(1, 1, {121.5e6}, {});
    Settle();
    ASSERT_THAT(Labels(), UnorderedElementsAre("Tower", "keyed"));
    double zoneRight = 0;
    for (const QwtPlotItem* item : Line()->itemList(QwtPlotItem::Rtti_PlotZone)) {
        const QwtInterval there = static_cast<const QwtPlotZoneItem*>(item)->interval();
        if (there.contains(121.5)) zoneRight = Line()->PixelOf(there.maxValue() * 1e6);
    }
    const double zoneWidth = zoneRight - Line()->PixelOf(121.5e6);
    ASSERT_GT(zoneWidth, 0);
    for (const QwtPlotItem* item : Line()->itemList(QwtPlotItem::Rtti_PlotMarker)) {
        const auto* const marker = static_cast<const QwtPlotMarker*>(item);
        if (!marker->label().isEmpty()) {
            EXPECT_GE(marker->spacing(), zoneWidth) << marker->label().text().toStdString();
        }
    }
}

TEST_F(OverviewPageTest, ShowsWhatTheMasterReceives) {
    MakeUser("Tower", 127.5e6, true);
    server.Text("Status/Master/Name", "Tower");
    server.Number("Status/Master/RangeFrom", 117.5e6);
    server.Number("Status/Master/RangeTo", 137.5e6);
    Settle();
    const QwtInterval seen = Line()->axisInterval(QwtPlot::xBottom);
    EXPECT_TRUE(seen.contains(117.5) && seen.contains(137.5)) << "all of it is seen";
    EXPECT_THAT(Labels(), Contains("range of the master"));
    EXPECT_EQ(DetailAt(120e6),
              "117.5 MHz to 137.5 MHz: received by the job master, Tower; who may read from it "
              "needs no channel there");
    EXPECT_EQ(DetailAt(138e6), "");
    EXPECT_THAT(Line()->accessibleDescription().toStdString(),
                HasSubstr("received by the job master, Tower"));
    server.Text("Status/Master/Name", "");
    server.Number("Status/Master/RangeFrom", 0);
    server.Number("Status/Master/RangeTo", 0);
    Settle();
    EXPECT_EQ(DetailAt(120e6), "");
}

TEST_F(OverviewPageTest, ShowsWhatTheDeviceCannotBeTunedTo) {
    Line()->Zoom(1e6, 100);  // all that there is
    EXPECT_THAT(Labels(), Contains("outside the device's range"));
    EXPECT_EQ(DetailAt(12e9), "The device can be tuned from 0.3 MHz to 3000 MHz");
    EXPECT_EQ(DetailAt(2.5e9), "");
}

/// Where anything of \a colour is drawn on the line.
bool HasColour(const QWidget& widget, const QColor& colour) {
    const QImage image = const_cast<QWidget&>(widget).grab().toImage();
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) == colour) return true;
    return false;
}

TEST_F(OverviewPageTest, ShowsAfterALossWhoWasWhereAsOld) {
    MakeUser("Tower", 118.4e6, false);
    server.Suppress(2, 2, {127.5e6}, {});
    Tune("121.5");
    Grant();
    Settle();
    const QColor keyed = severitylook::Colour(ESeverity::Act, page.palette());
    const QColor own = severitylook::Colour(ESeverity::Ok, page.palette());
    ASSERT_TRUE(HasColour(*Line(), keyed) && HasColour(*Line(), own));
    const auto isVeiled = [this] {
        const auto* const veil = Line()->findChild<QWidget*>(QStringLiteral("StaleVeil"));
        return veil != nullptr && veil->isVisible();
    };
    EXPECT_FALSE(isVeiled());
    Be(EState::Lost);
    tuning.Bind(QString());
    Settle();
    EXPECT_TRUE(isVeiled());
    EXPECT_FALSE(HasColour(*Line(), keyed)) << "as if it were so now";
    EXPECT_FALSE(HasColour(*Line(), own));
    EXPECT_EQ(DetailAt(127.5e6), "127.5 MHz: keyed\nThe connection is lost: this is what was last known.");
    EXPECT_THAT(Line()->accessibleDescription().toStdString(), HasSubstr("this is what was last known"));
    EXPECT_THAT(DetailAt(121.5e6), HasSubstr("this console")) << "whose it was is known still";
    EXPECT_THAT(Labels(), Contains("wanted")) << "which the field holds";
    Be(EState::Connected);
    tuning.Bind(ServerTree::OwnPath());
    Settle();
    EXPECT_FALSE(isVeiled());
    EXPECT_TRUE(HasColour(*Line(), keyed));
    EXPECT_THAT(Line()->accessibleDescription().toStdString(), Not(HasSubstr("last known")));
    EXPECT_EQ(DetailAt(127.5e6), "127.5 MHz: keyed");
}

TEST_F(OverviewPageTest, TakesAFrequencyFromTheLineIntoTheFieldWithoutSendingIt) {
    MakeUser("Tower", 118.4e6, false);
    MakeUser("Van", 127.5e6, false);
    QTest::mouseClick(Line()->canvas(), Qt::LeftButton, Qt::NoModifier, PlaceOf(118.4e6));
    EXPECT_EQ(Field()->text(), QStringLiteral("118.400 MHz"));
    EXPECT_EQ(Text("TuneMark"), "Not sent");
    EXPECT_TRUE(Field()->hasFocus());
    EXPECT_THAT(Asked(), IsEmpty());
    QTest::keyClick(Field(), Qt::Key_Return);
    EXPECT_THAT(Asked(), ElementsAre(118.4));
}

TEST_F(OverviewPageTest, TakesAChannelWhereNobodyIs) {
    MakeUser("Tower", 118.4e6, false);
    MakeUser("Van", 127.5e6, false);
    QTest::mouseClick(Line()->canvas(), Qt::LeftButton, Qt::NoModifier, PlaceOf(123.05e6));
    const double hz = tuning.GetWanted().GetHz();
    EXPECT_NEAR(hz, 123.05e6, 50e3);
    EXPECT_NEAR(std::remainder(hz, 25e3), 0, 1e-3);
}

TEST_F(OverviewPageTest, DoesNotTakeADragForAClick) {
    MakeUser("Tower", 118.4e6, false);
    const QPoint begin = PlaceOf(118.4e6);
    const double before = Line()->axisInterval(QwtPlot::xBottom).minValue();
    QTest::mousePress(Line()->canvas(), Qt::LeftButton, Qt::NoModifier, begin);
    QTest::mouseMove(Line()->canvas(), begin + QPoint(60, 0));
    QTest::mouseRelease(Line()->canvas(), Qt::LeftButton, Qt::NoModifier, begin + QPoint(60, 0));
    EXPECT_NE(Text("TuneMark"), "Not sent");
    EXPECT_LT(Line()->axisInterval(QwtPlot::xBottom).minValue(), before);
}

TEST_F(OverviewPageTest, ZoomsAroundThePointerAndByKeys) {
    MakeUser("Tower", 118.4e6, false);
    MakeUser("Van", 400e6, false);
    const double all = Line()->axisInterval(QwtPlot::xBottom).width();
    const QPoint place = PlaceOf(118.4e6);
    QWheelEvent wheel(place, Line()->canvas()->mapToGlobal(place), QPoint(), QPoint(0, 120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(Line()->canvas(), &wheel);
    EXPECT_LT(Line()->axisInterval(QwtPlot::xBottom).width(), all);
    EXPECT_NEAR(Line()->PixelOf(118.4e6), place.x(), 3);
    Line()->setFocus();
    QTest::keyClick(Line(), Qt::Key_Plus);
    const double near = Line()->axisInterval(QwtPlot::xBottom).width();
    QTest::keyClick(Line(), Qt::Key_Right);
    EXPECT_NEAR(Line()->axisInterval(QwtPlot::xBottom).width(), near, 1e-6);
    MakeUser("Boat", 900e6, false);
    EXPECT_NEAR(Line()->axisInterval(QwtPlot::xBottom).width(), near, 1e-6)
        << "whoever looks closely goes on";
    Click("ShowAllFrequencies");
    EXPECT_GT(Line()->axisInterval(QwtPlot::xBottom).width(), all);
}

TEST_F(OverviewPageTest, KeepsTheLastTenMinutesInARing) {
    auto* const trend = Find<TrendPlot>("Trend");
    connection.latency = 3ms;
    server.tree.AddValue(QStringLiteral("/Server/Status"), [] {
        auto* const sweep = new values::ValueNumeric<int>(250000, 0, 1000000);
        sweep->SetName(QStringLiteral("SweepTime"));
        return sweep;
    }());
    clock.Advance(5s);
    ASSERT_GE(trend->GetRing().Count(), 4U);
    EXPECT_EQ(trend->GetRing().Get(0).sweepTimeMs, 250);
    EXPECT_EQ(trend->GetRing().Get(0).latencyMs, 3);
    Be(EState::Lost);
    clock.Advance(5s);
    EXPECT_FALSE(trend->GetRing().Get(0).sweepTimeMs);
    EXPECT_FALSE(trend->GetRing().Get(0).latencyMs);
    clock.Advance(1h);
    EXPECT_EQ(trend->GetRing().Count(), TrendRing::Capacity);
}

TEST_F(OverviewPageTest, ShowsTheLastFiveEventsTheNewestFirst) {
    const auto event = [](int number) {
        return eventmaker::Make(number, {ECode::IsMaster, {QStringLiteral("Van %1").arg(number)}}, "MpxORV",
                                EEventSeverity::Warning);
    };
    page.GetLastEvents().Add({event(1), event(2), event(3), event(4), event(5), event(6)});
    page.GetLastEvents().Add({event(7)});
    ASSERT_EQ(Events().size(), 5U);
    EXPECT_THAT(Events().front(), HasSubstr("  Van 7"));
    EXPECT_THAT(Events().back(), HasSubstr("  Van 3"));
    page.GetLastEvents().Clear();
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(OverviewPageTest, ShowsWholeLinesOfTheLastEventsHoweverMuchRoomThereIs) {
    LastEvents list;
    std::vector<Event> events;
    for (int number = 1; number <= LastEvents::Count; ++number)
        events.push_back(eventmaker::Make(number));
    list.show();
    list.Add(events);
    const int row = list.sizeHintForRow(0);
    ASSERT_GT(row, 4);
    for (const int spare : {0, 1, row / 2, row - 1}) {
        SCOPED_TRACE(spare);
        list.resize(300, 3 * row + spare + 2 * list.frameWidth());
        ASSERT_TRUE(WaitUntil([&] { return list.viewport()->height() == 3 * row; }));
        EXPECT_EQ(list.visualRect(list.model()->index(0, 0)).top(), 0);
    }
    list.resize(300, 10 * row);
    EXPECT_TRUE(WaitUntil([&] { return list.viewport()->height() > 9 * row; }));
}

TEST_F(OverviewPageTest, TellsWhatWasRefusedByAnotherSignThanWhatIsDone) {
    page.GetLastEvents().Add(
        {eventmaker::Make(1, {ECode::Tuned, {QStringLiteral("121.5 MHz"), QStringLiteral("Van")}}),
         eventmaker::Make(2, {ECode::RequestRefused, {QStringLiteral("Van"), QStringLiteral("refused")}},
                          "MpxORV Van", EEventSeverity::Notice)});
    const auto row = [this](int number, int role) {
        return Find<LastEvents>("LastEvents")->model()->index(number, 0).data(role);
    };
    const auto sign = [&](int number) {
        return row(number, Qt::DecorationRole).value<QIcon>().pixmap(16).toImage();
    };
    EXPECT_NE(sign(0), sign(1));
    EXPECT_TRUE(row(0, Qt::AccessibleTextRole).toString().startsWith(QLatin1String("Refused ")));
}

}  // namespace
