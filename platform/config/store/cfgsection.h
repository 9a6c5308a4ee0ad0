// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/config/icfg.h>

#include <memory>
#include <optional>

class CfgStore;

/// A section of a CfgStore: a prefix of its keys. Private to the configuration layer.
class CfgSection final : public ICfg {
  public:
    /// \a prefix is empty for the root, else it ends in "/".
    CfgSection(std::shared_ptr<CfgStore> store, QString prefix);
    ~CfgSection() override;

    QString ReadString(const QString& key, const QString& fallback) override;
    int ReadInt(const QString& key, int fallback) override;
    bool ReadBool(const QString& key, bool fallback) override;
    void WriteString(const QString& key, const QString& content) override;
    void WriteInt(const QString& key, int content) override;
    void WriteBool(const QString& key, bool content) override;
    bool CommitKey(const QString& key) override;
    ICfg* OpenSection(const QString& name) override;
    ICfg* ProvideSection(const QString& name) override;
    void RemoveSection(const QString& name) override;
    QStringList GetKeys() override;

  private:
    /// What is under \a key, if anything is; \a fallback is what it reads as otherwise.
    std::optional<QString> Read(const QString& key, const QString& fallback);
    QString PathOf(const QString& key) const;
    QString PrefixOf(const QString& name) const;

    std::shared_ptr<CfgStore> m_store;
    QString m_prefix;
};
