// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/session/presence.h>

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace nats {

namespace {

constexpr std::size_t MaxPresence = 4096;  // bytes
constexpr int MaxText = 256;
constexpr int MaxCode = 512;
constexpr int Hex = 16;
constexpr const char* ClaimWord = "claim";
constexpr const char* HoldWord = "hold";

QString TextOf(const QJsonObject& object, const char* key, int most = MaxText) {
    QString text = object.value(QLatin1String(key)).toString().left(most);
    for (QChar& character : text)
        if (!character.isPrint()) character = QLatin1Char('?');
    return text;
}

}  // namespace

QByteArray Presence::Write() const {
    QJsonObject object{{QStringLiteral("what"), QLatin1String(what == EWhat::Claims ? ClaimWord : HoldWord)},
                       {QStringLiteral("station"), station},
                       {QStringLiteral("instance"), QString::number(instance, Hex)},
                       {QStringLiteral("name"), name},
                       {QStringLiteral("version"), version},
                       {QStringLiteral("machine"), machine},
                       {QStringLiteral("process"), process},
                       {QStringLiteral("since"), since},
                       {QStringLiteral("state"), state}};
    if (!stateCode.isEmpty() && stateCode.size() <= MaxCode)
        object.insert(QStringLiteral("stateCode"), stateCode);
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<Presence> Presence::Read(std::string_view text) {
    if (text.size() > MaxPresence) return std::nullopt;
    const QJsonObject object =
        QJsonDocument::fromJson(QByteArray(text.data(), static_cast<int>(text.size()))).object();
    Presence presence;
    const QString what = TextOf(object, "what");
    if (what != QLatin1String(ClaimWord) && what != QLatin1String(HoldWord)) return std::nullopt;
    presence.what = what == QLatin1String(ClaimWord) ? EWhat::Claims : EWhat::Holds;
    bool isNumber = false;
    presence.instance = TextOf(object, "instance").toULongLong(&isNumber, Hex);
    if (!isNumber) return std::nullopt;
    presence.station = TextOf(object, "station");
    presence.name = TextOf(object, "name");
    presence.version = TextOf(object, "version");
    presence.machine = TextOf(object, "machine");
    presence.process = static_cast<qint64>(object.value(QLatin1String("process")).toDouble());
    presence.since = TextOf(object, "since");
    presence.state = TextOf(object, "state");
    presence.stateCode = TextOf(object, "stateCode", MaxCode);
    return presence;
}

QString Presence::ToText() const {
    return QStringLiteral("%1 on %2 (process %3, since %4)")
        .arg(name, machine, QString::number(process), since);
}

}  // namespace nats
