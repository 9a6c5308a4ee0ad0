// SPDX-License-Identifier: Apache-2.0
#pragma once

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

    /// Tells the story. True if everything in it came about.
    bool Run();

  private:
    bool Fail(const QString& what);
    bool StartModule();
    bool StartServer();
    bool StartClients();
    bool ShowStatus();
    bool BecomeMaster();
    bool RefuseAndAllow();
    bool RefuseForTheMaster();
    bool BlankAFrequency();
    bool KillAndRestart();
    bool ShowWindows();
    bool LeaveWindows();
    bool TakePictures();
    bool StartConsole();
    bool End();

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
    ChildProgram m_module{ChildProgram::EErrors::PassedOn};
    ChildProgram m_server{ChildProgram::EErrors::PassedOn};
    ChildProgram m_console{ChildProgram::EErrors::PassedOn};
    ChildProgram m_alpha{ChildProgram::EErrors::PassedOn};
    ChildProgram m_bravo{ChildProgram::EErrors::PassedOn};
    QString m_bravoName;
};
