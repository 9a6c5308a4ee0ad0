// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <fuzz/narration.h>

#include <platform/app/errorhandler.h>

/// Has everything traced, since that is code too, but not printed.
class QuietTraces {
  public:
    QuietTraces() {
        ErrorHandler::Instance().SetSink([](const TraceRecord& record) { Tell(record.message.left(200)); });
        ErrorHandler::Instance().SetTraceFlags(ErrorHandler::TraceAssertions | ErrorHandler::TraceWarnings |
                                               ErrorHandler::TraceDetails);
    }
};
