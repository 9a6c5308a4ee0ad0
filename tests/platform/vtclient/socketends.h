// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/vtclientcenter.h>
#include <platform/vtclient/vtserver.h>
#include <tests/platform/vtclient/treefixture.h>
#include <tests/support/doubles/testaccess.h>
#include <tests/support/tracerecorder.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <vector>

/// A server and clients over sockets, in one process and over one tree: the server's subtree is at /S,
/// clients mirror it where they like.
class SocketEnds : public TreeFixture {
  protected:
    SocketEnds() {
        m_serverOptions.application = QStringLiteral("the server");
        m_serverOptions.port = 0;
        m_clientOptions.firstRetry = std::chrono::milliseconds(1);
        m_clientOptions.longestRetry = std::chrono::milliseconds(20);
    }
    ~SocketEnds() override {
        while (!m_clients.empty())
            Destroy(m_clients.front());
        m_server.Close(QStringLiteral("the test ends"));
        RunTurns(3);
    }

    void Listen() {
        QString error;
        ASSERT_TRUE(m_server.Listen(m_serverOptions, &error)) << error.toStdString();
    }
    /// A client of \a address, by default of the server.
    IVtClient* Connect(const char* address = "127.0.0.1", int port = 0) {
        VtClientCenter::Instance().SetOptions(m_clientOptions);
        IVtClient* const client =
            VtClientCenter::Instance().CreateVtClient(address, port != 0 ? port : m_server.GetPort());
        VtClientCenter::Instance().SetOptions(VtClientOptions());
        if (client != nullptr) m_clients.push_back(client);
        return client;
    }
    void Destroy(IVtClient* client) {
        m_clients.erase(std::find(m_clients.begin(), m_clients.end(), client));
        VtClientCenter::Instance().DestroyVtClient(client);
    }
    static bool ComesIn(IVtClient* client) {
        return WaitUntil([client] { return client->IsConnected(); });
    }
    static bool AreEstablished(IVtClient* client) {
        return WaitUntil([client] { return client->AreAllTicsEstablished(); });
    }

    /// What the server's side reported, in order; and the client's.
    std::vector<QString> ServerLines() const {
        return Lines({QStringLiteral("platform/vtclient/server"),
                      QStringLiteral("platform/vtclient/channel/socketl")});
    }
    /// Who is said to have caused the first of the server's.
    QString SourceOfServerLine() const {
        for (const TraceRecord& record : m_traces.Records())
            if (record.message == ServerLines().at(0)) return record.source;
        return QString();
    }
    std::vector<QString> ClientLines() const {
        return Lines({QStringLiteral("platform/vtclient/client/vtclient")});
    }

    TraceRecorder m_traces{ErrorHandler::TraceAssertions | ErrorHandler::TraceWarnings};
    TestAccess m_access;
    VtServer m_server{m_access};
    VtServerOptions m_serverOptions;
    VtClientOptions m_clientOptions;
    std::vector<IVtClient*> m_clients;

  private:
    std::vector<QString> Lines(const std::vector<QString>& files) const {
        std::vector<QString> lines;
        for (const TraceRecord& record : m_traces.Records())
            for (const QString& file : files)
                if (record.file.startsWith(file)) lines.push_back(record.message);
        return lines;
    }
};
