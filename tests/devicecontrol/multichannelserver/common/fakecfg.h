// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/config/icfg.h>

#include <tests/support/printing.h>

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <utility>
#include <vector>

/// A configuration store in memory that logs every call as "<operation> <key> <fallback or content>". Keys of
/// a section below carry its name: "DynamicMpxORVs/Policy/MayCal". Sections belong to whoever opened them.
class FakeCfg final : public ICfg {
  public:
    FakeCfg() : m_store(std::make_shared<Store>()) {}
    ~FakeCfg() override {
        if (!m_prefix.isEmpty()) --m_store->openSections;
    }
    FakeCfg(const FakeCfg&) = delete;
    FakeCfg& operator=(const FakeCfg&) = delete;

    QString ReadString(const QString& key, const QString& fallback) override {
        return Read("ReadString", key, fallback);
    }
    int ReadInt(const QString& key, int fallback) override {
        return Read("ReadInt", key, QString::number(fallback)).toInt();
    }
    bool ReadBool(const QString& key, bool fallback) override {
        return Read("ReadBool", key, FlagText(fallback)) == FlagText(true);
    }
    void WriteString(const QString& key, const QString& content) override {
        Write("WriteString", key, content);
    }
    void WriteInt(const QString& key, int content) override {
        Write("WriteInt", key, QString::number(content));
    }
    void WriteBool(const QString& key, bool content) override { Write("WriteBool", key, FlagText(content)); }
    bool CommitKey(const QString& key) override {
        Note("CommitKey", key);
        return true;
    }
    ICfg* OpenSection(const QString& name) override {
        Note("OpenSection", name);
        const bool exists = m_store->sections.count(m_prefix + name) != 0;
        return exists ? new FakeCfg(m_store, m_prefix + name + QLatin1Char('/')) : nullptr;
    }
    ICfg* ProvideSection(const QString& name) override {
        Note("ProvideSection", name);
        m_store->sections.insert(m_prefix + name);
        return new FakeCfg(m_store, m_prefix + name + QLatin1Char('/'));
    }
    void RemoveSection(const QString& name) override {
        Note("RemoveSection", name);
        m_store->sections.erase(m_prefix + name);
        const QString prefix = m_prefix + name + QLatin1Char('/');
        for (auto content = m_store->contents.lower_bound(prefix);
             content != m_store->contents.end() && content->first.startsWith(prefix);)
            content = m_store->contents.erase(content);
    }
    QStringList GetKeys() override {
        QStringList keys;
        for (const auto& [key, content] : m_store->contents)
            if (key.startsWith(m_prefix)) keys += key.mid(m_prefix.size());
        return keys;
    }

    // For the test: none of these is logged.

    /// What is under the full \a key; nothing where the key is missing.
    std::optional<QString> Content(const QString& key) const {
        const auto found = m_store->contents.find(key);
        return found != m_store->contents.end() ? std::make_optional(found->second) : std::nullopt;
    }
    void Put(const QString& key, const QString& content) { m_store->contents[key] = content; }
    /// Makes the section with the full \a name exist.
    void PutSection(const QString& name) { m_store->sections.insert(name); }
    const std::vector<QString>& Log() const { return m_store->log; }
    void ClearLog() { m_store->log.clear(); }
    int OpenSections() const { return m_store->openSections; }  ///< opened and not deleted yet

  private:
    struct Store {
        std::map<QString, QString> contents;
        std::set<QString> sections;
        std::vector<QString> log;
        int openSections = 0;
    };

    FakeCfg(std::shared_ptr<Store> store, QString prefix)
        : m_store(std::move(store)), m_prefix(std::move(prefix)) {
        ++m_store->openSections;
    }
    static QString FlagText(bool flag) { return flag ? QStringLiteral("true") : QStringLiteral("false"); }
    void Note(const char* operation, const QString& key) {
        m_store->log.push_back(QLatin1String(operation) + QLatin1Char(' ') + m_prefix + key);
    }
    void Note(const char* operation, const QString& key, const QString& content) {
        Note(operation, key + QLatin1Char(' ') + content);
    }
    QString Read(const char* operation, const QString& key, const QString& fallback) {
        Note(operation, key, fallback);
        return Content(m_prefix + key).value_or(fallback);
    }
    void Write(const char* operation, const QString& key, const QString& content) {
        Note(operation, key, content);
        Put(m_prefix + key, content);
    }

    std::shared_ptr<Store> m_store;
    QString m_prefix;  ///< empty for the store itself
};
