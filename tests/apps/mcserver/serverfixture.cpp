// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mcserver/serverfixture.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>

#include <tests/devicecontrol/multichannelserver/common/fakecfg.h>

#include <QtCore/QFile>

namespace {

QString Below(const QString& base, const QString& name, const QString& below) {
    const QString path = base + QLatin1Char('/') + name;
    return below.isEmpty() ? path : path + QLatin1Char('/') + below;
}

}  // namespace

ServerTest::ServerTest() {
    CfgCenter::Instance().SetStorePath(ConfigPath());
    m_device = std::make_unique<SimulatedOrv>(m_clock);
    Make(*m_device);
}

ServerTest::~ServerTest() {
    m_access.reset();
    m_server.reset();
    CfgCenter::Instance().SetStorePath(QString());
}

void ServerTest::Own(IOrvDevice& device) {
    m_access.reset();
    m_server.reset();
    Make(device);
}

void ServerTest::Make(IOrvDevice& device) {
    m_server = std::make_unique<McsServer>(device, m_clock, [this](const QString& line) { m_log << line; });
    m_access = std::make_unique<ServerAccess>(m_server->GetMpxOrvs(), m_server->GetLog(), m_clock);
}

void ServerTest::Configure(const QByteArray& ini) {
    KeepInFile();
    QFile file(ConfigPath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(ini), ini.size());
}

void ServerTest::Start(bool untilReady) {
    m_server->Start(m_isInFile ? std::unique_ptr<ICfg>(CfgCenter::Instance().OpenRoot())
                               : std::unique_ptr<ICfg>(std::make_unique<FakeCfg>()));
    if (untilReady) m_clock.Advance(SimulatedOrv::BootTime);
    m_log.clear();
}

void ServerTest::Restart() {
    m_access.reset();
    m_server.reset();
    m_device.reset();
    for (values::TreeItem* item : m_tree.GetRoot()->GetTreeItems())
        m_tree.Delete(item);
    CfgCenter::Instance().SetStorePath(ConfigPath());
    m_device = std::make_unique<SimulatedOrv>(m_clock);
    Make(*m_device);
}

QString ServerTest::Stored(const QString& key) const {
    CfgCenter::Instance().SetStorePath(ConfigPath());
    const std::unique_ptr<ICfg> cfg(CfgCenter::Instance().OpenRoot());
    return cfg->ReadString(key, QStringLiteral("(absent)"));
}

VtPeer ServerTest::Connect(const QString& application, const QString& role) {
    VtPeer peer;
    peer.session = ++m_sessions;
    peer.application = application;
    peer.machine = QStringLiteral("hostA");
    peer.address = QStringLiteral("127.0.0.1:%1").arg(50000 + peer.session);
    peer.isLoopback = true;
    QString reason;
    EXPECT_TRUE(m_access->Admit(peer, QString(), QString(), &reason));
    peer.role = role;
    m_access->SessionStarted(peer);
    return peer;
}

void ServerTest::Disconnect(const VtPeer& peer) {
    m_access->SessionEnded(peer);
    m_clock.Turn();
}

void ServerTest::Use(const VtPeer& peer, const QString& name) {
    m_access->ProvideNode(peer, Dynamic(name));
}

void ServerTest::UseStatic(const VtPeer& peer, const QString& name) {
    m_access->ProvideNode(peer, Static(name));
}

void ServerTest::Release(const VtPeer& peer, const QString& name) {
    m_access->NodeReleased(peer, Dynamic(name));
    m_clock.Turn();
}

QString ServerTest::Push(const VtPeer& peer, const QString& mpxOrv, const QString& button) {
    return Write<values::Value<bool>>(peer, Dynamic(mpxOrv, QStringLiteral("Request/") + button), true);
}

QString ServerTest::Tune(const VtPeer& peer, const QString& mpxOrv, double hz) {
    return Write<values::ValueNumeric<double>>(peer, Dynamic(mpxOrv, QStringLiteral("Request/Frequency")),
                                               hz);
}

QString ServerTest::Switch(const VtPeer& peer, const QString& mpxOrv, const QString& policy, bool on) {
    return Write<values::Value<bool>>(peer, Dynamic(mpxOrv, QStringLiteral("Policy/") + policy), on);
}

QString ServerTest::Dynamic(const QString& name, const QString& below) {
    return Below(QStringLiteral("/MultiChannelServer/DynamicMpxORVs"), name, below);
}

QString ServerTest::Static(const QString& name, const QString& below) {
    return Below(QStringLiteral("/MultiChannelServer/StaticMpxORVs"), name, below);
}

bool ServerTest::Exists(const QString& path) {
    return values::Tree::Instance()->FindItem(path) != nullptr;
}

bool ServerTest::Flag(const QString& path) {
    const auto* const value = values::FindValue<values::Value<bool>>(path, nullptr, nullptr);
    EXPECT_NE(value, nullptr) << path.toStdString();
    return value != nullptr && value->GetValue();
}

QString ServerTest::Text(const QString& path) {
    const auto* const value = values::FindValue<values::Value<QString>>(path, nullptr, nullptr);
    EXPECT_NE(value, nullptr) << path.toStdString();
    return value != nullptr ? value->GetValue() : QString();
}

double ServerTest::Number(const QString& path) {
    const auto* const value = values::FindValue<values::ValueNumeric<double>>(path, nullptr, nullptr);
    EXPECT_NE(value, nullptr) << path.toStdString();
    return value != nullptr ? value->GetValue() : 0.0;
}

int ServerTest::Count(const QString& statusKey) {
    const QString path = QStringLiteral("/MultiChannelServer/Status/") + statusKey;
    const auto* const value = values::FindValue<values::ValueNumeric<int>>(path, nullptr, nullptr);
    EXPECT_NE(value, nullptr) << path.toStdString();
    return value != nullptr ? value->GetValue() : -1;
}

QString ServerTest::Choice(const QString& path) {
    const auto* const value = values::FindValue<values::ValueSelection>(path, nullptr, nullptr);
    EXPECT_NE(value, nullptr) << path.toStdString();
    return value != nullptr ? value->GetCurrentText() : QString();
}

QString ServerTest::StatusText(const QString& key) {
    return Text(QStringLiteral("/MultiChannelServer/Status/") + key);
}

QString ServerTest::Answer(const QString& mpxOrv) {
    return Text(Dynamic(mpxOrv, QStringLiteral("Request/Answer")));
}

QStringList ServerTest::ClientsOf(const QString& mpxOrvPath) {
    const auto* const value = values::FindValue<values::ValueSelection>(
        mpxOrvPath + QStringLiteral("/Status/ConnectedClients"), nullptr, nullptr);
    QStringList names;
    for (int i = 0; value != nullptr && i < value->Count(); ++i)
        names << value->GetItemAt(i)->GetName();
    return names;
}

void ServerTest::Set(const QString& path, bool on) {
    auto* const value = values::FindValue<values::Value<bool>>(path, nullptr, nullptr);
    ASSERT_NE(value, nullptr) << path.toStdString();
    value->SetValue(on, nullptr);
}

QStringList ServerTest::TakeLog() {
    QStringList lines;
    lines.swap(m_log);
    return lines;
}
