// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/serverprogram.h>

#include <apps/common/descriptorlimit.h>
#include <apps/common/safetext.h>
#include <apps/common/terminal.h>
#include <apps/mcserver/device/simulatedorv.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>
#include <platform/vtclient/vttokenhash.h>

#include <algorithm>
#include <memory>

namespace {

/// Those that are no clients: the server's own files, data modules, and who has not said hello yet. Where
/// there are few, one in so many, but no fewer than the server itself needs.
constexpr int OtherDescriptors = 512;
constexpr int ShareOfOthers = 4;
constexpr int OwnDescriptors = 64;

/// Whole lines, out at once, so that whoever reads them through a pipe is up to date. The server goes on if
/// nobody does. Names that peers chose are in some of them.
void PrintLine(const QString& line) {
    terminal::PutOutput((safetext::Escaped(line) + QLatin1Char('\n')).toUtf8());
}

}  // namespace

ServerProgram::ServerProgram(const ServerOptions& options)
    : m_options(options),
      m_peerTraces(m_clock),
      m_device(MakeDevice()),
      m_server(*m_device, m_clock, PrintLine),
      m_configWatch(m_server.GetLog(), m_clock),
      m_access(m_server.GetMpxOrvs(), m_server.GetLog(), m_clock),
      m_eventHistory(m_server.GetLog().GetJournal()),
      m_listener(m_access),
      m_station(m_listener, m_server.GetLog()) {
    m_listener.SetHistory(&m_eventHistory);
}

std::unique_ptr<IOrvDevice> ServerProgram::MakeDevice() {
    std::unique_ptr<IOrvDevice> device = m_options.device.Make(m_clock, &m_deviceFault);
    if (device == nullptr) device = std::make_unique<SimulatedOrv>(m_clock);
    return device;
}

bool ServerProgram::Start(QString* error) {
    if (!m_deviceFault.isEmpty()) {
        *error = QStringLiteral("--device: %1").arg(m_deviceFault);
        return false;
    }
    if (!m_options.scriptFile.isEmpty() && !m_script.Load(m_options.scriptFile, error)) return false;
    VtAccessFile file;
    if (!ReadAccessFile(&file, error)) return false;
    if (!m_options.accessFile.isEmpty()) m_access.UseFile(file);
    m_access.SetTextLimits(m_options.textLimits);
    m_options.textLimits.Show();
    CfgCenter::SetAppName(m_options.name);
    CfgCenter::Instance().SetStorePath(m_options.configFile);
    if (!CfgCenter::Instance().HoldStore(error)) return false;
    // Before anybody can come in, since it takes some time.
    if (!m_options.nats.servers.empty() && !m_station.Start(m_options.nats, m_options.station, error))
        return false;
    if (!Listen(error)) return false;
    m_server.Start(std::unique_ptr<ICfg>(CfgCenter::Instance().OpenRoot()));
    m_configWatch.Start();
    if (auto* const simulated = dynamic_cast<SimulatedOrv*>(m_device.get())) simulated->RunScript(m_script);
    const QString where = ListenAddress{m_listener.GetAddress(), m_listener.GetPort()}.ToText();
    PrintLine(QStringLiteral("listening on %1").arg(where));
    m_notifier.Ready(QStringLiteral("listening on %1").arg(where));
    if (CountPlaces() < m_options.maxSessions)
        m_server.GetLog().Write({ECode::FewPlaces,
                                 {CodedText::Number(CountPlaces()), CodedText::Number(m_options.maxSessions),
                                  CodedText::Number(GetDescriptorLimit())}});
    ShowThatItRuns();
    return true;
}

int ServerProgram::CountPlaces() const {
    const int limit = GetDescriptorLimit();
    const int others = std::clamp(limit / ShareOfOthers, OwnDescriptors, OtherDescriptors);
    return std::min(m_options.maxSessions, std::max(1, limit - others));
}

void ServerProgram::ShowThatItRuns() {
    const std::chrono::milliseconds time = m_notifier.GetWatchdogTime();
    if (time == time.zero()) return;
    m_notifier.Alive();
    m_clock.After(std::max(time / 2, std::chrono::milliseconds(1)), [this] { ShowThatItRuns(); });
}

bool ServerProgram::ReadAccessFile(VtAccessFile* file, QString* error) const {
    return m_options.accessFile.isEmpty() || file->Load(m_options.accessFile, error);
}

void ServerProgram::ReadFilesAnew() {
    VtAccessFile file;
    QString error;
    if (!ReadAccessFile(&file, &error) || !m_listener.ReadCertificates(&error))
        return m_server.GetLog().Write({ECode::FilesStay, {error}});
    m_server.GetLog().Write(ECode::FilesReadAnew);
    if (m_options.accessFile.isEmpty()) return;
    for (const int session : m_access.UseFile(file))
        m_listener.EndSession(session, QStringLiteral("what the access file says of the user has changed"));
    m_listener.ChangeRoadKeys();  // who has left meanwhile may have lost a right, too
}

bool ServerProgram::Listen(QString* error) {
    VtServerOptions options;
    options.application = m_options.name;
    options.address = m_options.listen.address;
    options.port = m_options.listen.port;
    options.certificateFile = m_options.certificateFile;
    options.privateKeyFile = m_options.privateKeyFile;
    options.caFile = m_options.caFile;
    options.isInsecure = m_options.isInsecure;
    options.maxSessions = CountPlaces();
    options.memoryBytes = m_options.memoryMiB * qint64(1024 * 1024);
    return m_listener.Listen(options, error);
}

void ServerProgram::Stop() {
    m_notifier.Stopping();
    m_server.Stop();
    m_configWatch.Look();  // at what the last save came across
    m_configWatch.Stop();
    m_listener.Close(QStringLiteral("the server ends"));
    m_station.Stop();
}

QString ServerProgram::MakeToken(const QString& user, const QString& role) {
    const QString token = VtTokenHash::CreateToken();
    return QStringLiteral("token: %1\naccess file: %2\n")
        .arg(token, VtAccessFile::UserLine(user, role, VtTokenHash::Of(token)));
}
