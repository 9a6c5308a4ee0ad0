// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/modbus/client/modbustcpinterface.h>
#include <platform/modbus/imodbustcpinterfacecallback.h>
#include <platform/modbus/modbustcpinterfacecreator.h>

#include <platform/modbus/modbussystem.h>
#include <tests/platform/modbus/faultypeer.h>
#include <tests/support/printing.h>

#include <gmock/gmock.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QString>

#include <atomic>
#include <cerrno>
#include <functional>
#include <memory>
#include <vector>

/// Writes down what it is told: "opened", "closed", "error 111", "bits 3f".
class RecordingCallback final : public IModbusTcpInterfaceCallback {
  public:
    void OnOpened() override { Add(QStringLiteral("opened")); }
    void OnClosed() override { Add(QStringLiteral("closed")); }
    void OnError(unsigned code) override {
        lastError = code;
        Add(Error(code));
    }
    void OnInputDiscretes(unsigned bits) override { Add(Bits(bits)); }

    static QString Bits(unsigned bits) { return QStringLiteral("bits %1").arg(bits, 0, 16); }
    static QString Error(unsigned code) { return QStringLiteral("error %1").arg(ModbusErrorText(code)); }

    std::vector<QString> events;
    unsigned lastError = 0;

  private:
    void Add(const QString& event) { events.push_back(event); }
};

/// What it is told where nobody listens: the text is the system's.
inline QString RefusedConnection() {
#ifdef Q_OS_WIN
    constexpr unsigned Code = 10061;  // WSAECONNREFUSED
#else
    constexpr unsigned Code = ECONNREFUSED;
#endif
    return RecordingCallback::Error(Code);
}

/// An interface to a peer, with a clock of its own for the delay after errors.
class InterfaceTest : public testing::Test {
  protected:
    InterfaceTest() {
        now = 0;
        settings.responseTimeout = std::chrono::seconds(5);
    }

    /// Before anything goes that the peer uses.
    void TearDown() override {
        interface.reset();
        peer.reset();
    }

    FaultyPeer& Listen(FaultyPeer::Answerer answerer) {
        peer = std::make_unique<FaultyPeer>(std::move(answerer));
        Connect(peer->Port());
        return *peer;
    }
    void Connect(quint16 port) {
        ModbusAddress address;
        address.ip = 0x7F000001;
        address.port = port;
        interface = std::make_unique<ModbusTcpInterface>(
            address, settings, callback, [] { return std::chrono::milliseconds(now.load()); });
    }

    /// What the callback is told during one request.
    std::vector<QString> Read(unsigned short count = 12) {
        callback.events.clear();
        interface->ReadInputDiscretes(count);
        return callback.events;
    }
    static void LetDelayPass() { now += ReconnectDelay::Last.count(); }

    static QString Bits(unsigned bits) { return RecordingCallback::Bits(bits); }
    static QString Error(modbussystem::EError error) {
        return RecordingCallback::Error(modbussystem::CodeOf(error));
    }
    static QString Error(unsigned code) { return RecordingCallback::Error(code); }
    static QString Opened() { return QStringLiteral("opened"); }
    static QString Closed() { return QStringLiteral("closed"); }

    static inline std::atomic<qint64> now{0};  ///< ms
    ModbusSettings settings;
    RecordingCallback callback;
    std::unique_ptr<FaultyPeer> peer;
    std::unique_ptr<ModbusTcpInterface> interface;
};
