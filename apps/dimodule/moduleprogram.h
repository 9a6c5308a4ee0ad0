// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/dimodule/module.h>
#include <apps/dimodule/moduleoptions.h>
#include <apps/dimodule/script.h>

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <functional>
#include <memory>
#include <vector>

namespace dimodule {

/// The modules, and what commands, script and pattern do with them.
class ModuleProgram final : public QObject {
    Q_OBJECT

  public:
    using Print = std::function<void(const QString& line)>;

    /// \a print is given what the program has to say, line by line.
    ModuleProgram(const ModuleOptions& options, Print print);

    /// Starts to listen, and says where. False with the reason in \a error.
    bool Start(QString* error);
    /// Carries out \a line. What is wrong with it; empty if nothing is.
    QString Do(const QString& line);

  Q_SIGNALS:
    void Quit();
    /// It cannot go on.
    void Failed(const QString& error);

  private:
    bool LoadScript(QString* error);
    QString Perform(const Command& command);
    void Perform(const Command& command, int number);
    void SetStates(int number, quint32 states);
    void TellStates(int number);
    void TellFault(int number);
    void Show(int number);
    void ContinueScript();
    void StepPattern();

    ModuleOptions m_options;
    Print m_print;
    std::vector<std::unique_ptr<Module>> m_modules;
    Script m_script;
    std::size_t m_next = 0;  ///< command of the script
    QTimer m_scriptTimer;
    int m_step = 0;  ///< of the pattern
    QTimer m_patternTimer;
    std::mt19937 m_random;
};

}  // namespace dimodule
