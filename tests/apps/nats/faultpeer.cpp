// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/nats/faultpeer.h>

#include <QtCore/QFile>
#include <QtCore/QProcessEnvironment>

#include <csignal>

namespace {

constexpr std::chrono::seconds PeerPatience(40);

QString ClockFile(const QTemporaryDir& folder) {
    return folder.filePath(QStringLiteral("clock"));
}

}  // namespace

FaultPeer::FaultPeer() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("MCS_WRONG_CLOCK"), ClockFile(m_folder));
    environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(WRONG_CLOCK));
    m_program.SetEnvironment(environment);
}

bool FaultPeer::Start(const QStringList& words, std::chrono::seconds wrong) {
    SetClock(wrong);
    return m_program.Start(QStringLiteral(FAULT_PEER), words) &&
           !m_program.WaitForLine(QStringLiteral("ready"), PeerPatience).isNull();
}

// In its place: the program has the file in its memory.
void FaultPeer::SetClock(std::chrono::seconds wrong) {
    const qint64 offset = wrong.count();
    QFile file(ClockFile(m_folder));
    if (!file.open(QIODevice::ReadWrite)) return;
    file.write(reinterpret_cast<const char*>(&offset), sizeof(offset));
}

void FaultPeer::Freeze(bool isFrozen) {
    ::kill(static_cast<pid_t>(m_program.GetProcessId()), isFrozen ? SIGSTOP : SIGCONT);
}

FaultPeer::Account FaultPeer::Ask(const QByteArray& line) {
    m_program.Say(line);
    return {m_program.WaitForLine(QStringLiteral("sent "), PeerPatience).split(QLatin1Char(' '))};
}

int FaultPeer::Account::Of(const char* name) const {
    const int at = words.indexOf(QString::fromLatin1(name));
    return at < 0 ? -1 : words.value(at + 1).toInt();
}
