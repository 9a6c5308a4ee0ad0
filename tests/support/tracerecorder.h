// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/errorhandler.h>

#include <tests/support/printing.h>

#include <vector>

/// Catches everything that is reported while it lives, with the flags given; then restores the handler.
/// Catches reports of this thread only.
class TraceRecorder {
  public:
    explicit TraceRecorder(unsigned flags = ErrorHandler::TraceAssertions | ErrorHandler::TraceWarnings |
                                            ErrorHandler::TraceDetails);
    ~TraceRecorder();
    TraceRecorder(const TraceRecorder&) = delete;
    TraceRecorder& operator=(const TraceRecorder&) = delete;

    const std::vector<TraceRecord>& Records() const { return m_records; }
    /// The messages alone, in order.
    std::vector<QString> Messages() const;
    void Clear() { m_records.clear(); }

  private:
    unsigned m_flagsBefore;
    std::vector<TraceRecord> m_records;
};
