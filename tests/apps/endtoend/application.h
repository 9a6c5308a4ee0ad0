// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/mcsstatus.h>
#include <devicecontrol/multichannelserver/common/mpxorvhandle.h>
#include <devicecontrol/multichannelserver/common/multichannelserverclient.h>

#include <platform/values/tree.h>
#include <platform/values/valueaccess.h>

#include <tests/apps/mcserver/serverprocess.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/waituntil.h>

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <vector>

/// A client application, which is this process, and the server, which is another one. Whoever looks from
/// outside sees the server's status below "/Outside".
class Application : public testing::Test {
  protected:
    /// The server has a device that it does not hold yet, seven channels, and the static MpxORV "Tower".
    Application();
    ~Application() override;

    void StartServer();
    /// Connects to the server, and waits for all \a segments below "/Server".
    void Connect(EMCSControlTreeSegments segments);

    /// Waits until the client has told \a code \a times times in all.
    bool IsTold(TChangeCode code, int times = 1);
    /// What the client has told since this was asked last.
    std::vector<TChangeCode> TakeCodes();

    template <class V>
    static V* Find(const QString& path) {
        return values::FindValue<V>(path, nullptr, nullptr);
    }
    /// Waits for the value at \a path. Null, and a failure, if it does not come.
    template <class V>
    static V* WaitFor(const QString& path) {
        EXPECT_TRUE(WaitUntil([&] { return Find<V>(path) != nullptr; })) << path.toStdString();
        return Find<V>(path);
    }
    /// Asks the MpxORV at \a path for a frequency, in Hz. \return how the server answered.
    QString Tune(const QString& path, double hz);
    /// The same for the request behind a push button.
    QString Press(const QString& path, const char* button);
    /// Waits until the server shows that many dynamic MpxORVs to who looks from outside.
    bool HasDynamicMpxOrvs(int count);
    /// Waits until the device has booted.
    bool IsReady();

    values::Tree tree;
    ServerProcess server;
    RecordingObserver observer;
    MultiChannelServerClient client;
    MultiChannelServerClient outside;
    std::unique_ptr<MCSStatus> outsideStatus;

  private:
    QString Ask(const QString& path, const std::function<void()>& request);
};
