// SPDX-License-Identifier: Apache-2.0
#include <platform/config/store/cfgsection.h>

#include <platform/config/store/cfgstore.h>

#include <utility>

namespace {

QString Text(int content) {
    return QString::number(content);
}

QString Text(bool content) {
    return content ? QStringLiteral("true") : QStringLiteral("false");
}

}  // namespace

CfgSection::CfgSection(std::shared_ptr<CfgStore> store, QString prefix)
    : m_store(std::move(store)), m_prefix(std::move(prefix)) {}

CfgSection::~CfgSection() = default;

std::optional<QString> CfgSection::Read(const QString& key, const QString& fallback) {
    const QString path = PathOf(key);
    std::optional<QString> text = m_store->Read(path);
    if (!text) m_store->Assume(path, fallback);
    return text;
}

QString CfgSection::ReadString(const QString& key, const QString& fallback) {
    return Read(key, fallback).value_or(fallback);
}

int CfgSection::ReadInt(const QString& key, int fallback) {
    const std::optional<QString> text = Read(key, Text(fallback));
    if (!text) return fallback;
    bool isNumber = false;
    const int number = text->trimmed().toInt(&isNumber);
    if (isNumber) return number;
    m_store->ReportMalformed(PathOf(key), *text, "a whole number of 32 bits");
    return fallback;
}

bool CfgSection::ReadBool(const QString& key, bool fallback) {
    const std::optional<QString> text = Read(key, Text(fallback));
    if (!text) return fallback;
    const QString word = text->trimmed().toLower();
    if (word == QLatin1String("true") || word == QLatin1String("1")) return true;
    if (word == QLatin1String("false") || word == QLatin1String("0")) return false;
    m_store->ReportMalformed(PathOf(key), *text, "true or false");
    return fallback;
}

void CfgSection::WriteString(const QString& key, const QString& content) {
    m_store->Write(PathOf(key), content);
}

void CfgSection::WriteInt(const QString& key, int content) {
    m_store->Write(PathOf(key), Text(content));
}

void CfgSection::WriteBool(const QString& key, bool content) {
    m_store->Write(PathOf(key), Text(content));
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
    const QString prefix = PrefixOf(name);
    if (prefix != m_prefix) m_store->RemoveSection(prefix);
}

QStringList CfgSection::GetKeys() {
    return m_store->GetKeys(m_prefix);
}

QString CfgSection::PathOf(const QString& key) const {
    return m_prefix + cfgcontents::Path(key);
}

QString CfgSection::PrefixOf(const QString& name) const {
    const QString path = cfgcontents::Path(name);
    return path.isEmpty() ? m_prefix : m_prefix + path + QLatin1Char('/');
}
