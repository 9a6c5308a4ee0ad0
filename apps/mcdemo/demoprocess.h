// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QProcess>
#include <QtCore/QStringList>

#include <chrono>
#include <functional>

/// A program of the demonstration, and the lines that it prints. Killed with this object.
class DemoProcess final : public QObject {
    Q_OBJECT

  public:
    /// \a program stands beside this one.
    explicit DemoProcess(const QString& program);
    ~DemoProcess() override;

    bool Start(const QStringList& arguments);
    bool IsRunning() const { return m_process.state() != QProcess::NotRunning; }
    void Say(const QString& line);
    void Kill();  ///< as kill -9 does
    /// Waits for it to end after the end of its input. False if it does not, or not well.
    bool EndInput();
    /// Asks it to end, if it runs, and waits. Kills it where the system has no way to ask.
    void Terminate();

    /// Waits for a line that begins with \a beginning, and takes it with all before it. Null if it does not
    /// come within \a time.
    QString WaitForLine(const QString& beginning, std::chrono::milliseconds time);
    /// Runs it to its end, for at most \a time. Returns all that it printed, errors too.
    static QString Output(const QString& program, const QStringList& arguments,
                          std::chrono::milliseconds time);

  private:
    void OnReadyRead();
    bool WaitForEnd();

    QString m_program;
    QProcess m_process;
    QStringList m_lines;
};

/// Lets events happen until \a isTrue, for at most \a time. Whether it came true.
bool WaitUntil(const std::function<bool()>& isTrue, std::chrono::milliseconds time);
