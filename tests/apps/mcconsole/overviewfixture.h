// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/tune/frequencybook.h>
#include <apps/mcconsole/tune/tuning.h>

#include <tests/apps/mcconsole/situationfixture.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/tracerecorder.h>

#include <vector>

/// An operator's MpxORV with the requests that it may make, on a server that the test plays.
class OverviewTest : public SituationTest {
  protected:
    OverviewTest() : tuning(clock) {
        server.MakeUsual();
        MakeOwn();
        Be(EState::Connected);
        tuning.Bind(ServerTree::OwnPath());
    }

    ~OverviewTest() override { Frequency()->DeleteObserver(&requests); }

    void MakeOwn() {
        server.Tune(0);
        server.Number("DynamicMpxORVs/Console/Request/Frequency", 30e6);
        server.Text("DynamicMpxORVs/Console/Request/Answer", "");
        server.Flag("DynamicMpxORVs/Console/Request/BecomeMaster", false);
        server.Flag("DynamicMpxORVs/Console/Status/IsMaster", false);
        Frequency()->SetMin(3e5);
        Frequency()->SetMax(3e9);
        Frequency()->SetDelivery(values::EDelivery::EveryChange);
        Answer()->SetDelivery(values::EDelivery::EveryChange);
        Frequency()->AddObserver(&requests);
    }
    values::ValueNumeric<double>* Frequency() {
        return server.Find<values::ValueNumeric<double>>("DynamicMpxORVs/Console/Request/Frequency");
    }
    values::Value<QString>* Answer() {
        return server.Find<values::Value<QString>>("DynamicMpxORVs/Console/Request/Answer");
    }
    bool AsksToBeMaster() {
        return server.Find<values::Value<bool>>("DynamicMpxORVs/Console/Request/BecomeMaster")->GetValue();
    }
    void BeMaster(bool isMaster) { server.Flag("DynamicMpxORVs/Console/Status/IsMaster", isMaster); }
    void LoseDevice() {
        server.Flag("Status/Online", false);
        server.Tune(0);
        BeMaster(false);
    }
    void BringDeviceBack() {
        server.Flag("Status/Online", true);
        server.Key("Status/BootState", BootReady);
    }

    // The server.
    void Grant() {
        granted = Frequency()->GetValue();
        server.Tune(granted);
        Answer()->SetValue(QStringLiteral("done: tuned"));
    }
    void Refuse(const char* reason) {
        Frequency()->SetValue(granted, &requests);
        Answer()->SetValue(QStringLiteral("refused: ") + QString::fromLatin1(reason));
    }
    // The operator.
    void Want(const char* text) { tuning.Enter(QString::fromLatin1(text)); }
    bool Tune(const char* text) {
        Want(text);
        return tuning.Tune();
    }
    /// In MHz, by whoever asked.
    std::vector<double> Asked() const { return m_asked; }

    double granted = 30e6;

  private:
    std::vector<double> m_asked;

  protected:
    const TraceRecorder traces;
    RecordingObserver requests{[this](Observable*, TChangeCode code) {
        if (code == changecode::ContentChanged) m_asked.push_back(Frequency()->GetValue() / 1e6);
    }};
    Tuning tuning;
    FrequencyBook book;
};
