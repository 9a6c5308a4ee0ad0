// SPDX-License-Identifier: Apache-2.0
// The strip above all pages, by keys and clicks.
#include <apps/mcconsole/statusbutton.h>
#include <apps/mcconsole/statusstrip.h>
#include <apps/pages/colours.h>

#include <tests/apps/mcconsole/situationfixture.h>

#include <gmock/gmock.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>

#include <set>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class StatusStripTest : public SituationTest {
  protected:
    StatusStripTest() {
        server.MakeUsual();
        server.Tune(121.5e6);
        Be(EState::Connected);
        strip = std::make_unique<StatusStrip>(*situation);
        strip->resize(1000, strip->sizeHint().height());
        strip->show();
        QApplication::setActiveWindow(strip.get());
        QObject::connect(strip.get(), &StatusStrip::PageRequested,
                         [this](const QString& page) { pages.push_back(page.toStdString()); });
    }
    ~StatusStripTest() override { colours::Apply(false); }

    StatusButton* Button(const char* name) const {
        return strip->findChild<StatusButton*>(QString::fromLatin1(name));
    }
    void Click(const char* name) { QTest::mouseClick(Button(name), Qt::LeftButton); }
    /// Where there is no desktop, the toolkit has a much larger one.
    void UseFontOfADesktop() {
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPixelSize(13);
        strip->setFont(font);
    }
    void ExpectNoWordCutDownTo(int least) {
        for (int width = 1024; width >= least; width -= 8) {
            strip->resize(width, strip->height());
            QCoreApplication::processEvents();
            for (const char* name :
                 {"ServerState", "DeviceState", "MasterState", "SuppressionState", "OwnState"})
                EXPECT_FALSE(Button(name)->text().contains(QChar(0x2026)))
                    << Button(name)->text().toStdString() << " at " << width;
        }
    }

    std::unique_ptr<StatusStrip> strip;
    std::vector<std::string> pages;
};

TEST_F(StatusStripTest, NamesEachThingAndHowItIs) {
    EXPECT_EQ(Button("ServerState")->text(), QStringLiteral("Server\nmast-north"));
    EXPECT_EQ(Button("DeviceState")->text(), QStringLiteral("Device\nready, scan"));
    EXPECT_EQ(Button("MasterState")->text(), QStringLiteral("Master\nnobody"));
    EXPECT_EQ(Button("SuppressionState")->text(), QStringLiteral("Suppression\n2 of 2 in use"));
    EXPECT_EQ(Button("OwnState")->text(), QStringLiteral("My MpxORV\n121.5 MHz"));
}

TEST_F(StatusStripTest, SaysBesideWhatItIsHowOldThatIs) {
    Be(EState::Lost);
    clock.Advance(12s);
    EXPECT_EQ(Button("DeviceState")->text(), QStringLiteral("Device, 12 s old\nready, scan"));
    EXPECT_THAT(Button("DeviceState")->accessibleName().toStdString(), HasSubstr("12 s old"));
    EXPECT_EQ(Button("ServerState")->text(), QStringLiteral("Server\nlost for 12 s"));
}

TEST_F(StatusStripTest, WritesNothingWhileNobodySeesIt) {
    strip->hide();
    Be(EState::Lost);
    clock.Advance(12s);
    EXPECT_EQ(Button("DeviceState")->text(), QStringLiteral("Device\nready, scan"));
    strip->show();
    EXPECT_EQ(Button("DeviceState")->text(), QStringLiteral("Device, 12 s old\nready, scan"));
    strip->showMinimized();
    clock.Advance(12s);
    EXPECT_EQ(Button("DeviceState")->text(), QStringLiteral("Device, 12 s old\nready, scan"));
    strip->showNormal();
    EXPECT_EQ(Button("DeviceState")->text(), QStringLiteral("Device, 24 s old\nready, scan"));
}

TEST_F(StatusStripTest, ClicksLeadToTheCause) {
    for (const char* name : {"ServerState", "DeviceState", "MasterState", "SuppressionState", "OwnState"})
        Click(name);
    EXPECT_THAT(pages, ElementsAre("Status", "Status", "MpxORVs", "Suppression", "MyMpxORV"));
    server.Flag("Status/Online", false);
    server.Flag("Command/ShallBeConnected", false);
    Click("DeviceState");
    EXPECT_EQ(pages.back(), "Commands");
}

