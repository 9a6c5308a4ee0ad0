// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/childprogram.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QString>

#include <deque>
#include <vector>

namespace soak {

/// The modules, simulated in a process of their own, and what is true of them. Modules count from 0 and are
/// at 127.0.0.1 and the addresses after it. Neither blocks nor waits once it was started.
class Plant {
  public:
    explicit Plant(int modules);

    static QString AddressOf(int module) { return QStringLiteral("127.0.0.%1").arg(module + 1); }
    static int ModuleAt(const QString& address) { return address.section(QLatin1Char('.'), 3).toInt() - 1; }

    int Count() const { return static_cast<int>(m_modules.size()); }
    /// False if it does not listen within some seconds.
    bool Start();
    quint16 Port() const { return m_port; }
    /// Ends it as a power cut does.
    void Kill();
    /// Starts it once more at the same port. IsListening() tells when it is there.
    void Restart();
    bool IsListening() const { return m_listening == Count(); }

    void SetFault(int module, const QString& fault);
    /// Whether the module has said that it has the fault set last.
    bool HasFault(int module) const;
    void SetStates(int module, quint32 states);
    bool HasStates(int module) const { return m_modules[Index(module)].unconfirmedStates == 0; }
    quint32 States(int module) const { return m_modules[Index(module)].history.back().states; }
    /// Whether these were its states at any time within the last \a ms.
    bool HeldStates(int module, quint32 states, qint64 ms) const;

    /// All that the modules were asked since Start(); of a process that was killed, as of the last
    /// AskForCounts().
    qint64 Questions() const;
    void AskForCounts() { m_process.Say("show"); }

  private:
    struct Held {
        quint32 states;
        qint64 until;  ///< ms of m_clock
    };
    struct Simulated {
        std::deque<Held> history;  ///< the last one holds now
        int unconfirmedStates = 0;
        bool isShown = false;  ///< what it says of its states next is no confirmation
        QString fault = QStringLiteral("none");
        QString confirmedFault = QStringLiteral("none");
        qint64 questions = 0;
        qint64 earlierQuestions = 0;  ///< of processes that were killed
    };

    static std::size_t Index(int module) { return static_cast<std::size_t>(module); }
    bool StartAt(quint16 port);
    void StartProcess(quint16 port);
    void ReadLine(const QString& line);
    void OnStatesTold(Simulated& module);

    std::vector<Simulated> m_modules;
    ChildProgram m_process{ChildProgram::EErrors::PassedOn};
    QElapsedTimer m_clock;
    quint16 m_port = 0;
    int m_listening = 0;
};

}  // namespace soak
