// SPDX-License-Identifier: Apache-2.0
#include <platform/config/cfgsection.h>

#include <platform/config/cfgstore.h>

#include <utility>

CfgSection::CfgSection(std::shared_ptr<CfgStore> store, QString prefix)
    : m_store(std::move(store)), m_prefix(std::move(prefix)) {}

CfgSection::~CfgSection() = default;

QString CfgSection::ReadString(const QString& key, const QString& fallback) {
    return m_store->Read(m_prefix + key).value_or(fallback);
}

int CfgSection::ReadInt(const QString& key, int fallback) {
    const std::optional<QString> text = m_store->Read(m_prefix + key);
    if (!text) return fallback;
    bool isNumber = false;
    const int number = text->trimmed().toInt(&isNumber);
    if (isNumber) return number;
    m_store->ReportMalformed(m_prefix + key, *text, "a whole number of 32 bits");
    return fallback;
}

bool CfgSection::ReadBool(const QString& key, bool fallback) {
    const std::optional<QString> text = m_store->Read(m_prefix + key);
    if (!text) return fallback;
    const QString word = text->trimmed().toLower();
    if (word == QLatin1String("true") || word == QLatin1String("1")) return true;
    if (word == QLatin1String("false") || word == QLatin1String("0")) return false;
    m_store->ReportMalformed(m_prefix + key, *text, "true or false");
    return fallback;
}

void CfgSection::WriteString(const QString& key, const QString& content) {
    m_store->Write(m_prefix + key, content);
}

void CfgSection::WriteInt(const QString& key, int content) {
    m_store->Write(m_prefix + key, QString::number(content));
}

void CfgSection::WriteBool(const QString& key, bool content) {
    m_store->Write(m_prefix + key, content ? QStringLiteral("true") : QStringLiteral("false"));
}

bool CfgSection::CommitKey(const QString& /*key*/) {
    return m_store->Commit();
}

ICfg* CfgSection::OpenSection(const QString& name) {
    const QString prefix = PrefixOf(name);
    return m_store->HasSection(prefix) ? new CfgSection(m_store, prefix) : nullptr;
}

ICfg* CfgSection::ProvideSection(const QString& name) {
    const QString prefix = PrefixOf(name);
    m_store->ProvideSection(prefix);
    return new CfgSection(m_store, prefix);
}

void CfgSection::RemoveSection(const QString& name) {
    if (!name.isEmpty()) m_store->RemoveSection(PrefixOf(name));
}

QString CfgSection::PrefixOf(const QString& name) const {
    return name.isEmpty() ? m_prefix : m_prefix + name + QLatin1Char('/');
}
