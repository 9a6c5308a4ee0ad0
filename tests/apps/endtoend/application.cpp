// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/endtoend/application.h>

namespace {

constexpr const char* Configuration = R"([General]
ConnectOnStartup=false
DeviceName=South mast
NumberOfFreqChannels=7

[StaticMpxORVs]
Names=Tower
Tower\Comment=ATC position 2
Tower\MayCal=true
)";

}  // namespace

Application::Application() {
    client.AddObserver(&observer);
    client.SetUniqueMpxORVName(QStringLiteral("Receiver"));
    server.WriteFile(QStringLiteral("mcserver.ini"), Configuration);
}

Application::~Application() {
    client.DeleteObserver(&observer);
}

void Application::StartServer() {
    ASSERT_NO_FATAL_FAILURE(server.Start());
    ASSERT_TRUE(outside.ConnectToServer(QStringLiteral("127.0.0.1"), server.Port()));
    ASSERT_TRUE(outside.ConnectToMCSControlTree(QStringLiteral("/Outside"), StatusSegment));
    ASSERT_TRUE(WaitUntil([this] { return outside.IsMCSControlTreeConnected(); }));
    outsideStatus = std::make_unique<MCSStatus>(QStringLiteral("/Outside/Status"));
}

void Application::Connect(EMCSControlTreeSegments segments) {
    ASSERT_TRUE(client.ConnectToServer(QStringLiteral("127.0.0.1"), server.Port()));
    ASSERT_TRUE(client.ConnectToMCSControlTree(QStringLiteral("/Server"), segments));
    ASSERT_TRUE(IsTold(serverclientcode::ControlTreeConnected));
}

bool Application::IsTold(TChangeCode code, int times) {
    return WaitUntil([&] { return observer.Count(code) >= times; });
}

std::vector<TChangeCode> Application::TakeCodes() {
    std::vector<TChangeCode> codes = observer.Codes();
    observer.Clear();
    return codes;
}

QString Application::Ask(const QString& path, const std::function<void()>& request) {
    auto* const answer = WaitFor<values::Value<QString>>(path + QStringLiteral("/Request/Answer"));
    if (answer == nullptr) return QString();
    RecordingObserver answered;
    answer->AddObserver(&answered);
    request();
    EXPECT_TRUE(WaitUntil([&] { return answered.Count(changecode::ContentChanged) > 0; }));
    answer->DeleteObserver(&answered);
    return answer->GetValue();
}

QString Application::Tune(const QString& path, double hz) {
    auto* const frequency =
        WaitFor<values::ValueNumeric<double>>(path + QStringLiteral("/Request/Frequency"));
    if (frequency == nullptr) return QString();
    return Ask(path, [&] { frequency->SetValue(hz); });
}

QString Application::Press(const QString& path, const char* button) {
    auto* const pressed =
        WaitFor<values::Value<bool>>(path + QStringLiteral("/Request/") + QLatin1String(button));
    if (pressed == nullptr) return QString();
    return Ask(path, [&] { pressed->SetValue(true); });
}

bool Application::HasDynamicMpxOrvs(int count) {
    return WaitUntil([&] { return outsideStatus->GetDynamicMpxORVs() == count; });
}

bool Application::IsReady() {
    return WaitUntil([this] { return outsideStatus->GetBootState() == BootReady; });
}
