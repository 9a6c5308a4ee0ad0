// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/natsoptions.h>

#include <QtCore/QByteArray>

namespace nats {

namespace {

constexpr int MaxWho = 64;

void TakeVariable(const char* variable, QString* text) {
    if (text->isEmpty()) *text = qEnvironmentVariable(variable);
}

bool MayStandInSubject(char character) {
    const bool isLetter = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
    return isLetter || (character >= '0' && character <= '9') || character == '-' || character == '_';
}

}  // namespace

QString HostPort::ToText() const {
    const bool isV6 = host.contains(QLatin1Char(':'));
    return (isV6 ? QStringLiteral("[%1]:%2") : QStringLiteral("%1:%2")).arg(host, QString::number(port));
}

void NatsOptions::TakeEnvironment() {
    TakeVariable("MCS_NATS_USER", &user);
    TakeVariable("MCS_NATS_PASSWORD", &password);
    TakeVariable("MCS_NATS_TOKEN", &token);
    TakeVariable("MCS_NATS_CREDS", &credentialsFile);
    TakeVariable("MCS_NATS_NKEY", &nkey);
    TakeVariable("MCS_NATS_SEED", &seedFile);
    TakeVariable("MCS_NATS_CA", &caFile);
    TakeVariable("MCS_NATS_CERT", &certificateFile);
    TakeVariable("MCS_NATS_KEY", &privateKeyFile);
    isTls = isTls || qEnvironmentVariable("MCS_NATS_TLS") == QLatin1String("1") || !caFile.isEmpty() ||
            !certificateFile.isEmpty();
}

QByteArray NatsOptions::Who() const {
    QByteArray who = (user.isEmpty() ? nkey : user).toUtf8().left(MaxWho);
    for (char& character : who)
        if (!MayStandInSubject(character)) character = '_';
    return who.isEmpty() ? QByteArray("-") : who;
}

}  // namespace nats
