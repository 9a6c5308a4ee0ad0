// SPDX-License-Identifier: Apache-2.0
#include "democlient.h"

#include <apps/common/safetext.h>
#include <apps/common/terminal.h>

#include <devicecontrol/multichannelserver/common/mpxorvhandle.h>

#include <platform/values/valueaccess.h>

#include <QtCore/QStringList>

namespace {

const QString& BasePath() {
    static const QString path = QStringLiteral("/Server");
    return path;
}

QString Request(const QString& name) {
    return QStringLiteral("/Mine/Request/") + name;
}

void Print(const QString& line) {
    QString error;
    terminal::WriteOutput((safetext::Escaped(line) + QLatin1Char('\n')).toUtf8(), &error);
}

}  // namespace

DemoClient::DemoClient() : m_answer(*this) {
    m_client.AddObserver(this);
}

DemoClient::~DemoClient() {
    m_client.DeleteObserver(this);
    m_answer.End();
    m_client.DisconnectFromServer();
}

bool DemoClient::Connect(const QString& address, int port) {
    if (!m_client.ConnectToServer(address, port)) return false;
    m_client.ConnectToMCSControlTree(BasePath(), StatusSegment);
    m_handle = m_client.CreateAndConnectDynamicMpxORV(QStringLiteral("/Mine"));
    return m_handle != nullptr;
}

void DemoClient::Update(Observable* source, TChangeCode code) {
    if (source == static_cast<Observable*>(&m_client)) return OnClientCode(code);
    if (m_answer.EndIfGoingAway(source, code)) return;
    if (m_answer.Is(source) && code == changecode::ContentChanged)
        Print(QStringLiteral("answer ") + m_answer->GetValue());
}

void DemoClient::OnClientCode(TChangeCode code) {
    switch (code) {
        case serverclientcode::DisconnectedFromServer:
            return Print(QStringLiteral("lost"));
        case serverclientcode::ControlTreeConnected:
            return Print(QStringLiteral("status mirrored"));
        case serverclientcode::MpxORVConnected:
            FollowAnswers();
            return Print(QStringLiteral("connected as ") + m_handle->GetName());
        default:
            return;
    }
}

void DemoClient::FollowAnswers() {
    const QString path = Request(QStringLiteral("Answer"));
    m_answer.Begin(values::FindValue<values::Value<QString>>(path, nullptr, nullptr));
}

void DemoClient::Press(const char* button) {
    const QString path = Request(QString::fromLatin1(button));
    auto* const value = values::FindValue<values::Value<bool>>(path, nullptr, nullptr);
    if (value != nullptr) value->SetValue(true);
}

void DemoClient::Obey(const QString& line) {
    const QStringList words = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words.isEmpty()) return;
    const QString& what = words.first();
    if (what == QLatin1String("master")) return Press("BecomeMaster");
    if (what == QLatin1String("restart")) return Press("RestartJob");
    if (what == QLatin1String("bit")) return Press("BuiltInTest");
    if (what == QLatin1String("calibrate")) return Press("Calibrate");
    const QString path = Request(QStringLiteral("Frequency"));
    auto* const frequency = values::FindValue<values::ValueNumeric<double>>(path, nullptr, nullptr);
    if (what == QLatin1String("tune") && words.size() == 2 && frequency != nullptr)
        frequency->SetValue(words.at(1).toDouble());
}
