// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/stormpeer.h>

#include <tests/platform/vtclient/treetext.h>

#include <QtCore/QCoreApplication>
#include <QtNetwork/QHostAddress>

using Text = values::Value<QString>;

namespace {

bool IsServer(RandomEdits::ERole role) {
    return role == RandomEdits::ERole::Device;
}

}  // namespace

StormPeer::StormPeer(RandomEdits::ERole role, int controlPort, unsigned seed)
    : m_edits(IsServer(role) ? QStringLiteral("/S") : QStringLiteral("/L"), role, seed),
      m_role(role),
      m_root(IsServer(role) ? QStringLiteral("/S") : QStringLiteral("/L")),
      m_name(QString::number(seed)) {
    connect(&m_control, &QTcpSocket::readyRead, this, &StormPeer::OnCommand);
    connect(&m_control, &QTcpSocket::disconnected, QCoreApplication::instance(), &QCoreApplication::quit);
    connect(&m_acting, &QTimer::timeout, this, &StormPeer::Act);
    m_control.connectToHost(QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(controlPort));
    Tell(IsServer(role) ? QStringLiteral("server") : QStringLiteral("client"));
}

void StormPeer::Tell(const QString& line) {
    m_control.write(line.toUtf8() + '\n');
}

void StormPeer::OnCommand() {
    while (m_control.canReadLine()) {
        const QByteArray command = m_control.readLine().trimmed();
        if (command == "act") m_acting.start(1);
        if (command == "rest") m_acting.stop();
        if (command == "state") Tell(QStringLiteral("state ") + State());
    }
}

QString StormPeer::State() const {
    return TreeText(m_tree.FindItem(m_root)) + ExtraState();
}

// The device logs, the operator takes notes.
void StormPeer::Act() {
    for (int i = m_edits.Chance(4); i > 0; --i)
        m_edits.Step();
    values::TreeItem* const mine = m_tree.FindItem(Path(IsServer(m_role) ? "log" : "notes"));
    if (auto* const text = dynamic_cast<Text*>(mine))
        text->SetValue(m_name + QLatin1Char('.') + QString::number(++m_sent));
}

void StormPeer::HearMessages() {
    m_ear.Hear(dynamic_cast<Text*>(m_tree.FindItem(Path(IsServer(m_role) ? "notes" : "log"))));
}

void StormPeer::Ear::Hear(Text* text) {
    if (text == m_text) return;
    if (m_text != nullptr) m_text->DeleteObserver(this);
    m_text = text;
    if (m_text != nullptr) m_text->AddObserver(this);
}

void StormPeer::Ear::Update(Observable* /*source*/, TChangeCode code) {
    if (code == changecode::StateChanged && m_text->GetState() == values::GoingAway) return Hear(nullptr);
    if (code != changecode::ContentChanged) return;
    const QString message = m_text->GetValue();
    if (message.isEmpty()) return;  // nothing was sent yet
    const QString sender = message.section(QLatin1Char('.'), 0, 0);
    const int number = message.section(QLatin1Char('.'), 1).toInt();
    if (sender == m_lastSender && number <= m_lastNumber)
        m_peer.Tell(QStringLiteral("error message %1 after %2.%3").arg(message, sender).arg(m_lastNumber));
    m_lastSender = sender;
    m_lastNumber = number;
}
