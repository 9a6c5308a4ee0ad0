// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/modbusconnection.h>

#include <platform/modbus/client/modbuserror.h>
#include <platform/modbus/modbussystem.h>

using modbussystem::EError;
using nativesocket::EWaiting;

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
    if (error != 0) Close();
    return error;
}

void ModbusConnection::Close() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!IsOpen()) return;
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
    quint8 answer[ModbusQuestion::MaxAnswerSize];
    int size = 0;
    int wanted = ModbusQuestion::HeaderSize;
    while (size < wanted) {
        outcome.error = nativesocket::WaitForInput(m_socket, deadline, m_isAborted);
        // Something may be there, but late: as of an answer of which now and then another byte comes.
        if (outcome.error == 0 && deadline.hasExpired())
            outcome.error = modbussystem::CodeOf(EError::TimedOut);
        if (outcome.error != 0) return outcome;
        size += nativesocket::Take(m_socket, answer + size, wanted - size, &outcome.error);
        outcome.isUnanswered = size == 0 && outcome.error != 0;
        if (outcome.error != 0) return outcome;
        if (size == ModbusQuestion::HeaderSize) wanted = question.AnswerSize(answer);
    }
    outcome.error =
        wanted == 0 ? modbuserror::InvalidAnswer : question.CheckAnswer(answer, size, &outcome.bits);
    return outcome;
}

unsigned ModbusConnection::ErrorUnlessAborted(unsigned error) const {
    return m_isAborted ? modbussystem::CodeOf(EError::Interrupted) : error;
}
