// SPDX-License-Identifier: Apache-2.0
#include <platform/config/store/cfglock.h>

#include <platform/config/cfgcenter.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QElapsedTimer>
#include <QtCore/QSysInfo>
#include <QtCore/QThread>

namespace {

/// Others hold it for a few milliseconds.
constexpr unsigned long PollIntervalMs = 2;

}  // namespace

CfgLock::EOutcome CfgLock::Wait(std::chrono::milliseconds patience) {
    QElapsedTimer waited;
    waited.start();
    for (;;) {
        const EOutcome outcome = Try();
        if (outcome != EOutcome::Taken || waited.elapsed() >= patience.count()) return outcome;
        QThread::msleep(PollIntervalMs);
    }
}

QByteArray CfgLock::OwnLine() {
    const QString name = CfgCenter::GetAppName();
    return QStringLiteral("%1 (process %2 on %3) since %4\n")
        .arg(name.isEmpty() ? QStringLiteral("a program") : name,
             QString::number(QCoreApplication::applicationPid()), QSysInfo::machineHostName(),
             QDateTime::currentDateTimeUtc().toString(Qt::ISODate))
        .toUtf8();
}

QString CfgLock::GetHolder() const {
    QString line = QString::fromUtf8(ReadHolder()).section(QLatin1Char('\n'), 0, 0).trimmed();
    for (QChar& character : line)
        if (!character.isPrint()) character = QLatin1Char('?');
    return line.isEmpty() ? QStringLiteral("another process") : line;
}
