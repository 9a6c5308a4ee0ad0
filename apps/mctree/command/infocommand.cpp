// SPDX-License-Identifier: Apache-2.0
#include <apps/common/safetext.h>
#include <apps/mctree/command/commands.h>
#include <apps/mctree/mirror/mirror.h>
#include <apps/mctree/mirror/walk.h>
#include <apps/mctree/text/description.h>
#include <platform/vtclient/vtprotocol.h>

#include <QtCore/QJsonObject>

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>

namespace mctree {

namespace {

constexpr std::chrono::milliseconds LatencyGrace(500);  // to wait for the first ping

/// What is told of a server; a number below 0 is not known.
struct ServerInfo {
    QString application;
    QString address;
    int port = 0;
    bool isEncrypted = false;
    std::optional<std::chrono::microseconds> latency;
    int valueCount = -1;
    QString whyNoCount;
};

ServerInfo Collect(const Context& context, const Outcome& outcome, const Mirrors& mirrors) {
    IVtClient& client = context.session.Client();
    ServerInfo info;
    info.application = client.GetServerApplication();
    info.address = client.GetServerAddress();
    info.port = client.GetServerPort();
    info.isEncrypted = client.IsEncrypted();
    info.latency = client.GetLatency();
    info.whyNoCount = outcome.message;
    if (!outcome.IsDone()) return info;
    info.valueCount = 0;
    Walk(*mirrors.front()->GetItem(), [&](const values::TreeItem& item, int) {
        if (!item.IsNode()) ++info.valueCount;
    });
    return info;
}

/// The client measures the latency by itself, but tells no observer that it has.
void WaitForLatency(const Context& context) {
    context.session.WaitUntil([&context] { return context.session.Client().GetLatency().has_value(); },
                              QDeadlineTimer(std::min(LatencyGrace, context.arguments.Timeout())));
}

void PrintText(const ServerInfo& info, const QString& address, Printer& printer) {
    const auto print = [&](const char* name, const QString& text) {
        const QString padded = QString::fromLatin1(name).leftJustified(14, QLatin1Char(' '));
        printer.WriteLine(printer.Painted(padded, EColour::Faint) + text);
    };
    const QString unknown = QStringLiteral("not known");
    print("server", info.application.isEmpty() ? unknown : safetext::Escaped(info.application));
    print("address", address);
    print("encryption", info.isEncrypted ? QStringLiteral("TLS") : QStringLiteral("none"));
    print("protocol", QStringLiteral("version %1").arg(VtProtocolVersion));
    using Milliseconds = std::chrono::duration<double, std::milli>;
    print("latency", info.latency
                         ? QStringLiteral("%1 ms").arg(Milliseconds(*info.latency).count(), 0, 'f', 3)
                         : unknown);
    print("values", info.valueCount < 0 ? QStringLiteral("%1 (%2)").arg(unknown, info.whyNoCount)
                                        : QString::number(info.valueCount));
}

void PrintJson(const ServerInfo& info, Printer& printer) {
    QJsonObject object{{QStringLiteral("server"), info.application},
                       {QStringLiteral("address"), info.address},
                       {QStringLiteral("port"), info.port},
                       {QStringLiteral("tls"), info.isEncrypted},
                       {QStringLiteral("protocol"), VtProtocolVersion}};
    if (info.latency)
        object[QStringLiteral("latencyMicroseconds")] = static_cast<qint64>(info.latency->count());
    if (info.valueCount >= 0) object[QStringLiteral("values")] = info.valueCount;
    printer.WriteLine(ToLine(object));
}

}  // namespace

Outcome RunInfo(const Context& context) {
    Mirrors mirrors;
    mirrors.push_back(std::make_unique<Mirror>(context.session, QStringLiteral("/"), EPurpose::Look));
    Outcome outcome = Settle(context.session, mirrors, QDeadlineTimer(context.arguments.Timeout()));
    if (outcome.IsDone() && !mirrors.front()->IsEstablished()) outcome = NotHere(*mirrors.front());
    // Whoever may not read the root still learns the rest.
    if (outcome.code == EExitCode::NoConnection) return outcome;
    WaitForLatency(context);
    const ServerInfo info = Collect(context, outcome, mirrors);
    if (context.arguments.isJson)
        PrintJson(info, context.printer);
    else
        PrintText(info, context.session.Address(), context.printer);
    return Outcome();
}

}  // namespace mctree
