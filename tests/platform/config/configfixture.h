// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/config/icfg.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtCore/QByteArray>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <memory>

/// A directory of its own for each test, in which "app.ini" is the configuration.
class ConfigTest : public testing::Test {
  protected:
    ConfigTest();
    ~ConfigTest() override;

    QString Path(const QString& name = QStringLiteral("app.ini")) const { return m_directory.filePath(name); }
    /// The names of all that is in the directory.
    QStringList Names() const;
    /// A section of the store that is open.
    static std::unique_ptr<ICfg> Root();
    /// The root of a store that knows nothing but the file.
    std::unique_ptr<ICfg> Reopened() const;

    void WriteFile(const QByteArray& bytes, const QString& name = QStringLiteral("app.ini")) const;
    QByteArray FileBytes(const QString& name = QStringLiteral("app.ini")) const;

    /// What another process reads under \a key, whose end of line is not part of it.
    QString ReadByAnotherProcess(const QString& key) const;
    /// \return whether another process wrote and committed it.
    bool WriteByAnotherProcess(const QString& key, const QString& content) const;

  private:
    QTemporaryDir m_directory;
};
