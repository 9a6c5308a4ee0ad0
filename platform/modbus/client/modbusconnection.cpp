// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/modbusconnection.h>

#include <platform/modbus/client/modbuserror.h>
#include <platform/modbus/modbussystem.h>

#include <modbus.h>

#include <algorithm>

using modbussystem::EError;
using nativesocket::EWaiting;

ModbusConnection::ModbusConnection(const ModbusAddress& address)
    // The address given to libmodbus is of no use: the socket is connected here.
    : m_address(address), m_context(modbus_new_tcp("127.0.0.1", MODBUS_TCP_DEFAULT_PORT)) {
    Q_CHECK_PTR(m_context.get());
    // No time-out between bytes: the whole answer has to come in time.
    modbus_set_byte_timeout(m_context.get(), 0, 0);
    modbus_set_error_recovery(m_context.get(), MODBUS_ERROR_RECOVERY_NONE);
}

ModbusConnection::~ModbusConnection() {
    Close();
}

void ModbusConnection::ContextDeleter::operator()(_modbus* context) const {
    modbus_free(context);
}

unsigned ModbusConnection::Open(const QDeadlineTimer& deadline) {
    unsigned error = 0;
    const nativesocket::Handle socket = nativesocket::Open(&error);
    if (socket == nativesocket::NoHandle) return error;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_socket = socket;
    }
    // Looked at only now, so that an Abort() that did not meet the socket is met here.
    if (!m_isAborted)
        error = nativesocket::Connect(socket, m_address.ip, m_address.port, deadline, m_isAborted);
    error = ErrorUnlessAborted(error);
    if (error != 0)
        Close();
    else
        modbus_set_socket(m_context.get(), static_cast<int>(socket));
    return error;
}

void ModbusConnection::Close() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!IsOpen()) return;
    modbus_set_socket(m_context.get(), -1);
    nativesocket::Close(m_socket);
    m_socket = nativesocket::NoHandle;
}

void ModbusConnection::Abort() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isAborted = true;
    if (IsOpen()) nativesocket::Interrupt(m_socket);
}

ModbusConnection::Outcome ModbusConnection::Ask(const ModbusQuestion& question,
                                                const QDeadlineTimer& deadline) {
    Outcome outcome;
    // What waits already is the answer to nothing: a duplicate, or one that was late.
    const EWaiting waiting = nativesocket::Look(m_socket, &outcome.error);
    if (waiting == EWaiting::Bytes) outcome.error = modbuserror::UnaskedBytes;
    outcome.isUnanswered = waiting == EWaiting::End;
    if (waiting == EWaiting::Nothing) {
        const auto bytes = question.ToBytes();
        outcome.error = nativesocket::Send(m_socket, bytes.data(), static_cast<int>(bytes.size()));
        outcome.isUnanswered = outcome.error != 0;
    }
    if (outcome.error == 0) outcome = Receive(question, deadline);
    outcome.error = ErrorUnlessAborted(outcome.error);
    return outcome;
}

ModbusConnection::Outcome ModbusConnection::Receive(const ModbusQuestion& question,
                                                    const QDeadlineTimer& deadline) {
    Outcome outcome;
    outcome.error = nativesocket::WaitForInput(m_socket, deadline, m_isAborted);
    if (outcome.error != 0) return outcome;
    outcome.isUnanswered = nativesocket::Look(m_socket, &outcome.error) == EWaiting::End;
    if (outcome.isUnanswered) return outcome;

    constexpr qint64 SecondUs = 1000000;
    const qint64 remainingUs = std::max<qint64>(deadline.remainingTimeNSecs() / 1000, 1);
    modbus_set_response_timeout(m_context.get(), static_cast<quint32>(remainingUs / SecondUs),
                                static_cast<quint32>(remainingUs % SecondUs));
    quint8 answer[MODBUS_TCP_MAX_ADU_LENGTH];
    nativesocket::ForgetLastError();
    const int size = modbus_receive_confirmation(m_context.get(), answer);
    outcome.error =
        size == -1 ? nativesocket::LastError() : question.CheckAnswer(answer, size, &outcome.bits);
    return outcome;
}

unsigned ModbusConnection::ErrorUnlessAborted(unsigned error) const {
    return m_isAborted ? modbussystem::CodeOf(EError::Interrupted) : error;
}
