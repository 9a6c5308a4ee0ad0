// SPDX-License-Identifier: Apache-2.0
#include <apps/common/codedtext.h>
#include <apps/mcserver/log/peertext.h>

#include <devicecontrol/multichannelserver/common/mcsmpxorvstatus.h>

#include <tests/apps/mcserver/requestsfixture.h>
#include <tests/support/recordingobserver.h>

#include <utility>

using namespace std::chrono_literals;

namespace {

/// What the status tells in numbers and moments, for lists and lines that cannot read sentences.
class MpxOrvFactsTest : public RequestsTest {
  protected:
    double Tuned() { return Number(Dynamic(m_name, QStringLiteral("Status/TunedFrequency"))); }
    QString Since() { return Text(Dynamic(m_name, QStringLiteral("Status/TunedSince"))); }
    QString SwitchedBy() { return Text(Dynamic(m_name, QStringLiteral("Status/BlankingSwitchedBy"))); }
    QString SwitchedSince() { return Text(Dynamic(m_name, QStringLiteral("Status/BlankingSwitchedSince"))); }
    static QString Master() { return StatusText(QStringLiteral("Master/Name")); }
    static std::pair<double, double> MasterRange() {
        const QString path = QStringLiteral("/MultiChannelServer/Status/Master/Range");
        return {Number(path + QLatin1String("From")), Number(path + QLatin1String("To"))};
    }
    static QString MasterSince() { return StatusText(QStringLiteral("Master/Since")); }

