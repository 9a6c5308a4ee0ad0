// SPDX-License-Identifier: Apache-2.0
#include <platform/app/errorhandler.h>

#include <QtCore/QLoggingCategory>

#include <cstdarg>
#include <utility>

namespace {

Q_LOGGING_CATEGORY(assertCategory, "mcs.assert")
Q_LOGGING_CATEGORY(traceCategory, "mcs.trace")

constexpr unsigned DefaultFlags = ErrorHandler::TraceAssertions | ErrorHandler::TraceWarnings;

QString Place(const TraceRecord& record) {
    if (record.file.isEmpty()) return QString();
    return QStringLiteral(" (%1:%2)").arg(record.file).arg(record.line);
}

TraceRecord MakeRecord(TraceRecord::EKind kind, QString message, const wchar_t* file, int line) {
    TraceRecord record;
    record.kind = kind;
    record.message = std::move(message);
    if (file != nullptr) record.file = QString::fromWCharArray(file);
    record.line = line;
    record.time = QDateTime::currentDateTimeUtc();
    return record;
}

}  // namespace

ErrorHandler::ErrorHandler()
    : m_flags(DefaultFlags), m_sink(std::make_shared<const Sink>(ErrorHandler::LogRecord)) {
    if (qEnvironmentVariableIsSet("MCS_TRACE"))
        m_flags.store(ParseFlags(qgetenv("MCS_TRACE"), DefaultFlags), std::memory_order_relaxed);
}

ErrorHandler& ErrorHandler::Instance() {
    static auto& handler = *new ErrorHandler;  // never destroyed: threads and statics report to the very end
    return handler;
}

unsigned ErrorHandler::ParseFlags(const QByteArray& text, unsigned fallback) {
    const QByteArray number = text.trimmed().toLower();
    bool isNumber = false;
    const unsigned flags = number.toUInt(&isNumber, number.startsWith("0x") ? 16 : 10);
    return isNumber ? flags : fallback;
}

void ErrorHandler::SetSink(Sink sink) {
    if (!sink) sink = LogRecord;
    auto shared = std::make_shared<const Sink>(std::move(sink));
    const std::lock_guard<std::mutex> lock(m_sinkMutex);
    m_sink.swap(shared);
}

void ErrorHandler::LogRecord(const TraceRecord& record) {
    if (record.kind == TraceRecord::Assertion)
        qCCritical(assertCategory).noquote() << "assertion failed:" << record.message + Place(record);
    else
        qCWarning(traceCategory).noquote() << record.message + Place(record);
}

void ErrorHandler::Report(const TraceRecord& record) {
    std::shared_ptr<const Sink> sink;
    {
        const std::lock_guard<std::mutex> lock(m_sinkMutex);
        sink = m_sink;
    }
    (*sink)(record);  // outside the lock: a sink may report or replace itself
}

void _Q_assert(const wchar_t* expression, const wchar_t* file, int line) {
    ErrorHandler::Instance().Report(
        MakeRecord(TraceRecord::Assertion, QString::fromWCharArray(expression), file, line));
}

void _Q_Trace(const QString& message, const wchar_t* file, int line) {
    ErrorHandler::Instance().Report(MakeRecord(TraceRecord::Trace, message, file, line));
}

void TraceOf(const QString& source, const QString& message, const wchar_t* file, int line) {
    TraceRecord record = MakeRecord(TraceRecord::Trace, message, file, line);
    // Of one that broke off at once nobody knows from where it came.
    record.source = source.isEmpty() ? QStringLiteral("unknown hosts") : source;
    ErrorHandler::Instance().Report(record);
}

void _Q_TraceOld(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const QString message = QString::vasprintf(format, arguments);
    va_end(arguments);
    ErrorHandler::Instance().Report(MakeRecord(TraceRecord::Trace, message, nullptr, 0));
}
