// SPDX-License-Identifier: Apache-2.0
#include <apps/common/terminal.h>

#include <apps/common/linewriter.h>
#include <apps/common/safetext.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QtGlobal>

#include <chrono>
#include <cstdlib>
#include <utility>

namespace terminal {

namespace {

constexpr std::chrono::milliseconds EndPatience(500);

// Never destroyed: there are messages to the very end.

Sink& OtherSink() {
    static auto& sink = *new Sink;
    return sink;
}

void WriteLines(EStream stream, const QByteArray& lines) {
    QString error;
    if (OtherSink())
        OtherSink()(stream, lines);
    else if (stream == EStream::Output)
        WriteOutput(lines, &error);
    else
        system::WriteError(lines);
}

LineWriter& Writer(EStream stream) {
    static auto& output =
        *new LineWriter([](const QByteArray& bytes) { WriteLines(EStream::Output, bytes); });
    static auto& error = *new LineWriter([](const QByteArray& bytes) { WriteLines(EStream::Error, bytes); });
    return stream == EStream::Output ? output : error;
}

void End() {
    Drain();
    system::RestoreStreams();
}

void WriteMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    const QString line = qFormatLogMessage(type, context, text);
    if (!line.isNull()) WriteError((safetext::Escaped(line) + QLatin1Char('\n')).toUtf8());
    if (type == QtFatalMsg) Drain();  // the process is aborted next
}

}  // namespace

void Drain() {
    Writer(EStream::Output).Drain(EndPatience);
    Writer(EStream::Error).Drain(EndPatience);
}

void Prepare() {
    system::PrepareStreams();
    qInstallMessageHandler(WriteMessage);
    std::atexit(End);
}

void PutOutput(const QByteArray& lines) {
    Writer(EStream::Output).Put(lines);
}

void WriteError(const QByteArray& lines) {
    Writer(EStream::Error).Put(lines);
}

void SendLinesTo(Sink sink) {
    OtherSink() = std::move(sink);
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
