// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/pollinterval.h>

#include <platform/modbus/imodbustcpinterface.h>
#include <platform/modbus/imodbustcpinterfacecallback.h>

#include <QtCore/QObject>
#include <QtCore/QString>

#include <memory>
#include <optional>
#include <string>

class QTimer;

/// Asks one module for its inputs at every tick of a timer, and tells what changes. Lives on its poll thread.
///
/// What was read over one connection is no reading of the next: when a connection ends, the inputs count as
/// all 0 again, as at the start, and the next answer is told unless it is all 0 too. After an error, further
/// errors are all that is told, and once that the module answers again, although the interface connects again
/// (fixed: error-stays): a module in error stays so until somebody connects it anew.
class PollThreadImpl final : public QObject, public IModbusTcpInterfaceCallback {
    Q_OBJECT

  public:
    /// \a address is "TCP:<ip>:<port>".
    PollThreadImpl(const QString& address, unsigned short inputCount, PollInterval pollInterval);
    ~PollThreadImpl() override;

    /// Starts to poll. An address that cannot be right is told of here.
    void Start();
    /// Ends a request that hangs, and makes all further ones fail. From any thread.
    void Abort();

    void OnOpened() override;
    void OnError(unsigned code) override;
    void OnClosed() override;
    void OnInputDiscretes(unsigned bits) override;

  Q_SIGNALS:  // fixed: signal-arguments
    void InputDiscretesChanged(unsigned short iNumInputsRead, unsigned long iInputDiscretes);
    void InterfaceClose();
    void InterfaceError(int errorcode, QString errortext);
    /// Comes after the inputs that were read first, so that whoever hears of the connection knows them.
    void InterfaceOpen();
    /// The first answer after an error. What it says does not count.
    void InterfaceAnswersAgain();
    /// Every answer, whatever it says.
    void InterfaceAnswered();

  public Q_SLOTS:
    void SlotOnTimer();

  private:
    const std::wstring m_address;
    const unsigned short m_inputCount;
    unsigned m_inputDiscretes = 0;  ///< read last
    bool m_isOpening = false;       ///< opened, and nothing read yet
    bool m_hasFailed = false;
    bool m_isAnsweringAgain = false;  ///< since it failed last
    std::optional<unsigned> m_creationError;
    QTimer* m_timer;
    std::unique_ptr<IModbusTcpInterface> m_interface;  ///< null where the address cannot be right
};
