// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/faultlink.h>

#include <QtCore/QTimer>
#include <QtNetwork/QHostAddress>

namespace {

/// So much may wait here; beyond that the sender is held up, as a network would.
constexpr qint64 Room = 64 * 1024;
constexpr int RateSlice = 50;  // ms

}  // namespace

FaultLink::FaultLink(qintptr client, const Faults (&faults)[2], std::function<void(FaultLink*)> onEnd)
    : m_onEnd(std::move(onEnd)) {
    m_clock.start();
    m_client.setSocketDescriptor(client);
    m_client.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    Way& toServer = Of(EDirection::ToServer);
    Way& toClient = Of(EDirection::ToClient);
    toServer.from = toClient.to = &m_client;
    toServer.to = toClient.from = &m_server;
    toServer.faults = faults[0];
    toClient.faults = faults[1];
    Connect(toServer);
    Connect(toClient);
}

FaultLink::~FaultLink() {
    m_client.disconnect(this);
    m_server.disconnect(this);
}

void FaultLink::Connect(Way& way) {
    way.from->setReadBufferSize(Room);
    connect(way.from, &QTcpSocket::readyRead, this, [this, &way] { Pump(way); });
    connect(way.from, &QTcpSocket::disconnected, this, [this, &way] { OnEnd(way); });
    connect(way.from, &QTcpSocket::errorOccurred, this, [this, &way] {
        if (way.from->state() == QAbstractSocket::UnconnectedState) OnEnd(way);
    });
    connect(way.to, &QTcpSocket::bytesWritten, this, [this, &way] { Pump(way); });
    connect(way.to, &QTcpSocket::connected, this, [this, &way] {
        way.to->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        Pump(way);
    });
}

void FaultLink::Start(int target) {
    m_server.connectToHost(QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(target));
}

void FaultLink::SetFaults(EDirection direction, const Faults& faults) {
    Of(direction).faults = faults;
    PumpLater(Of(direction));
}

void FaultLink::PumpLater(Way& way, int milliseconds) {
    if (way.isPumpDue) return;
    way.isPumpDue = true;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, this, [this, &way] {
        way.isPumpDue = false;
        Pump(way);
    });
}

// As much as there is, may be passed now, and fits.
void FaultLink::Pump(Way& way) {
    if (m_isOver || way.faults.isStalled) return;
    if (way.faults.isLost) {
        way.from->readAll();
        return;
    }
    if (way.to->state() != QAbstractSocket::ConnectedState) return;
    TakeDelayed(way);
    if (way.faults.rate != 0) return PumpSlowly(way);
    while (!m_isOver && way.from->bytesAvailable() != 0 && way.to->bytesToWrite() < Room) {
        if (way.faults.delay != 0) {
            way.delayed.push_back({m_clock.elapsed() + way.faults.delay, way.from->read(Room)});
            PumpLater(way, way.faults.delay);
            continue;
        }
        Pass(way, way.from->read(way.faults.chunk != 0 ? way.faults.chunk : Room));
        if (way.faults.chunk != 0) return PumpLater(way);
    }
    const bool isDone = way.delayed.empty() && way.from->bytesAvailable() == 0 && way.to->bytesToWrite() == 0;
    if (!m_isOver && way.hasEnded && isDone) End();
}

void FaultLink::PumpSlowly(Way& way) {
    const qint64 now = m_clock.elapsed();
    if (now >= way.nextAt && way.from->bytesAvailable() != 0) {
        way.nextAt = now + RateSlice;
        Pass(way, way.from->read(way.faults.rate * RateSlice / 1000));
    }
    if (m_isOver) return;
    if (way.from->bytesAvailable() != 0) return PumpLater(way, RateSlice);
    if (way.hasEnded && way.to->bytesToWrite() == 0) End();
}

void FaultLink::TakeDelayed(Way& way) {
    while (!m_isOver && !way.delayed.empty() && way.delayed.front().due <= m_clock.elapsed()) {
        const QByteArray bytes = way.delayed.front().bytes;
        way.delayed.pop_front();
        Pass(way, bytes);
    }
    if (!way.delayed.empty())
        PumpLater(way, static_cast<int>(qMax<qint64>(1, way.delayed.front().due - m_clock.elapsed())));
}

void FaultLink::Pass(Way& way, QByteArray bytes) {
    if (bytes.size() > way.left) bytes.truncate(static_cast<int>(way.left));
    way.to->write(bytes);
    way.to->flush();
    way.passed += bytes.size();
    way.left -= bytes.size();
    if (way.left == 0) Cut();
}

void FaultLink::OnEnd(Way& way) {
    way.hasEnded = true;
    if (way.faults.isLost || way.faults.isStalled) return;
    if (way.to->state() != QAbstractSocket::ConnectedState) return End();
    Pump(way);
}

// One side has closed, and the other has got everything.
void FaultLink::End() {
    if (m_isOver) return;
    m_isOver = true;
    m_client.disconnectFromHost();
    m_server.disconnectFromHost();
    m_onEnd(this);
}

void FaultLink::Cut() {
    if (m_isOver) return;
    m_isOver = true;
    m_client.abort();
    m_server.abort();
    m_onEnd(this);
}
