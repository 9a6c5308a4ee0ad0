// SPDX-License-Identifier: Apache-2.0
#include <platform/config/cfgcenter.h>

#include <platform/config/store/cfgsection.h>
#include <platform/config/store/cfgstore.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QStandardPaths>

namespace {

/// Others need a few milliseconds, and a window that does not close, or a server that does not answer, is
/// worse than a change that is kept for later.
constexpr std::chrono::milliseconds DefaultPatience(1000);

}  // namespace

CfgCenter::CfgCenter() : m_patience(DefaultPatience) {}

CfgCenter::~CfgCenter() = default;

CfgCenter& CfgCenter::Instance() {
    static auto& center = *new CfgCenter;  // never destroyed: statics that go later may still ask it
    return center;
}

QString CfgCenter::GetAppName() {
    const QString& name = Instance().m_appName;
    return name.isEmpty() ? QCoreApplication::applicationName() : name;
}

void CfgCenter::SetAppName(const QString& name) {
    Instance().m_appName = name;
}

void CfgCenter::SetStorePath(const QString& file) {
    m_storePath = file;
    m_store.reset();
}

QString CfgCenter::GetStorePath() const {
    if (!m_storePath.isEmpty()) return m_storePath;
    const QString directory = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return QStringLiteral("%1/MultiChannelServer/%2.ini").arg(directory, GetAppName());
}

void CfgCenter::SetPatience(std::chrono::milliseconds patience) {
    m_patience = patience;
    if (m_store) m_store->SetPatience(patience);
}

CfgStore& CfgCenter::OpenStore() {
    const QString path = GetStorePath();
    if (m_store && m_store->GetPath() == path)
        m_store->TryAgain();
    else
        m_store = std::make_shared<CfgStore>(path, m_patience);
    if (!m_applicationEnd) m_applicationEnd.emplace([this] { End(); });
    return *m_store;
}

// The store commits what nobody committed while there still is all that it needs for that.
void CfgCenter::End() {
    m_store.reset();
    m_applicationEnd.reset();
}

ICfg* CfgCenter::OpenRoot() {
    OpenStore();
    return new CfgSection(m_store, QString());
}

bool CfgCenter::HoldStore(QString* error) {
    return OpenStore().Hold(error);
}

QStringList CfgCenter::LookForEdits() {
    return m_store ? m_store->LookForEdits() : QStringList();
}

void CfgCenter::Refresh() {
    OpenStore().Refresh();
}

std::vector<CfgDamage> CfgCenter::TakeDamages() {
    return m_store ? m_store->TakeDamages() : std::vector<CfgDamage>();
}

QString CfgCenter::KeepCopy() {
    return m_store ? m_store->KeepCopy() : QString();
}

QString CfgCenter::Finish() {
    if (!m_store || m_store->CommitNow() || !m_store->HasUnstoredKeys()) return QString();
    return m_store->GetProblem(QStringLiteral("the last changes are lost"));
}
