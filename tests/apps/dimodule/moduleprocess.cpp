// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/dimodule/moduleprocess.h>

void ModuleProcess::Start(const QStringList& arguments) {
    m_arguments = arguments;
    StartProgram(
        QStringLiteral(DIMODULE),
        QStringList{QStringLiteral("--listen"), QStringLiteral("127.0.0.1:%1").arg(m_port)} + arguments);
    // An answer shows that all is said that is said at the start.
    Say("");
    m_port = Port();
    ASSERT_NE(m_port, 0) << errors.toStdString();
}

void ModuleProcess::Restart() {
    Start(m_arguments);
}

int ModuleProcess::Terminate() {
    const int code = ProgramRunner::Terminate();
    m_port = 0;
    return code;
}

int ModuleProcess::Run(const QStringList& arguments) {
    StartProgram(QStringLiteral(DIMODULE), arguments);
    return WaitForEnd();
}

QByteArray ModuleProcess::Say(const char* line) {
    const int before = output.size();
    Type(line);
    Type("show");
    EXPECT_TRUE(WaitUntil([&] { return HasShown(before) || !IsRunning(); }));
    return output.mid(before);
}

bool ModuleProcess::HasShown(int from) const {
    const int modules = output.count("listening on ");
    const int shown = output.indexOf("module " + QByteArray::number(modules) + " at ", from);
    const int fault = output.indexOf("module " + QByteArray::number(modules) + " fault: ", qMax(shown, 0));
    return shown != -1 && fault != -1 && output.indexOf('\n', fault) != -1;
}

void ModuleProcess::Type(const char* line) {
    process.Say(line);
}

bool ModuleProcess::WaitForOutput(const char* text) {
    return WaitUntil([&] { return output.contains(text); });
}

bool ModuleProcess::WaitForErrors(const char* text) {
    return WaitUntil([&] { return errors.contains(text); });
}

bool ModuleProcess::WaitForConnections(int count) {
    const QByteArray wanted = ", " + QByteArray::number(count) + " connections";
    for (int i = 0; i < 10000; ++i)
        if (Say("").contains(wanted)) return true;
    return false;
}

quint16 ModuleProcess::Port(int module) const {
    const QByteArray line = output.split('\n').value(module);
    return line.startsWith("listening on ") ? line.mid(line.lastIndexOf(':') + 1).toUShort() : quint16{0};
}
