// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/natskeeper.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <utility>

namespace nats {

namespace {

constexpr std::chrono::milliseconds KeeperTimeout(3000);
// In the order in which they are tried: a cluster of three stands the loss of one.
constexpr int ReplicasOfACluster = 3;
constexpr int ReplicasOfOne = 1;
constexpr int NoCluster = 10074;      // error codes of the API: replicas where there is one server
constexpr int TooFewServers = 10005;  // of the cluster are there
constexpr int StreamIsThere = 10058;  // with another configuration: the error code of the API

QJsonObject ConfigurationOf(const QByteArray& stream, const QByteArray& subjects,
                            const NatsKeeper::Limits& limits, int replicas) {
    const auto age = std::chrono::duration_cast<std::chrono::nanoseconds>(limits.age);
    return {{QStringLiteral("name"), QString::fromLatin1(stream)},
            {QStringLiteral("subjects"), QJsonArray{QString::fromLatin1(subjects)}},
            {QStringLiteral("retention"), QStringLiteral("limits")},
            {QStringLiteral("storage"), QLatin1String(limits.isOnDisk ? "file" : "memory")},
            {QStringLiteral("discard"), QStringLiteral("old")},
            {QStringLiteral("max_age"), static_cast<qint64>(age.count())},
            {QStringLiteral("max_bytes"), limits.bytes},
            {QStringLiteral("max_msgs"), -1},
            {QStringLiteral("max_consumers"), -1},
            {QStringLiteral("max_msgs_per_subject"), 1},
            {QStringLiteral("num_replicas"), replicas},
            {QStringLiteral("allow_direct"), true}};
}

QJsonObject ErrorOf(const NatsAnswer& answer) {
    return QJsonDocument::fromJson(answer.data).object().value(QLatin1String("error")).toObject();
}

}  // namespace

NatsKeeper::NatsKeeper(std::shared_ptr<INatsBus> bus, QByteArray stream)
    : m_bus(std::move(bus)), m_stream(std::move(stream)) {}

QString NatsKeeper::ProblemOf(const NatsAnswer& answer) {
    if (answer.isUnheard) return QStringLiteral("this NATS has no JetStream");
    if (!answer.problem.isEmpty()) return answer.problem;
    return ErrorOf(answer).value(QLatin1String("description")).toString().simplified();
}

void NatsKeeper::Keep(const QByteArray& subjects, const Limits& limits, const Done& done) {
    // The bus has this until it is answered: a bus that nobody else needs any more must not hold itself.
    const auto keepByOne = [weakBus = std::weak_ptr(m_bus), stream = m_stream, subjects, limits,
                            done](const NatsAnswer& answer) {
        const int code = ErrorOf(answer).value(QLatin1String("err_code")).toInt();
        if (code != NoCluster && code != TooFewServers) return done(ProblemOf(answer));
        const std::shared_ptr<INatsBus> bus = weakBus.lock();
        if (!bus) return;
        NatsKeeper(bus, stream).KeepBy(ReplicasOfOne, subjects, limits, [done](const NatsAnswer& last) {
            done(ProblemOf(last));
        });
    };
    KeepBy(ReplicasOfACluster, subjects, limits, keepByOne);
}

void NatsKeeper::KeepBy(int replicas, const QByteArray& subjects, const Limits& limits,
                        const INatsBus::AnswerHandler& done) {
    const QByteArray configuration =
        QJsonDocument(ConfigurationOf(m_stream, subjects, limits, replicas)).toJson(QJsonDocument::Compact);
    const auto ask = [bus = m_bus.get(), stream = m_stream, configuration](const char* what,
                                                                           INatsBus::AnswerHandler handler) {
        bus->Request(QByteArray("$JS.API.STREAM.") + what + '.' + stream, configuration, KeeperTimeout,
                     std::move(handler));
    };
    ask("CREATE", [ask, done](const NatsAnswer& answer) {
        const bool isThere = ErrorOf(answer).value(QLatin1String("err_code")).toInt() == StreamIsThere;
        if (!isThere) return done(answer);
        ask("UPDATE", done);
    });
}

void NatsKeeper::Get(const QByteArray& subject, Found found) {
    m_bus->Request("$JS.API.DIRECT.GET." + m_stream + '.' + subject, QByteArray(), KeeperTimeout,
                   [found = std::move(found)](const NatsAnswer& answer) {
                       found(answer.problem.isEmpty() ? std::optional(answer.data) : std::nullopt);
                   });
}

}  // namespace nats
