// SPDX-License-Identifier: Apache-2.0
// Prints the flags that it starts with, and reports after everything else is over.
#include <platform/app/errorhandler.h>

#include <cstdio>

namespace {

/// Made before the handler is first used, so that it goes after whatever that leaves behind.
class LateReporter {
  public:
    LateReporter() = default;
    ~LateReporter() { _Q_Trace(QStringLiteral("the last word"), L"tracewriter", 1); }
    LateReporter(const LateReporter&) = delete;
    LateReporter& operator=(const LateReporter&) = delete;
};

const LateReporter lateReporter;

}  // namespace

int main() {
    ErrorHandler::Instance().SetSink(
        [](const TraceRecord& record) { std::fprintf(stderr, "%s\n", record.message.toUtf8().constData()); });
    std::printf("%u", ErrorHandler::Instance().GetTraceFlags());
    return 0;
}
