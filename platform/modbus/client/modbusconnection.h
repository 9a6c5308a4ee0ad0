// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/modbus/client/modbusaddress.h>
#include <platform/modbus/client/modbusmessage.h>
#include <platform/modbus/client/nativesocket.h>

#include <QtCore/QDeadlineTimer>

#include <atomic>
#include <mutex>

/// The connection to one module. Error codes are 0 for none. After an error answers may be out of step with
/// questions, so it has to be closed. Used by one thread, save for Abort().
class ModbusConnection {
  public:
    explicit ModbusConnection(const ModbusAddress& address) : m_address(address) {}
    ~ModbusConnection() { Close(); }
    ModbusConnection(const ModbusConnection&) = delete;
    ModbusConnection& operator=(const ModbusConnection&) = delete;

    bool IsOpen() const { return m_socket != nativesocket::NoHandle; }
    unsigned Open(const QDeadlineTimer& deadline);
    void Close();

    /// Ends what is going on, at once and for good. From any thread.
    void Abort();
    bool IsAborted() const { return m_isAborted; }

    /// What became of an exchange.
    struct Outcome {
        unsigned error = 0;
        unsigned bits = 0;          ///< without an error: bit i is input i
        bool isUnanswered = false;  ///< the peer had left, or left, before anything of its answer came
    };
    Outcome Ask(const ModbusQuestion& question, const QDeadlineTimer& deadline);

  private:
    Outcome Receive(const ModbusQuestion& question, const QDeadlineTimer& deadline);
    unsigned ErrorUnlessAborted(unsigned error) const;

    const ModbusAddress m_address;
    std::mutex m_mutex;  ///< so that Abort() meets no socket that is closed, and its number another's
    nativesocket::Handle m_socket = nativesocket::NoHandle;
    std::atomic<bool> m_isAborted{false};
};
