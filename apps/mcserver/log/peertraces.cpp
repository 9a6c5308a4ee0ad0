// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/peertraces.h>

#include <apps/common/safetext.h>

#include <platform/app/trace.h>

#include <QtCore/QtGlobal>

#include <utility>

namespace {

/// As it will be written, since a character may become several, and no longer than may be.
QString Shortened(const QString& text) {
    const QString whole = safetext::Escaped(text);
    if (whole.size() <= PeerTraces::MaxLength) return whole;
    return whole.left(PeerTraces::MaxLength) + QStringLiteral("...");
}

}  // namespace

PeerTraces::PeerTraces(IClock& clock, Sink sink)
    : m_sink(std::move(sink)),
      m_limiter(
          clock,
          [](const LogLimiter::LeftOut& leftOut, const QString& whose) {
              MCS_TRACE(LogLimiter::LeftOutText(leftOut.lines, whose));
          },
          Rates) {
    // Who looks for something wants to see it each time.
    if (qEnvironmentVariableIsSet("MCS_TRACE")) return;
    ErrorHandler::Instance().SetSink([this](const TraceRecord& record) {
        if (record.source.isEmpty()) return m_sink(record);
        Pass(record);
    });
}

PeerTraces::~PeerTraces() {
    m_limiter.TellLeftOut();
    ErrorHandler::Instance().SetSink(nullptr);
}

void PeerTraces::Pass(const TraceRecord& record) {
    const std::optional<QString> text = m_limiter.Pass(record.source, Shortened(record.message));
    if (!text) return;
    TraceRecord passed = record;
    passed.message = *text;
    m_sink(passed);
}
