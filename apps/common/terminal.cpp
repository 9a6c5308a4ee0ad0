// SPDX-License-Identifier: Apache-2.0
#include <apps/common/terminal.h>

#include <apps/common/linewriter.h>
#include <apps/common/safetext.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QtGlobal>

#include <chrono>
#include <cstdlib>

namespace terminal {

namespace {

constexpr std::chrono::milliseconds EndPatience(500);

// Never destroyed: there are messages to the very end.

LineWriter& Output() {
    static auto& writer = *new LineWriter([](const QByteArray& bytes) {
        QString error;
        WriteOutput(bytes, &error);
    });
    return writer;
}

LineWriter& ErrorOutput() {
    static auto& writer = *new LineWriter(system::WriteError);
    return writer;
}

void Drain() {
    Output().Drain(EndPatience);
    ErrorOutput().Drain(EndPatience);
}

void WriteMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    const QString line = qFormatLogMessage(type, context, text);
    if (!line.isNull()) WriteError((safetext::Escaped(line) + QLatin1Char('\n')).toUtf8());
    if (type == QtFatalMsg) Drain();  // the process is aborted next
}

}  // namespace

void Prepare() {
    system::PrepareStreams();
    qInstallMessageHandler(WriteMessage);
    std::atexit(Drain);
}

void PutOutput(const QByteArray& lines) {
    Output().Put(lines);
}

void WriteError(const QByteArray& lines) {
    ErrorOutput().Put(lines);
}

int Complain(const QString& what, int exitCode) {
    const QString line = QCoreApplication::applicationName() + QStringLiteral(": ") + what;
    WriteError((safetext::Escaped(line) + QLatin1Char('\n')).toUtf8());
    return exitCode;
}

int Print(const QString& text) {
    constexpr int ExitFailure = 1;
    QString error;
    if (WriteOutput(text.toUtf8(), &error) || error.isEmpty()) return 0;
    return Complain(QStringLiteral("the output cannot be written: ") + error, ExitFailure);
}

}  // namespace terminal
