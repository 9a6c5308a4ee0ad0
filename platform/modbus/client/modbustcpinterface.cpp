// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/modbustcpinterface.h>

#include <platform/modbus/imodbustcpinterfacecallback.h>
#include <platform/modbus/modbussystem.h>

ModbusTcpInterface::ModbusTcpInterface(const ModbusAddress& address, const ModbusSettings& settings,
                                       IModbusTcpInterfaceCallback& callback, Clock clock)
    : m_settings(settings), m_callback(callback), m_clock(clock), m_connection(address) {}

ModbusTcpInterface::~ModbusTcpInterface() = default;

void ModbusTcpInterface::ReadInputDiscretes(unsigned short count) {
    if (m_connection.IsAborted()) return;
    // The module is spared, whoever asks is not: what fails goes on failing until something else is known.
    if (!m_delay.IsOver(m_clock())) return m_callback.OnError(m_lastError);
    const ModbusConnection::Outcome outcome = Exchange(count);
    // Nobody waits for the outcome any more, least of all for an error that is none of the module's.
    if (m_connection.IsAborted()) return;
    if (outcome.error == 0)
        OnAnswer(outcome.bits);
    else
        OnError(outcome.error);
}

ModbusConnection::Outcome ModbusTcpInterface::Exchange(unsigned short count) {
    ModbusConnection::Outcome outcome;
    outcome.error = modbussystem::CodeOf(modbussystem::EError::InvalidArgument);
    if (count == 0 || count > MaxInputs) return outcome;
    const QDeadlineTimer deadline(m_settings.responseTimeout, Qt::PreciseTimer);
    const bool wasOpen = m_connection.IsOpen();
    outcome = Ask(count, deadline);
    // Modules drop connections that were idle for a while. That is no alarm, as long as they come back.
    if (wasOpen && outcome.isUnanswered && !m_connection.IsAborted()) {
        m_connection.Close();
        outcome = Ask(count, deadline);
    }
    return outcome;
}

ModbusConnection::Outcome ModbusTcpInterface::Ask(unsigned short count, const QDeadlineTimer& deadline) {
    ModbusConnection::Outcome outcome;
    if (!m_connection.IsOpen()) outcome.error = m_connection.Open(deadline);
    if (outcome.error != 0) return outcome;
    ModbusQuestion question;
    question.transaction = ++m_transaction;
    question.unit = static_cast<quint8>(m_settings.unitId);
    question.function = static_cast<quint8>(m_settings.functionCode);
    question.start = static_cast<quint16>(m_settings.startAddress);
    question.count = count;
    return m_connection.Ask(question, deadline);
}

void ModbusTcpInterface::OnAnswer(unsigned bits) {
    m_delay.OnSuccess();
    if (!m_isToldOpen) {
        m_isToldOpen = true;
        m_callback.OnOpened();
    }
    m_callback.OnInputDiscretes(bits);
}

void ModbusTcpInterface::OnError(unsigned error) {
    m_connection.Close();
    m_delay.OnError(m_clock());
    m_lastError = error;
    m_callback.OnError(error);
    if (!m_isToldOpen) return;
    m_isToldOpen = false;
    m_callback.OnClosed();
}

void ModbusTcpInterface::Close() {
    m_connection.Close();
    if (!m_isToldOpen) return;
    m_isToldOpen = false;
    m_callback.OnClosed();
}

void ModbusTcpInterface::Abort() {
    m_connection.Abort();
}
