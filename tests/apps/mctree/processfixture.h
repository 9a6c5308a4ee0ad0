// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/vtclient/vtserver.h>

#include <tests/support/doubles/testaccess.h>
#include <tests/support/programrunner.h>
#include <tests/support/tracerecorder.h>

#include <gmock/gmock.h>

/// Runs the program mctree against a server in this process.
class ProcessFixture : public testing::Test, protected ProgramRunner {
  protected:
    ProcessFixture() {
        access.unreadable.insert(QStringLiteral("/Hidden"));
        access.unwritable.insert(QStringLiteral("/Locked"));
        access.writeRefusal = QStringLiteral("the switch is locked");
        access.uncreatable.insert(QStringLiteral("/"));
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
    TestAccess access;
    VtServer server{access};
    int port = 0;  ///< of the server, also while it is closed
};
