// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/pollinterval.h>

#include <QtCore/QDateTime>
#include <QtCore/QString>
#include <QtCore/QThread>

#include <atomic>
#include <mutex>

class PollThreadImpl;

/// Polls one data module on a thread of its own. The object and its signals belong to the thread that made
/// it, which is told through its event loop.
class PollThread : public QThread {
    Q_OBJECT

  public:
    explicit PollThread(QObject* parent = nullptr);
    ~PollThread() override;

    /// Where the module at the IP address \a address is asked.
    static QString InterfaceAddress(const QString& address);
    /// What to poll from the next start on: the module at the IP address \a address, on the port of
    /// Modbus/TCP, every \a pollInterval.
    void Setup(const QString& address, unsigned short inputCount, PollInterval pollInterval);
    /// Starts to poll. \return 0, or the error that stands in the way: the system has no thread to give, or
    /// the process has as many poll threads as it has descriptors for, and would not survive one more.
    unsigned Start();
    /// Ends a request that hangs, and waits until the thread has ended, which quit() asks it to. What it has
    /// told and nobody has heard yet is then never heard: it is about a connection that is no more.
    void WaitForEnd();
    /// When the module answered last; null if it never did. Any thread.
    QDateTime GetLastAnswer() const;

  Q_SIGNALS:  // fixed: signal-arguments
    void InputDiscretesChanged(unsigned short iNumInputsRead, unsigned long iInputDiscretes);
    void InterfaceOpen();
    void InterfaceClose();
    /// Comes with every poll that fails, unless the same error is still on its way: a main thread that is
    /// busy finds no queue of what it knows.
    void InterfaceError(int error, QString errortext);
    /// Once after errors. The module stays in error until it is started anew.
    void InterfaceAnswersAgain();

  protected:
    void run() override;

  private:
    void TellError(int error, const QString& text);

    std::mutex m_mutex;  ///< guards what follows, up to m_impl
    QString m_address;   ///< "TCP:<ip>:<port>"
    unsigned short m_inputCount = 0;
    PollInterval m_pollInterval{};
    PollThreadImpl* m_impl = nullptr;       ///< while the thread runs; lives on it
    bool m_isCounted = false;               ///< among those started; of the thread that made it, as the count
    std::atomic<int> m_errorOnItsWay{0};    ///< the last one that was sent and not heard; 0: none
    std::atomic<qint64> m_lastAnswerMs{0};  ///< since the epoch; 0: never
    static int s_count;
};
