// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mcserver/serverprocess.h>

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include <utility>

void ServerProcess::FindPort() {
    static const QRegularExpression line(QStringLiteral("^listening on \\S+:(\\d+)$"),
                                         QRegularExpression::MultilineOption);
    const QRegularExpressionMatch match = line.match(Output());
    if (match.hasMatch()) m_port = match.captured(1).toInt();
}

void ServerProcess::Start(const QStringList& arguments) {
    StartAt(0, arguments);
}

void ServerProcess::Restart(const QStringList& arguments) {
    StartAt(std::exchange(m_port, 0), arguments);
}

void ServerProcess::StartAt(int port, const QStringList& arguments) {
    QStringList all = {QStringLiteral("--listen"), QStringLiteral("127.0.0.1:%1").arg(port),
                       QStringLiteral("--config"), ConfigPath()};
    if (!m_hasWindow) all << QStringLiteral("--headless");
    environment = QProcessEnvironment::systemEnvironment();  // which a test may have changed
    all += arguments;
    if (!m_limit.isEmpty())
        StartProgram(
            QStringLiteral("/bin/sh"),
            QStringList{QStringLiteral("-c"), m_limit + QStringLiteral("; exec \"$0\" \"$@\""), m_program} +
                all);
    else
        StartProgram(m_program, all);
    const auto isStarted = [this] {
        FindPort();
        return m_port != 0 || !IsRunning();
    };
    ASSERT_TRUE(WaitUntil(isStarted));
    ASSERT_NE(m_port, 0) << errors.toStdString();
}

int ServerProcess::Run(const QStringList& arguments) {
    QStringList all = arguments;
    if (!m_hasWindow) all << QStringLiteral("--headless");
    environment = QProcessEnvironment::systemEnvironment();
    StartProgram(m_program, all);
    return WaitForEnd();
}

void ServerProcess::WriteFile(const QString& name, const QByteArray& content) const {
    QFile file(Path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(content), content.size());
}
