// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/steadyclock.h>
#include <platform/modbus/client/modbusconnection.h>
#include <platform/modbus/client/modbussettings.h>
#include <platform/modbus/client/reconnectdelay.h>
#include <platform/modbus/imodbustcpinterface.h>

#include <chrono>

class IModbusTcpInterfaceCallback;

/// Asks a module, and decides what an error means: when to connect again, and what the callback is told.
class ModbusTcpInterface final : public IModbusTcpInterface {
  public:
    /// The time since some moment; never goes back.
    using Clock = std::chrono::milliseconds (*)();

    /// Only the delay before connecting again goes by \a clock.
    ModbusTcpInterface(const ModbusAddress& address, const ModbusSettings& settings,
                       IModbusTcpInterfaceCallback& callback,
                       Clock clock = steadyclock::Now<std::chrono::milliseconds>);
    ~ModbusTcpInterface() override;

    void ReadInputDiscretes(unsigned short count) override;
    void Close() override;
    void Abort() override;

  private:
    ModbusConnection::Outcome Exchange(unsigned short count);
    ModbusConnection::Outcome Ask(unsigned short count, const QDeadlineTimer& deadline);
    void OnAnswer(unsigned bits);
    void OnError(unsigned error);

    const ModbusSettings m_settings;
    IModbusTcpInterfaceCallback& m_callback;
    const Clock m_clock;
    ModbusConnection m_connection;
    ReconnectDelay m_delay;
    unsigned m_lastError = 0;
    quint16 m_transaction = 0;
    bool m_isToldOpen = false;
};
