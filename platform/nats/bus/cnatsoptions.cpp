// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/bus/cnatsoptions.h>

#include <QtCore/QFileInfo>

#include <initializer_list>

namespace nats {

namespace {

constexpr int BufferSize = 64 * 1024;  // what one read may bring

/// Why \a options cannot be meant so.
QString Contradiction(const NatsOptions& options) {
    const int ways = !options.user.isEmpty() + !options.token.isEmpty() + !options.credentialsFile.isEmpty() +
                     !options.nkey.isEmpty();
    if (ways > 1)
        return QStringLiteral("NATS takes a user, a token, a file of credentials or an NKey, not several");
    if (options.nkey.isEmpty() != options.seedFile.isEmpty())
        return QStringLiteral("an NKey and the file with its seed need each other");
    if (options.certificateFile.isEmpty() != options.privateKeyFile.isEmpty())
        return QStringLiteral("a certificate for NATS and its private key need each other");
    for (const QString& file : {options.credentialsFile, options.seedFile, options.caFile,
                                options.certificateFile, options.privateKeyFile})
        if (!file.isEmpty() && !QFileInfo(file).isReadable())
            return QStringLiteral("the file '%1' cannot be read").arg(file);
    return QString();
}

natsStatus SetCredentials(natsOptions* made, const NatsOptions& options) {
    if (!options.user.isEmpty())
        return natsOptions_SetUserInfo(made, options.user.toUtf8(), options.password.toUtf8());
    if (!options.token.isEmpty()) return natsOptions_SetToken(made, options.token.toUtf8());
    if (!options.credentialsFile.isEmpty())
        return natsOptions_SetUserCredentialsFromFiles(made, options.credentialsFile.toLocal8Bit(), nullptr);
    if (!options.nkey.isEmpty())
        return natsOptions_SetNKeyFromSeed(made, options.nkey.toUtf8(), options.seedFile.toLocal8Bit());
    return NATS_OK;
}

natsStatus SetTls(natsOptions* made, const NatsOptions& options) {
    natsStatus status = NATS_OK;
    if (options.isTls) status = natsOptions_SetSecure(made, true);
    if (status == NATS_OK && !options.caFile.isEmpty())
        status = natsOptions_LoadCATrustedCertificates(made, options.caFile.toLocal8Bit());
    if (status == NATS_OK && !options.certificateFile.isEmpty())
        status = natsOptions_LoadCertificatesChain(made, options.certificateFile.toLocal8Bit(),
                                                   options.privateKeyFile.toLocal8Bit());
    return status;
}

}  // namespace

CnatsPointer<natsOptions> MakeCnatsOptions(const NatsOptions& options, const HostPort& server,
                                           QString* problem) {
    *problem = Contradiction(options);
    if (!problem->isEmpty()) return nullptr;
    natsOptions* made = nullptr;
    natsStatus status = natsOptions_Create(&made);
    CnatsPointer<natsOptions> owned(made);
    const QByteArray url = QStringLiteral("nats://%1").arg(server.ToText()).toUtf8();
    const auto then = [&status](natsStatus next) {
        if (status == NATS_OK) status = next;
    };
    then(natsOptions_SetURL(made, url));
    then(natsOptions_SetName(made, options.name.toUtf8()));
    then(natsOptions_SetTimeout(made, options.connectTimeout.count()));
    then(natsOptions_SetAllowReconnect(made, false));
    then(natsOptions_SetIgnoreDiscoveredServers(made, true));
    then(natsOptions_SetPingInterval(made, 0));
    then(natsOptions_SetSendAsap(made, true));
    then(natsOptions_SetIOBufSize(made, BufferSize));
    then(natsOptions_UseGlobalMessageDelivery(made, true));
    then(SetCredentials(made, options));
    then(SetTls(made, options));
    if (status == NATS_OK) return owned;
    *problem = CnatsText(status);
    return nullptr;
}

}  // namespace nats
