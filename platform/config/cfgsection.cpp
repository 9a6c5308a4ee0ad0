// SPDX-License-Identifier: Apache-2.0
#include <platform/config/cfgsection.h>

#include <platform/config/cfgstore.h>

#include <QtCore/QStringList>

#include <utility>

namespace {

/// "/" separates names; where there is none between two of them, or outside, nothing is meant by it.
QString Path(const QString& name) {
    return name.split(QLatin1Char('/'), Qt::SkipEmptyParts).join(QLatin1Char('/'));
}

}  // namespace

CfgSection::CfgSection(std::shared_ptr<CfgStore> store, QString prefix)
    : m_store(std::move(store)), m_prefix(std::move(prefix)) {}

CfgSection::~CfgSection() = default;

QString CfgSection::ReadString(const QString& key, const QString& fallback) {
    return m_store->Read(PathOf(key)).value_or(fallback);
}

int CfgSection::ReadInt(const QString& key, int fallback) {
    const std::optional<QString> text = m_store->Read(PathOf(key));
    if (!text) return fallback;
    bool isNumber = false;
    const int number = text->trimmed().toInt(&isNumber);
    if (isNumber) return number;
    m_store->ReportMalformed(PathOf(key), *text, "a whole number of 32 bits");
    return fallback;
}

bool CfgSection::ReadBool(const QString& key, bool fallback) {
    const std::optional<QString> text = m_store->Read(PathOf(key));
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
    m_store->Write(PathOf(key), QString::number(content));
}

void CfgSection::WriteBool(const QString& key, bool content) {
    m_store->Write(PathOf(key), content ? QStringLiteral("true") : QStringLiteral("false"));
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
    return m_prefix + Path(key);
}

QString CfgSection::PrefixOf(const QString& name) const {
    const QString path = Path(name);
    return path.isEmpty() ? m_prefix : m_prefix + path + QLatin1Char('/');
}
