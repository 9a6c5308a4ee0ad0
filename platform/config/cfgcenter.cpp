// SPDX-License-Identifier: Apache-2.0
#include <platform/config/cfgcenter.h>

#include <platform/config/cfgsection.h>
#include <platform/config/cfgstore.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QStandardPaths>

CfgCenter::CfgCenter() {
    // The store commits what nobody committed while there still is all that it needs for that.
    qAddPostRoutine([] { Instance().m_store.reset(); });
}

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

ICfg* CfgCenter::OpenRoot() {
    const QString path = GetStorePath();
    if (!m_store || m_store->GetPath() != path) m_store = std::make_shared<CfgStore>(path);
    return new CfgSection(m_store, QString());
}
