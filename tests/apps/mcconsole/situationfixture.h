// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/session/situation.h>

#include <tests/apps/mcconsole/servertree.h>
#include <tests/support/doubles/manualclock.h>
#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <memory>

/// The situation of a console on a server that the test plays.
class SituationTest : public testing::Test {
  protected:
    using EItem = Situation::EItem;
    using EState = ConsoleSession::EState;

    SituationTest() {
        connection.server.host = QStringLiteral("dfhost");
        connection.mpxOrvName = QStringLiteral("Console");
        Watch();
    }

    void Watch() {
        situation.reset();
        situation = std::make_unique<Situation>(clock, ServerTree::BasePath(), [this] { return connection; });
    }
    void Be(EState state) {
        connection.state = state;
        const bool isConnected = state == EState::Connected;
        connection.mpxOrvPath = isConnected ? ServerTree::OwnPath() : QString();
        situation->Refresh();
    }

    ESeverity Severity(EItem item) const { return situation->Get(item).severity; }
    std::string Word(EItem item) const { return situation->Get(item).word.toStdString(); }
    std::string Age(EItem item) const { return situation->Get(item).age.toStdString(); }
    std::string Detail(EItem item) const { return situation->Get(item).detail.toStdString(); }

    ServerTree server;
    ManualClock clock;
    Connection connection;
    std::unique_ptr<Situation> situation;
};
