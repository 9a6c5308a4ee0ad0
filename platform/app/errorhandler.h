// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>

#include <QtCore/QDateTime>
#include <QtCore/QString>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>

/// One reported event: a failed assertion or a trace.
struct TraceRecord {
    enum EKind { Assertion, Trace };

    EKind kind = Trace;
    QString message;  ///< the expression text of an assertion, the message of a trace
    QString file;     ///< source path without extension; empty for _Q_TraceOld
    int line = 0;     ///< source line, or a trace level where a caller gives one; 0 for _Q_TraceOld
    QDateTime time;   ///< of the report, in UTC: the local one costs a look at a file
    QString source;   ///< who outside caused it, and could again and again: a host; empty if nobody
};

/// Where assertions and traces go, and which of them are wanted.
///
/// Callers test the flag before they build a message, so that a report nobody wants costs one load.
/// Reporting is allowed from any thread; a sink is called on the thread that reports, possibly on several
/// threads at once, and may itself report (it is then called again).
///
/// The flags start from the environment variable MCS_TRACE (a number, decimal or with 0x); without it, or if
/// it is not a number, assertions and warnings are on. The default sink writes to Qt's logging categories
/// "mcs.assert" and "mcs.trace".
class MCS_PLATFORM_EXPORT ErrorHandler {
  public:
    enum ETraceFlag : unsigned {
        TraceAssertions = 0x02,  ///< checked assertions: programming errors
        TraceWarnings = 0x20,    ///< failures at run time
        TraceDetails = 0x40      ///< frequent details
    };
    using Sink = std::function<void(const TraceRecord&)>;

    static ErrorHandler& Instance();  ///< The one of the process, made when first asked for. Any thread.

    unsigned GetTraceFlags() const { return m_flags.load(std::memory_order_relaxed); }  ///< of ETraceFlag
    void SetTraceFlags(unsigned flags) { m_flags.store(flags, std::memory_order_relaxed); }  ///< likewise
    bool IsTraced(ETraceFlag flag) const { return (GetTraceFlags() & flag) != 0; }  ///< worth a Report()?

    /// Sends every later record to \a sink; an empty function restores the default sink.
    void SetSink(Sink sink);
    void Report(const TraceRecord& record);  ///< Hands \a record, whatever its flag, to the sink.
    /// What the default sink does.
    static void LogRecord(const TraceRecord& record);

    /// The flags that \a text (the content of MCS_TRACE) asks for; \a fallback where it is no number.
    static unsigned ParseFlags(const QByteArray& text, unsigned fallback);

  private:
    ErrorHandler();

    std::atomic<unsigned> m_flags;
    std::mutex m_sinkMutex;
    std::shared_ptr<const Sink> m_sink;
};

/// Reports a failed assertion. Execution goes on.
MCS_PLATFORM_EXPORT void _Q_assert(const wchar_t* expression, const wchar_t* file, int line);

/// Reports a trace. Where the caller has a trace level instead of a source line, \a line is that level.
MCS_PLATFORM_EXPORT void _Q_Trace(const QString& message, const wchar_t* file, int line);

/// Reports a trace of what \a source, a host that anybody may use, caused.
MCS_PLATFORM_EXPORT void TraceOf(const QString& source, const QString& message, const wchar_t* file,
                                 int line);

/// Reports a trace built from a printf format; 8-bit text arguments are UTF-8.
MCS_PLATFORM_EXPORT void _Q_TraceOld(const char* format, ...) Q_ATTRIBUTE_FORMAT_PRINTF(1, 2);

/// Reports \a expression as a failed assertion if \a pointer is null and assertions are traced.
inline void AssertNotNull(const void* pointer, const wchar_t* expression, const wchar_t* file, int line) {
    if (ErrorHandler::Instance().IsTraced(ErrorHandler::TraceAssertions) && pointer == nullptr)
        _Q_assert(expression, file, line);
}
