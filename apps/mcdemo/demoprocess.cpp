// SPDX-License-Identifier: Apache-2.0
#include "demoprocess.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QDir>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

namespace {

constexpr std::chrono::milliseconds StopTime(5000);  // that a program gets to end by itself
constexpr std::chrono::milliseconds LookInterval(50);

int ToMs(std::chrono::milliseconds time) {
    return static_cast<int>(time.count());
}

QString PathOf(const QString& program) {
    return QDir(QCoreApplication::applicationDirPath()).filePath(program);
}

}  // namespace

bool WaitUntil(const std::function<bool()>& isTrue, std::chrono::milliseconds time) {
    const QDeadlineTimer deadline(time);
    QTimer wake;  // so that waiting for events ends at the deadline too
    wake.start(LookInterval);
    while (!isTrue()) {
        if (deadline.hasExpired()) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

DemoProcess::DemoProcess(const QString& program) : m_program(PathOf(program)) {
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &DemoProcess::OnReadyRead);
}

DemoProcess::~DemoProcess() {
    m_process.disconnect(this);
    Kill();
}

bool DemoProcess::Start(const QStringList& arguments) {
    m_lines.clear();
    m_process.start(m_program, arguments);
    return m_process.waitForStarted();
}

void DemoProcess::Say(const QString& line) {
    m_process.write(line.toUtf8() + '\n');
}

void DemoProcess::Kill() {
    if (m_process.state() == QProcess::NotRunning) return;
    m_process.kill();
    m_process.waitForFinished();
}

bool DemoProcess::EndInput() {
    m_process.closeWriteChannel();
    return WaitForEnd();
}

void DemoProcess::Terminate() {
    if (!IsRunning()) return;
    m_process.terminate();
    WaitForEnd();
}

bool DemoProcess::WaitForEnd() {
    if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(ToMs(StopTime))) Kill();
    return m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
}

void DemoProcess::OnReadyRead() {
    while (m_process.canReadLine())
        m_lines.append(QString::fromUtf8(m_process.readLine()).trimmed());
}

QString DemoProcess::WaitForLine(const QString& beginning, std::chrono::milliseconds time) {
    QString found;
    const auto isThere = [&] {
        while (found.isNull() && !m_lines.isEmpty()) {
            const QString line = m_lines.takeFirst();
            if (line.startsWith(beginning)) found = line;
        }
        return !found.isNull();
    };
    WaitUntil(isThere, time);
    return found;
}

QString DemoProcess::Output(const QString& program, const QStringList& arguments,
                            std::chrono::milliseconds time) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(PathOf(program), arguments);
    if (!process.waitForFinished(ToMs(time))) process.kill();
    return QString::fromUtf8(process.readAll());
}
