// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/vtclient/ivtaccess.h>
#include <platform/vtclient/vtserver.h>

#include <tests/support/programrunner.h>
#include <tests/support/tracerecorder.h>

#include <gmock/gmock.h>

/// Lets everybody do everything, but for what the name says.
class ProcessAccess final : public IVtAccess {
  public:
    bool NeedsCredentials() const override { return !token.isEmpty(); }
    bool Admit(VtPeer& peer, const QString& user, const QString& given, QString* reason) override {
        peer.user = user;
        *reason = QStringLiteral("wrong token");
        return given == token;
    }
    bool MayRead(const VtPeer&, const QString& path) override { return path != QLatin1String("/Hidden"); }
    bool MayWrite(const VtPeer&, const QString& path, QString* reason) override {
        *reason = QStringLiteral("the switch is locked");
        return path != QLatin1String("/Locked");
    }
    bool MayCreate(const VtPeer&, const QString&, QString*) override { return false; }
    QStringList WritablePrefixes(const VtPeer&) override { return {QStringLiteral("/")}; }

    QString token;
};

/// Runs the program mctree against a server in this process.
class ProcessFixture : public testing::Test, protected ProgramRunner {
  protected:
    ProcessFixture() {
        Listen(0);
        port = server.GetPort();
        sweepTime.SetName(QStringLiteral("SweepTime"));
        comment.SetName(QStringLiteral("Comment"));
        tree.AddValue(QStringLiteral("/Status"), &sweepTime);
        tree.AddValue(QStringLiteral("/Status"), &comment);
        auto* const locked = new values::Value<bool>();
        locked->SetName(QStringLiteral("Locked"));
        tree.AddValue(QStringLiteral("/"), locked);
        environment.remove(QStringLiteral("MCS_TOKEN"));
        environment.remove(QStringLiteral("MCS_TRACE"));
    }

    void Listen(int listeningPort) {
        VtServerOptions options;
        options.application = QStringLiteral("a test");
        options.port = listeningPort;
        QString error;
        EXPECT_TRUE(server.Listen(options, &error)) << error.toStdString();
    }

    /// Starts mctree with the words \a words, connected to the server.
    void Start(const QStringList& words) {
        const QString address = QStringLiteral("127.0.0.1:%1").arg(port);
        StartProgram(QStringLiteral(MCTREE_PROGRAM),
                     QStringList{QStringLiteral("--connect"), address} + words);
    }
    int Run(const QStringList& words) {
        Start(words);
        return WaitForEnd();
    }

    const TraceRecorder traces;
    values::Tree tree;
    values::ValueNumeric<int>& sweepTime = *new values::ValueNumeric<int>(2500, 0, 5000);
    values::Value<QString>& comment = *new values::Value<QString>();
    ProcessAccess access;
    VtServer server{access};
    int port = 0;  ///< of the server, also while it is closed
};
