// SPDX-License-Identifier: Apache-2.0
#include "child.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>

namespace bench {

namespace {

constexpr int LongestWait = 60 * 1000;  // ms

}  // namespace

Child::Child(const Part& part) : m_role(part.role) {
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QCoreApplication::applicationFilePath(),
                    QStringList{QStringLiteral("--role"), part.role} + part.settings.Words());
}

Child::~Child() {
    m_process.kill();
    m_process.waitForFinished();
}

std::optional<int> Child::WaitForPort() {
    const std::optional<QString> text = WaitForLine(QStringLiteral("port"));
    return text ? std::optional<int>(text->toInt()) : std::nullopt;
}

std::optional<Settings> Child::WaitForResult() {
    const std::optional<QString> text = WaitForLine(QStringLiteral("result"));
    if (!text) return std::nullopt;
    return Settings(text->split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

std::optional<QString> Child::WaitForLine(const QString& kind) {
    const QDeadlineTimer deadline(LongestWait);
    for (;;) {
        while (m_process.canReadLine()) {
            const QString line = QString::fromLocal8Bit(m_process.readLine()).trimmed();
            if (line.section(QLatin1Char(' '), 0, 0) == kind) return line.section(QLatin1Char(' '), 1);
            if (!line.startsWith(QLatin1String("failed "))) continue;
            m_failure = m_role + QStringLiteral(": ") + line.section(QLatin1Char(' '), 1);
            return std::nullopt;
        }
        if (m_process.waitForReadyRead(static_cast<int>(deadline.remainingTime()))) continue;
        const QString what =
            deadline.hasExpired() ? QStringLiteral("no %1 in time") : QStringLiteral("ended without %1");
        m_failure = m_role + QStringLiteral(": ") + what.arg(kind);
        return std::nullopt;
    }
}

}  // namespace bench