TEST_F(StatusStripTest, KeysLeadToTheCauseToo) {
    Button("ServerState")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), Button("MasterState"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_THAT(pages, ElementsAre("MpxORVs"));
}

TEST_F(StatusStripTest, TellsAReaderWhatTheColourSays) {
    server.Suppress(2, 1, {}, {121.5e6});
    EXPECT_THAT(Button("SuppressionState")->accessibleName().toStdString(),
                HasSubstr("Suppression: 1 NOT SUPERVISED, 1/2 (needs action)"));
    EXPECT_THAT(Button("SuppressionState")->toolTip().toStdString(), HasSubstr("Not supervised: 121.5 MHz"));
}

struct LookRow {
    const char* name;
    bool isDark;
};

class StatusLooks : public StatusStripTest, public testing::WithParamInterface<LookRow> {
  protected:
    QRgb Colour() const { return Button("DeviceState")->palette().color(QPalette::ButtonText).rgb(); }
    qint64 Icon() const { return Button("DeviceState")->icon().pixmap(16).toImage().isNull() ? 0 : 1; }
};

TEST_P(StatusLooks, DifferInColourAndShape) {
    colours::Apply(GetParam().isDark);
    std::set<QRgb> seen;
    std::vector<QImage> shapes;
    const auto look = [&] {
        seen.insert(Colour());
        const QImage shape = Button("DeviceState")->icon().pixmap(16).toImage();
        for (const QImage& other : shapes)
            EXPECT_NE(shape, other);
        shapes.push_back(shape);
        // Readable on what it stands on.
        const int difference =
            QColor(Colour()).lightness() - strip->palette().color(QPalette::Window).lightness();
        EXPECT_GT(qAbs(difference), 70);
    };
    look();
    server.Key("Status/BootState", BootSelfTest);
    look();
    server.Key("Status/BootState", BootFailed);
    look();
    Be(EState::Lost);
    look();
    EXPECT_EQ(seen.size(), 4U);
}

INSTANTIATE_TEST_SUITE_P(, StatusLooks, testing::Values(LookRow{"Light", false}, LookRow{"Dark", true}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(StatusStripTest, SaysLessWhereRoomIsShortAndCutsNoWord) {
    const QDateTime today = QDateTime::currentDateTimeUtc();
    server.Text("Status/Master/Name", "Console");
    server.Text("Status/Master/Since", today.toString(Qt::ISODateWithMs).toUtf8().constData());
    server.Suppress(2, 1, {118.4e6}, {121.5e6});
    UseFontOfADesktop();
    strip->resize(1024, strip->height());
    QCoreApplication::processEvents();
    const QString wide = Button("MasterState")->text();
    EXPECT_TRUE(wide.contains(QLatin1String("since"))) << wide.toStdString();
    ExpectNoWordCutDownTo(800);
    EXPECT_FALSE(Button("MasterState")->text().contains(QLatin1String("since")));
    EXPECT_EQ(Button("SuppressionState")->text(), QStringLiteral("Suppression\n1 NOT SUPERVISED"));
    EXPECT_THAT(Button("MasterState")->accessibleName().toStdString(), HasSubstr("since"));
}

// On a night shift, and where a server is left alone for months.
TEST_F(StatusStripTest, CutsNoWordOfWhatBeganOnAnotherDay) {
    server.Text("Status/Master/Name", "Console");
    const QDateTime noon(QDate(2026, 1, 22), QTime(12, 3, 21));  // on that day in every time zone
    server.Text("Status/Master/Since", noon.toUTC().toString(Qt::ISODateWithMs).toUtf8().constData());
    UseFontOfADesktop();
    ExpectNoWordCutDownTo(800);
    EXPECT_THAT(Button("MasterState")->accessibleName().toStdString(), HasSubstr("22"));
}

TEST_F(StatusStripTest, FitsANarrowWindow) {
    server.Text("Config/DeviceName", "a name that is much longer than there is room for & more");
    const int height = strip->sizeHint().height();
    strip->resize(600, height);
    QCoreApplication::processEvents();
    EXPECT_LE(strip->minimumSizeHint().width(), 600);
    EXPECT_EQ(strip->width(), 600);
    EXPECT_TRUE(Button("ServerState")->text().endsWith(QChar(0x2026)));
    EXPECT_THAT(Button("ServerState")->accessibleName().toStdString(), HasSubstr("a name that is much"));
}

}  // namespace
