// SPDX-License-Identifier: Apache-2.0
#include <apps/common/childprogram.h>

#include <apps/common/eventwait.h>

#include <QtCore/QDeadlineTimer>

#include <utility>

namespace {

int ToMs(std::chrono::milliseconds time) {
    return static_cast<int>(time.count());
}

QProcess::ProcessChannelMode ModeOf(ChildProgram::EErrors errors) {
    switch (errors) {
        case ChildProgram::EErrors::Kept:
            break;
        case ChildProgram::EErrors::PassedOn:
            return QProcess::ForwardedErrorChannel;
        case ChildProgram::EErrors::WithOutput:
            return QProcess::MergedChannels;
        case ChildProgram::EErrors::AllPassedOn:
            return QProcess::ForwardedChannels;
    }
    return QProcess::SeparateChannels;
}

}  // namespace

ChildProgram::ChildProgram(EErrors errors) {
    m_process.setProcessChannelMode(ModeOf(errors));
    QObject::connect(&m_process, &QProcess::readyReadStandardOutput, &m_process, [this] { OnOutput(); });
    QObject::connect(&m_process, &QProcess::readyReadStandardError, &m_process,
                     [this] { m_errors += m_process.readAllStandardError(); });
}

ChildProgram::~ChildProgram() {
    m_process.disconnect();
    Kill();
}

void ChildProgram::SetLineHandler(std::function<void(const QString&)> onLine) {
    m_onLine = std::move(onLine);
}

bool ChildProgram::Start(const QString& program, const QStringList& arguments) {
    m_output.clear();
    m_errors.clear();
    m_taken = 0;
    m_isDropping = false;
    m_process.start(program, arguments);
    if (m_process.waitForStarted()) return true;
    m_errors = m_process.errorString().toUtf8();
    return false;
}

void ChildProgram::OnOutput() {
    const QByteArray said = m_process.readAllStandardOutput();
    if (m_isDropping) return;
    m_output += said;
    if (m_onLine) HandLinesOn();
}

// Whoever is told may start, kill or drop: what is left then is another program's.
void ChildProgram::HandLinesOn() {
    for (QString line = TakeLine(); !line.isNull(); line = TakeLine())
        m_onLine(line);
    m_output.remove(0, std::exchange(m_taken, 0));
}

void ChildProgram::DropOutput() {
    m_isDropping = true;
}

QString ChildProgram::TakeLine() {
    const int end = m_output.indexOf('\n', m_taken);
    if (end == -1) return QString();
    const int begin = std::exchange(m_taken, end + 1);
    const QByteArray line = m_output.mid(begin, end - begin).trimmed();
    return QString::fromUtf8(line.constData(), line.size());  // not null if empty
}

QString ChildProgram::WaitForLine(const std::function<bool(const QString&)>& isWanted,
                                  std::chrono::milliseconds time) {
    QString wanted;
    const auto isThereOrOver = [&] {
        const bool isOver = !IsRunning();
        for (QString line = TakeLine(); !line.isNull(); line = TakeLine()) {
            if (!isWanted(line)) continue;
            wanted = line;
            return true;
        }
        return isOver;
    };
    eventwait::Until(isThereOrOver, time);
    return wanted;
}

QString ChildProgram::WaitForLine(const QString& beginning, std::chrono::milliseconds time) {
    return WaitForLine([&beginning](const QString& line) { return line.startsWith(beginning); }, time);
}

void ChildProgram::Say(const QByteArray& line) {
    m_process.write(line + '\n');
}

bool ChildProgram::Flush(std::chrono::milliseconds time) {
    const QDeadlineTimer deadline(time);
    while (m_process.bytesToWrite() > 0)
        if (!m_process.waitForBytesWritten(static_cast<int>(deadline.remainingTime()))) return false;
    return true;
}

void ChildProgram::Kill() {
    if (!IsRunning()) return;
    m_process.kill();
    m_process.waitForFinished();
}

int ChildProgram::CodeOf(bool hasEnded) const {
    const bool isGood = hasEnded && m_process.error() != QProcess::FailedToStart &&
                        m_process.exitStatus() == QProcess::NormalExit;
    return isGood ? m_process.exitCode() : -1;
}

int ChildProgram::WaitForEnd(std::chrono::milliseconds time) {
    const bool hasEnded = eventwait::Until([this] { return !IsRunning(); }, time);
    if (!hasEnded) Kill();
    return CodeOf(hasEnded);
}

int ChildProgram::Terminate(std::chrono::milliseconds time) {
    m_process.terminate();
    return WaitForEnd(time);
}

int ChildProgram::EndInput(std::chrono::milliseconds time) {
    m_process.closeWriteChannel();
    return WaitForEnd(time);
}

ProgramOutcome ChildProgram::Run(const QString& program, const QStringList& arguments,
                                 std::chrono::milliseconds time) {
    const bool hasEnded =
        Start(program, arguments) && (m_process.waitForFinished(ToMs(time)) || !IsRunning());
    if (!hasEnded) Kill();
    return {CodeOf(hasEnded), m_output, m_errors};
}
