// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/stations/natsplace.h>

#include <platform/nats/natsaddress.h>

bool NatsPlace::Parse(const QString& text) {
    const QLatin1String plain("nats://");
    const QLatin1String encrypted("natss://");
    NatsPlace read;
    QString rest = text.trimmed();
    read.isEncrypted = rest.startsWith(encrypted);
    if (read.isEncrypted || rest.startsWith(plain))
        rest.remove(0, read.isEncrypted ? encrypted.size() : plain.size());
    if (rest.endsWith(QLatin1Char('/'))) rest.chop(1);
    nats::NatsAddress address;
    if (!address.Parse(rest).isEmpty()) return false;
    read.hosts = rest.section(QLatin1Char('/'), 0, 0);
    read.servers = address.servers;
    *this = read;
    return true;
}

QString NatsPlace::ToText() const {
    return isEncrypted ? QStringLiteral("natss://") + hosts : hosts;
}

ServerAddress NatsPlace::AddressOf(const QString& station) const {
    ServerAddress address;
    address.Parse(QStringLiteral("%1://%2/%3")
                      .arg(isEncrypted ? QStringLiteral("natss") : QStringLiteral("nats"), hosts, station));
    return address;
}
