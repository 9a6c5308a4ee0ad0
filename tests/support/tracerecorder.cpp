// SPDX-License-Identifier: Apache-2.0
#include <tests/support/tracerecorder.h>

TraceRecorder::TraceRecorder(unsigned flags) : m_flagsBefore(ErrorHandler::Instance().GetTraceFlags()) {
    ErrorHandler::Instance().SetTraceFlags(flags);
    ErrorHandler::Instance().SetSink([this](const TraceRecord& record) { m_records.push_back(record); });
}

TraceRecorder::~TraceRecorder() {
    ErrorHandler::Instance().SetSink(nullptr);
    ErrorHandler::Instance().SetTraceFlags(m_flagsBefore);
}

std::vector<QString> TraceRecorder::Messages() const {
    std::vector<QString> messages;
    for (const TraceRecord& record : m_records)
        messages.push_back(record.message);
    return messages;
}
