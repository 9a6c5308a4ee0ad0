// SPDX-License-Identifier: Apache-2.0
#include "stalledrole.h"

#include <QtCore/QCborStreamWriter>
#include <QtCore/QtEndian>
#include <QtNetwork/QHostAddress>

namespace bench {

namespace {

enum EMessage { Hello = 1, Subscribe = 4 };

constexpr int ReadBuffer = 256;  // bytes: when Qt has so many it leaves the rest to the system

template <class Fill>
QByteArray Frame(EMessage message, quint64 elements, Fill fill) {
    QByteArray body;
    QCborStreamWriter writer(&body);
    writer.startArray(elements + 1);
    writer.append(int{message});
    fill(writer);
    writer.endArray();
    const quint32 length = qToBigEndian(static_cast<quint32>(body.size()));
    return QByteArray(reinterpret_cast<const char*>(&length), sizeof length) + body;
}

}  // namespace

StalledClient::StalledClient(const Settings& settings) : Role(settings) {}

void StalledClient::Start() {
    m_socket.setReadBufferSize(ReadBuffer);
    connect(&m_socket, &QTcpSocket::connected, this, &StalledClient::SayHello);
    connect(&m_socket, &QTcpSocket::readyRead, this, &StalledClient::StopReading);
    m_socket.connectToHost(QHostAddress(QHostAddress::LocalHost),
                           static_cast<quint16>(GetSettings().Int(QStringLiteral("port"))));
}

void StalledClient::SayHello() {
    m_socket.write(Frame(Hello, 5, [](QCborStreamWriter& writer) {
        writer.append(1);
        for (const char* text : {"stalled", "bench", "", ""})
            writer.append(QLatin1String(text));
    }));
}

// The first words are the welcome, what follows them shows that the subscription holds.
void StalledClient::StopReading() {
    if (m_hasSubscribed) {
        if (m_socket.bytesAvailable() >= ReadBuffer) TellResult(Settings());
        return;
    }
    m_hasSubscribed = true;
    m_socket.readAll();
    m_socket.write(Frame(Subscribe, 2, [](QCborStreamWriter& writer) {
        writer.append(1);
        writer.append(QLatin1String("/Bench"));
    }));
}

}  // namespace bench
