// SPDX-License-Identifier: Apache-2.0
#include <apps/dimodule/moduleprogram.h>

#include <utility>

namespace dimodule {

using EAction = Command::EAction;

ModuleProgram::ModuleProgram(const ModuleOptions& options, Print print)
    : m_options(options), m_print(std::move(print)), m_random(options.seed) {
    m_scriptTimer.setSingleShot(true);
    m_scriptTimer.setTimerType(Qt::PreciseTimer);
    m_patternTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_scriptTimer, &QTimer::timeout, this, &ModuleProgram::ContinueScript);
    connect(&m_patternTimer, &QTimer::timeout, this, &ModuleProgram::StepPattern);
}

bool ModuleProgram::Start(QString* error) {
    if (!LoadScript(error)) return false;
    unsigned seed = m_options.seed;
    for (const ListenAddress& place : m_options.listen) {
        auto module = std::make_unique<Module>(m_options.inputs, seed++);
        if (!module->Listen(QHostAddress(place.address), static_cast<quint16>(place.port), error))
            return false;
        const int number = static_cast<int>(m_modules.size()) + 1;
        connect(module.get(), &Module::FaultOver, this, [this, number] { TellFault(number); });
        connect(module.get(), &Module::Failed, this, &ModuleProgram::Failed);
        m_modules.push_back(std::move(module));
    }
    for (const auto& module : m_modules) {
        module->SetFault(m_options.fault);
        m_print(QStringLiteral("listening on %1").arg(module->Where()));
    }
    if (m_options.pattern.kind != Pattern::EKind::None) {
        m_patternTimer.start(m_options.pattern.interval);
        StepPattern();
    }
    m_scriptTimer.start(0);
    return true;
}

bool ModuleProgram::LoadScript(QString* error) {
    if (m_options.scriptFile.isEmpty()) return true;
    if (!m_script.Load(m_options.scriptFile, error)) return false;
    for (const Command& command : m_script.commands) {
        if (command.module <= static_cast<int>(m_options.listen.size())) continue;
        *error = QStringLiteral("%1: there is no module %2").arg(m_options.scriptFile).arg(command.module);
        return false;
    }
    return true;
}

QString ModuleProgram::Do(const QString& line) {
    Command command;
    const QString error = Command::Parse(line, &command);
    if (!error.isEmpty()) return error;
    if (command.action == EAction::Wait || command.action == EAction::Repeat)
        return QStringLiteral("only a script waits and repeats");
    return Perform(command);
}

QString ModuleProgram::Perform(const Command& command) {
    const int count = static_cast<int>(m_modules.size());
    if (command.action == EAction::Quit) Q_EMIT Quit();
    if (command.action == EAction::None || command.action == EAction::Quit) return QString();
    if (command.module > count) return QStringLiteral("there is no module %1").arg(command.module);
    for (int number = 1; number <= count; ++number)
        if (command.module == Command::AllModules || command.module == number) Perform(command, number);
    return QString();
}

void ModuleProgram::Perform(const Command& command, int number) {
    Module& module = *m_modules[static_cast<std::size_t>(number - 1)];
    switch (command.action) {
        case EAction::Key:
            return SetStates(number, module.GetInputs().states & ~command.inputs);
        case EAction::Release:
            return SetStates(number, module.GetInputs().states | command.inputs);
        case EAction::States:
            return SetStates(number, command.inputs);
        case EAction::Fault:
            module.SetFault(command.fault);
            return TellFault(number);
        case EAction::Show:
            return Show(number);
        case EAction::None:
        case EAction::Wait:
        case EAction::Repeat:
        case EAction::Quit:
            break;
    }
}

void ModuleProgram::SetStates(int number, quint32 states) {
    m_modules[static_cast<std::size_t>(number - 1)]->SetStates(states);
    TellStates(number);
}

void ModuleProgram::TellStates(int number) {
    const Inputs& inputs = m_modules[static_cast<std::size_t>(number - 1)]->GetInputs();
    QStringList keyed;
    for (int i = 0; i < inputs.count; ++i)
        if ((inputs.states >> i & 1) == 0) keyed += QString::number(i);
    const QString text = keyed.isEmpty() ? QStringLiteral("none") : keyed.join(QLatin1Char(' '));
    m_print(QStringLiteral("module %1 keyed: %2").arg(number).arg(text));
}

void ModuleProgram::TellFault(int number) {
    const Fault& fault = m_modules[static_cast<std::size_t>(number - 1)]->GetFault();
    m_print(QStringLiteral("module %1 fault: %2").arg(number).arg(fault.ToText()));
}

void ModuleProgram::Show(int number) {
    const Module& module = *m_modules[static_cast<std::size_t>(number - 1)];
    m_print(QStringLiteral("module %1 at %2, %3 connections, %4 questions")
                .arg(number)
                .arg(module.Where())
                .arg(module.Connections())
                .arg(module.Questions()));
    TellStates(number);
    TellFault(number);
}

void ModuleProgram::ContinueScript() {
    while (m_next < m_script.commands.size()) {
        const Command& command = m_script.commands[m_next++];
        if (command.action == EAction::Wait) return m_scriptTimer.start(command.time);
        if (command.action == EAction::Repeat)
            m_next = 0;
        else
            Perform(command);
    }
}

void ModuleProgram::StepPattern() {
    for (const auto& module : m_modules)
        module->SetStates(m_options.pattern.StatesAt(m_step, module->GetInputs(), m_random));
    ++m_step;
}

}  // namespace dimodule
