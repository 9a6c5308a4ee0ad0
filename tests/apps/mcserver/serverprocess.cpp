// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mcserver/serverprocess.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QTimer>

#include <utility>

namespace {

constexpr int Deadline = 20000;  // ms; far beyond what a busy machine takes

}  // namespace

ServerProcess::ServerProcess() {
    QObject::connect(&m_process, &QProcess::readyReadStandardOutput, &m_process, [this] {
        m_output += QString::fromUtf8(m_process.readAllStandardOutput());
        FindPort();
    });
    QObject::connect(&m_process, &QProcess::readyReadStandardError, &m_process,
                     [this] { m_errors += QString::fromUtf8(m_process.readAllStandardError()); });
}

ServerProcess::~ServerProcess() {
    Kill();
}

bool ServerProcess::WaitFor(const std::function<bool()>& condition) {
    bool isLate = false;
    QTimer deadline;
    deadline.setSingleShot(true);
    QObject::connect(&deadline, &QTimer::timeout, &deadline, [&isLate] { isLate = true; });
    deadline.start(Deadline);
    while (!condition() && !isLate)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return condition();
}

void ServerProcess::FindPort() {
    static const QRegularExpression line(QStringLiteral("^listening on \\S+:(\\d+)$"),
                                         QRegularExpression::MultilineOption);
    const QRegularExpressionMatch match = line.match(m_output);
    if (match.hasMatch()) m_port = match.captured(1).toInt();
}

void ServerProcess::Start(const QStringList& arguments) {
    StartAt(0, arguments);
}

void ServerProcess::Restart(const QStringList& arguments) {
    StartAt(std::exchange(m_port, 0), arguments);
}

void ServerProcess::StartAt(int port, const QStringList& arguments) {
    m_output.clear();
    m_errors.clear();
    QStringList all = {QStringLiteral("--listen"), QStringLiteral("127.0.0.1:%1").arg(port),
                       QStringLiteral("--config"), ConfigPath()};
    if (!m_hasWindow) all << QStringLiteral("--headless");
    m_process.start(QStringLiteral(MCSERVER), all + arguments);
    ASSERT_TRUE(WaitFor([this] { return m_port != 0 || m_process.state() == QProcess::NotRunning; }));
    ASSERT_NE(m_port, 0) << m_errors.toStdString();
}

int ServerProcess::Run(const QStringList& arguments) {
    QStringList all = arguments;
    if (!m_hasWindow) all << QStringLiteral("--headless");
    m_process.start(QStringLiteral(MCSERVER), all);
    return WaitForEnd();
}

int ServerProcess::Terminate() {
    m_process.terminate();
    return WaitForEnd();
}

void ServerProcess::Kill() {
    m_process.kill();
    m_process.waitForFinished();
}

int ServerProcess::WaitForEnd() {
    if (!WaitFor([this] { return m_process.state() == QProcess::NotRunning; })) return -1;
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

void ServerProcess::WriteFile(const QString& name, const QByteArray& content) const {
    QFile file(Path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(content), content.size());
}
