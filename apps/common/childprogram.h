// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <chrono>
#include <functional>

/// What became of a program.
struct ProgramOutcome {
    int code = -1;  ///< -1 if it was killed, was never there or did not end
    QByteArray output;
    QByteArray errors;
};

/// A program that this one starts, tells what to do in lines, and listens to. One at a time; killed with this
/// object. Waiting runs the event loop, so that the waiting program may be its peer. Belongs to one thread.
class ChildProgram {
  public:
    /// What becomes of what it says on its standard error output.
    enum class EErrors { Kept, PassedOn, WithOutput, AllPassedOn };

    explicit ChildProgram(EErrors errors = EErrors::Kept);
    ~ChildProgram();
    ChildProgram(const ChildProgram&) = delete;
    ChildProgram& operator=(const ChildProgram&) = delete;

    // Before it starts:
    void SetEnvironment(const QProcessEnvironment& environment) {
        m_process.setProcessEnvironment(environment);
    }
    void SetDirectory(const QString& path) { m_process.setWorkingDirectory(path); }
    void SendErrorsTo(const QString& file) { m_process.setStandardErrorFile(file); }
    /// Gives each line to \a onLine as it comes, in place of keeping what is said.
    void SetLineHandler(std::function<void(const QString& line)> onLine);

    /// False if it cannot be started; GetErrors() tells why.
    bool Start(const QString& program, const QStringList& arguments);
    bool IsRunning() const { return m_process.state() != QProcess::NotRunning; }
    qint64 GetProcessId() const { return m_process.processId(); }

    /// Types \a line and the end of a line. It leaves when events are handled.
    void Say(const QByteArray& line);
    /// Waits until all that was typed has left, without an event being handled. False if it does not within
    /// \a time.
    bool Flush(std::chrono::milliseconds time);

    /// All that it has said since it was started.
    const QByteArray& GetOutput() const { return m_output; }
    const QByteArray& GetErrors() const { return m_errors; }
    /// Keeps nothing of what it says from now on.
    void DropOutput();
    /// Takes the lines up to the first that \a isWanted wants, waiting for it. \return it without white space
    /// around it; null if it does not come within \a time, or the program ends before. GetOutput() keeps what
    /// is taken.
    QString WaitForLine(const std::function<bool(const QString&)>& isWanted, std::chrono::milliseconds time);
    /// The same for the first that begins with \a beginning.
    QString WaitForLine(const QString& beginning, std::chrono::milliseconds time);

    /// Ends it as kill -9 does.
    void Kill();
    /// Waits for its end, and kills it after \a time. \return its exit code; -1 if it was killed or never
    /// there.
    int WaitForEnd(std::chrono::milliseconds time);
    /// The same, after asking it to end. Where the system has no way to ask, it is killed.
    int Terminate(std::chrono::milliseconds time);
    /// The same, after the end of its input.
    int EndInput(std::chrono::milliseconds time);

    /// Runs \a program to its end, for \a time at most, while nothing else happens in this process.
    ProgramOutcome Run(const QString& program, const QStringList& arguments, std::chrono::milliseconds time);

  private:
    void OnOutput();
    void HandLinesOn();
    /// The next line that has not been taken; null if there is none.
    QString TakeLine();
    int CodeOf(bool hasEnded) const;

    QProcess m_process;
    QByteArray m_output;
    QByteArray m_errors;
    std::function<void(const QString&)> m_onLine;  ///< none: what is said is kept
    int m_taken = 0;                               ///< how much of m_output
    bool m_isDropping = false;
};
