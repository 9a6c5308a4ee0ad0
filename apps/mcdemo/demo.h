// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "democluster.h"

#include <apps/common/childprogram.h>

#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

#include <functional>

/// The demonstration: a server, two clients and an operator, in processes of their own, over real sockets.
/// With windows for the server and the operator that stay open; without a display, with pictures of them.
class Demo {
  public:
    /// \a pictures: the directory for pictures of the windows. \a isStopped: whether somebody wants it to end
    /// early.
    Demo(const QString& pictures, std::function<bool()> isStopped);

    /// The clients come through a cluster of NATS, made by \a clusterScript, of which a node is killed.
    void UseNats(const QString& clusterScript) { m_clusterScript = clusterScript; }

    /// Tells the story. True if everything in it came about.
    bool Run();

  private:
    bool Fail(const QString& what);
    bool StartModule();
    bool StartCluster();
    bool StartServer();
    bool StartClients();
    bool ShowStatus();
    bool BecomeMaster();
    bool RefuseAndAllow();
    bool RefuseForTheMaster();
    bool BlankAFrequency();
    bool KillANode();
    bool KillAndRestart();
    bool ShowWindows();
    bool LeaveWindows();
    bool TakePictures();
    bool StartConsole();
    bool End();

    QStringList ServerArguments() const;
    bool HearThemLoseTheServer();
    QString Operator(const QStringList& arguments) const;
    /// \a client asks for \a line; its answer must begin with \a beginning.
    bool Ask(ChildProgram& client, const QString& who, const QString& line, const QString& beginning);
    bool AskUntilDone(ChildProgram& client, const QString& who, const QString& line);
    QStringList ConsoleArguments(const QStringList& more) const;
    bool HearConnected(ChildProgram& client, const QString& who, QString* name);

    QString m_pictures;
    std::function<bool()> m_isStopped;
    bool m_hasWindows;
    QTemporaryDir m_directory;
    int m_port = 0;
    QString m_clusterScript;  ///< empty: no NATS
    DemoCluster m_cluster;
    ChildProgram m_module{ChildProgram::EErrors::PassedOn};
    ChildProgram m_server{ChildProgram::EErrors::PassedOn};
    ChildProgram m_console{ChildProgram::EErrors::PassedOn};
    ChildProgram m_alpha{ChildProgram::EErrors::PassedOn};
    ChildProgram m_bravo{ChildProgram::EErrors::PassedOn};
    QString m_bravoName;
};