    static constexpr const char* Ready = "2026-11-22T14:03:22.500Z";  // when it was made, after the boot
};

TEST_F(MpxOrvFactsTest, ANewOneIsTunedToNothingAndItsBlankingWasNeverSwitched) {
    EXPECT_EQ(Tuned(), 0.0);
    EXPECT_EQ(Since(), QString());
    EXPECT_EQ(SwitchedBy(), QString());
    EXPECT_EQ(SwitchedSince(), QString());
}

TEST_F(MpxOrvFactsTest, TheFrequencyIsTheOneThatItHasSinceItHasIt) {
    Tune(m_peer, m_name, 145e6);
    EXPECT_EQ(Tuned(), 145e6);
    EXPECT_EQ(Since(), QLatin1String(Ready));
    m_clock.Advance(60000ms);
    Tune(m_peer, m_name, 145e6);
    EXPECT_EQ(Since(), QLatin1String(Ready)) << "asked for once more, it is the same";
    Tune(m_peer, m_name, 121.5e6);
    EXPECT_EQ(Tuned(), 121.5e6);
    EXPECT_EQ(Since(), QStringLiteral("2026-11-22T14:04:22.500Z"));
}

TEST_F(MpxOrvFactsTest, WhatWasRefusedDoesNotShow) {
    HaveOnly(m_name, {});
    Tune(m_peer, m_name, 145e6);
    EXPECT_EQ(Tuned(), 0.0);
    EXPECT_EQ(Since(), QString());
}

TEST_F(MpxOrvFactsTest, WithoutTheDeviceNothingIsTuned) {
    Tune(m_peer, m_name, 145e6);
    Set(QStringLiteral("/MultiChannelServer/Command/ShallBeConnected"), false);
    EXPECT_EQ(Tuned(), 0.0);
    EXPECT_EQ(Since(), QString());
}

TEST_F(MpxOrvFactsTest, WhoeverIsToldOfTheFrequencyFindsItsMoment) {
    auto* const frequency = values::FindValue<values::ValueNumeric<double>>(
        Dynamic(m_name, QStringLiteral("Status/TunedFrequency")), nullptr, nullptr);
    ASSERT_NE(frequency, nullptr);
    QString seen;
    RecordingObserver observer;
    observer.React([&](Observable*, TChangeCode) { seen = Since(); });
    frequency->AddObserver(&observer);
    Tune(m_peer, m_name, 145e6);
    frequency->DeleteObserver(&observer);
    EXPECT_EQ(seen, QLatin1String(Ready));
}

TEST_F(MpxOrvFactsTest, WhoSwitchedTheBlankingIsKept) {
    const VtPeer other = Connect(QStringLiteral("Console"));
    EXPECT_EQ(Write<values::Value<bool>>(other, Dynamic(m_name, QStringLiteral("Blanking")), false),
              QString());
    EXPECT_EQ(SwitchedBy(), peertext::Name(other));
    EXPECT_EQ(SwitchedSince(), QLatin1String(Ready));
    m_clock.Advance(1000ms);
    Set(Dynamic(m_name, QStringLiteral("Blanking")), true);  // as the server's own window does
    EXPECT_EQ(SwitchedBy(), QString()) << "nobody from outside";
    EXPECT_EQ(SwitchedSince(), QStringLiteral("2026-11-22T14:03:23.500Z"));
}

TEST_F(MpxOrvFactsTest, TheMasterHasItsNameAndItsMomentInTheStatus) {
    EXPECT_EQ(Master(), QString());
    EXPECT_EQ(MasterSince(), QString());
    Push(m_peer, m_name, QStringLiteral("BecomeMaster"));
    EXPECT_EQ(Master(), m_name);
    EXPECT_EQ(MasterSince(), QLatin1String(Ready));
    Push(m_peer, m_name, QStringLiteral("BecomeMaster"));
    EXPECT_EQ(Master(), QString());
    EXPECT_EQ(MasterSince(), QString());
}

TEST_F(MpxOrvFactsTest, AMasterThatGoesIsMasterNoMore) {
    Push(m_peer, m_name, QStringLiteral("BecomeMaster"));
    Tune(m_peer, m_name, 145e6);
    Disconnect(m_peer);
    EXPECT_EQ(Master(), QString());
    EXPECT_EQ(MasterRange(), std::make_pair(0.0, 0.0));
}

TEST_F(MpxOrvFactsTest, WhatTheMasterReceivesIsTheDevicesBandwidthAroundItsFrequency) {
    const auto none = std::make_pair(0.0, 0.0);
    Tune(m_peer, m_name, 145e6);
    EXPECT_EQ(MasterRange(), none) << "who is no master has none";
    Push(m_peer, m_name, QStringLiteral("BecomeMaster"));
    EXPECT_EQ(MasterRange(), std::make_pair(135e6, 155e6));
    Tune(m_peer, m_name, 1e6);
    EXPECT_EQ(MasterRange(), std::make_pair(3e5, 11e6)) << "what the device cannot be tuned to is left out";
    Push(m_peer, m_name, QStringLiteral("BecomeMaster"));
    EXPECT_EQ(MasterRange(), none);
}

TEST_F(MpxOrvFactsTest, AMasterThatLosesItsFrequencyReceivesNothing) {
    Push(m_peer, m_name, QStringLiteral("BecomeMaster"));
    Tune(m_peer, m_name, 145e6);
    Set(QStringLiteral("/MultiChannelServer/Command/ShallBeConnected"), false);
    EXPECT_EQ(MasterRange(), std::make_pair(0.0, 0.0));
}

TEST_F(MpxOrvFactsTest, WhyItsClientsMayNotSwitchItsPoliciesIsToldBeforehand) {
    const auto locked = [](const QString& name) {
        return CodedText::FromJsonText(Text(Dynamic(name, QStringLiteral("Status/PoliciesLocked"))));
    };
    ASSERT_TRUE(locked(m_name));
    EXPECT_EQ(locked(m_name)->GetCode(), ECode::NotPoliciesInUse);
    EXPECT_EQ(locked(m_name)->ToEnglish(), Switch(m_peer, m_name, QStringLiteral("MayCal"), true))
        << "as it is refused";
    const VtPeer viewer = Connect(QStringLiteral("Viewer"), QStringLiteral("client"));
    Use(viewer, QStringLiteral("Other"));
    EXPECT_EQ(locked(QStringLiteral("Other"))->GetCode(), ECode::OnlyOperatorsSwitch);
}

TEST_F(MpxOrvFactsTest, WhoMaySwitchThePoliciesOfItsOwnIsToldNothing) {
    QString error;
    VtAccessFile file;
    ASSERT_TRUE(
        file.Parse("allow operator read /\n"
                   "allow operator write /MultiChannelServer\n"
                   "allow operator create /MultiChannelServer\n"
                   "allow operator own-policies /MultiChannelServer\n",
                   QStringLiteral("access"), &error))
        << error.toStdString();
    m_access->UseFile(file);
    VtPeer peer = m_peer;
    peer.session = 77;
    m_access->SessionStarted(peer);
    Use(peer, QStringLiteral("Free"));
    EXPECT_EQ(Text(Dynamic(QStringLiteral("Free"), QStringLiteral("Status/PoliciesLocked"))), QString());
}

TEST_F(MpxOrvFactsTest, NobodyWritesThem) {
    for (const char* const name :
         {"TunedFrequency", "TunedSince", "BlankingSwitchedBy", "BlankingSwitchedSince"}) {
        QString reason;
        EXPECT_FALSE(m_access->MayWrite(
            m_peer, Dynamic(m_name, QLatin1String("Status/") + QLatin1String(name)), &reason))
            << name;
    }
    EXPECT_FALSE(
        m_access->MayWrite(m_peer, QStringLiteral("/MultiChannelServer/Status/Master/Name"), nullptr));
}

TEST_F(MpxOrvFactsTest, TheLibrarysOwnStatusDoesNotMindThem) {
    MCSMpxORVStatus status(Dynamic(m_name, QStringLiteral("Status")));
    RecordingObserver observer;
    status.AddObserver(&observer);
    Set(Dynamic(m_name, QStringLiteral("Blanking")), false);
    EXPECT_TRUE(observer.Events().empty());
    EXPECT_EQ(status.GetName(), m_name);
    status.DeleteObserver(&observer);
}

}  // namespace
