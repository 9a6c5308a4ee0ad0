// SPDX-License-Identifier: Apache-2.0
#include <tests/soak/plant.h>

#include <tests/soak/words.h>

#include <apps/common/eventwait.h>

#include <QtCore/QRegularExpression>
#include <QtNetwork/QTcpServer>

#include <algorithm>
#include <limits>

namespace soak {

namespace {

constexpr std::chrono::seconds Patience(20);
constexpr qint64 Now = std::numeric_limits<qint64>::max();

/// Each module would choose another one by itself.
quint16 FreePort() {
    QTcpServer server;
    server.listen(QHostAddress(Plant::AddressOf(0)), 0);
    return server.serverPort();
}

}  // namespace

Plant::Plant(int modules) : m_modules(Index(modules)) {
    for (Simulated& module : m_modules)
        module.history.push_back({words::AllReleased, Now});
    m_clock.start();
    m_process.SetLineHandler([this](const QString& line) { ReadLine(line); });
}

// Somebody else may have taken the port at one of the addresses.
bool Plant::Start() {
    constexpr int Attempts = 5;
    for (int i = 0; i < Attempts; ++i)
        if (StartAt(FreePort())) return true;
    return false;
}

bool Plant::StartAt(quint16 port) {
    m_port = port;
    StartProcess(port);
    eventwait::Until([this] { return IsListening() || !m_process.IsRunning(); }, Patience);
    return IsListening();
}

void Plant::StartProcess(quint16 port) {
    Kill();
    m_process.Start(QStringLiteral(DIMODULE),
                    {QStringLiteral("--modules"), QString::number(Count()), QStringLiteral("--inputs"),
                     QString::number(words::Inputs), QStringLiteral("--listen"),
                     QStringLiteral("%1:%2").arg(AddressOf(0)).arg(port)});
}

void Plant::Kill() {
    if (!m_process.IsRunning()) return;
    m_process.Kill();
    m_listening = 0;
    for (Simulated& module : m_modules) {
        module.earlierQuestions += module.questions;
        module.questions = 0;
        module.fault = module.confirmedFault = QStringLiteral("none");
        for (Held& held : module.history)
            held.until = std::min(held.until, m_clock.elapsed());
        module.history.push_back({words::AllReleased, Now});
        module.unconfirmedStates = 0;
        module.isShown = false;
    }
}

void Plant::Restart() {
    StartProcess(m_port);
}

void Plant::SetFault(int module, const QString& fault) {
    m_modules[Index(module)].fault = fault;
    m_process.Say(QStringLiteral("fault %1/%2").arg(module + 1).arg(fault).toLatin1());
}

bool Plant::HasFault(int module) const {
    const Simulated& simulated = m_modules[Index(module)];
    return simulated.confirmedFault == simulated.fault;
}

void Plant::SetStates(int module, quint32 states) {
    Simulated& simulated = m_modules[Index(module)];
    // What it reads is true until it has read the command.
    simulated.history.push_back({states, Now});
    ++simulated.unconfirmedStates;
    m_process.Say(QStringLiteral("states %1/%2").arg(module + 1).arg(states).toLatin1());
}

bool Plant::HeldStates(int module, quint32 states, qint64 ms) const {
    const qint64 since = m_clock.elapsed() - ms;
    const auto& history = m_modules[Index(module)].history;
    return std::any_of(history.begin(), history.end(),
                       [&](const Held& held) { return held.states == states && held.until >= since; });
}

qint64 Plant::Questions() const {
    qint64 sum = 0;
    for (const Simulated& module : m_modules)
        sum += module.earlierQuestions + module.questions;
    return sum;
}

void Plant::ReadLine(const QString& line) {
    static const QRegularExpression aboutModule(QStringLiteral("^module (\\d+) (fault:|keyed:|at) ?(.*)$"));
    static const QRegularExpression questions(QStringLiteral("(\\d+) questions$"));
    if (line.startsWith(QLatin1String("listening on "))) ++m_listening;
    const QRegularExpressionMatch match = aboutModule.match(line);
    if (!match.hasMatch()) return;
    Simulated& module = m_modules.at(Index(match.captured(1).toInt() - 1));
    const QString what = match.captured(2);
    if (what == QLatin1String("fault:")) module.confirmedFault = match.captured(3);
    if (what == QLatin1String("at")) module.questions = questions.match(line).captured(1).toLongLong();
    if (what == QLatin1String("keyed:") && !module.isShown) OnStatesTold(module);
    module.isShown = what == QLatin1String("at");
}

/// The states before those that it has not read yet have ended now.
void Plant::OnStatesTold(Simulated& module) {
    constexpr std::size_t Remembered = 1000;
    if (module.unconfirmedStates == 0) return;
    const std::size_t current = module.history.size() - Index(module.unconfirmedStates--);
    module.history[current - 1].until = m_clock.elapsed();
    if (module.history.size() > Remembered) module.history.pop_front();
}

}  // namespace soak
