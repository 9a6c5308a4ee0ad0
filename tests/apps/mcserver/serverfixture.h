// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcserver/access/serveraccess.h>
#include <apps/mcserver/device/simulatedorv.h>
#include <apps/mcserver/program/mcsserver.h>

#include <platform/values/tree.h>
#include <platform/values/valueaccess.h>

#include <tests/support/doubles/manualclock.h>
#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <memory>

/// A server over a simulated device, reached as a connection would reach it: through the tree, and through
/// what a connection asks before it reads, writes and creates. Its configuration is a file of its own.
class ServerTest : public testing::Test {
  protected:
    ServerTest();
    ~ServerTest() override;

    /// Keeps the configuration in a file of its own; before Start.
    void KeepInFile() { m_isInFile = true; }
    /// The same, and the file holds \a ini.
    void Configure(const QByteArray& ini);
    /// The server owns \a device, which outlives it, in place of the simulated one; before Start.
    void Own(IOrvDevice& device);
    /// Starts the server and, unless told otherwise, waits until the device is ready.
    void Start(bool untilReady = true);
    /// Ends the server and makes a new one on the same configuration, not started yet.
    void Restart();
    QString ConfigPath() const { return m_directory.filePath(QStringLiteral("mcserver.ini")); }
    /// What the file holds under \a key.
    QString Stored(const QString& key) const;

    /// A peer of this machine, admitted in \a role.
    VtPeer Connect(const QString& application, const QString& role = ServerAccess::OperatorRole());
    void Disconnect(const VtPeer& peer);
    /// What subscribing the node of a dynamic MpxORV does.
    void Use(const VtPeer& peer, const QString& name);
    void UseStatic(const VtPeer& peer, const QString& name);
    void Release(const VtPeer& peer, const QString& name);

    /// Writes as a connection does. \return why it is refused; empty if it is not.
    template <class V, class T>
    QString Write(const VtPeer& peer, const QString& path, const T& content) {
        QString reason;
        if (!m_access->MayWrite(peer, path, &reason)) return reason;
        V* const value = values::FindValue<V>(path, nullptr, nullptr);
        if (value == nullptr) return QStringLiteral("nothing is there");
        value->SetValue(content, nullptr);
        m_access->ValueWritten(peer, path);
        return QString();
    }
    QString Push(const VtPeer& peer, const QString& mpxOrv, const QString& button);
    QString Tune(const VtPeer& peer, const QString& mpxOrv, double hz);
    QString Switch(const VtPeer& peer, const QString& mpxOrv, const QString& policy, bool on);

    static QString Dynamic(const QString& name, const QString& below = QString());
    static QString Static(const QString& name, const QString& below = QString());
    static bool Exists(const QString& path);
    static bool Flag(const QString& path);
    static QString Text(const QString& path);
    static double Number(const QString& path);
    static int Count(const QString& statusKey);
    static QString Choice(const QString& path);
    static QString StatusText(const QString& key);
    static QString Answer(const QString& mpxOrv);
    static QStringList ClientsOf(const QString& mpxOrvPath);
    static void Set(const QString& path, bool on);

    /// The lines of the log since the last call.
    QStringList TakeLog();

    QTemporaryDir m_directory;
    ManualClock m_clock;
    values::Tree m_tree;
    std::unique_ptr<SimulatedOrv> m_device;
    std::unique_ptr<McsServer> m_server;
    std::unique_ptr<ServerAccess> m_access;

  private:
    void Make(IOrvDevice& device);

    QStringList m_log;
    int m_sessions = 0;
    bool m_isInFile = false;
};
