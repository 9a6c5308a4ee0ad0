// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/serveroptions.h>

#include <apps/common/commandline.h>
#include <apps/mcserver/program/servicecontrol.h>

#include <platform/nats/natsaddress.h>
#include <platform/nats/natsbusmaker.h>
#include <platform/vtclient/vtaccessfile.h>
#include <platform/vtclient/vtserver.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtNetwork/QHostAddress>

#include <algorithm>

namespace {

QString Text(const char* text) {
    return QString::fromUtf8(text);
}

/// With all its escapes it fits a message.
constexpr int LongestText = 65536;

// In the order of the help.
constexpr CommandLine::Option Options[] = {
    {"listen", "ADDRESS[:PORT]",
     "Interface and port to listen on, IPv6 addresses in brackets; port 0 is any free one. 127.0.0.1:7450 "
     "unless given."},
    {"tls-cert", "FILE", "Certificate of the server, PEM. With it the server speaks TLS only."},
    {"tls-key", "FILE", "Private key of that certificate, PEM."},
    {"tls-ca", "FILE", "Authority whose client certificates count as credentials, PEM."},
    {"insecure", nullptr, "Listen beyond this machine also without TLS and credentials."},
    {"access", "FILE", "Who may come in, and what each role may do."},
    {"config", "FILE", "Configuration to read and save."},
    {"sessions", "COUNT", "Clients at once; 2000 unless given. Some of the places are kept for operators."},
    {"memory", "MIB", "What clients may make the server keep in memory, in MiB. 32 unless given."},
    {"text-length", "COUNT", "Characters of a text that clients write; 4096 unless given."},
    {"comment-length", "COUNT", "Characters of the comment of an MpxORV; 1024 unless given."},
    {"device", "DEVICE",
     "The direction finder: simulated; hamlib:MODEL[,PORT...][,mode=MODE][,width=HZ][,speed=BAUD] for "
     "receivers that Hamlib knows, a frequency channel each; or plugin:FILE[,OPTIONS] for a driver of one's "
     "own. "
     "simulated unless given."},
    {"script", "FILE", "What the simulated device does by itself."},
    {"name", "NAME", "What the server calls itself; also names its configuration. mcserver unless given."},
    {"nats", "HOST[:PORT][,HOST...]",
     "Also offer the server at this NATS, nats:// in front or nothing; port 4222 unless given. A user of "
     "NATS, its "
     "password and such come from the environment: MCS_NATS_USER, MCS_NATS_PASSWORD, MCS_NATS_TOKEN, "
     "MCS_NATS_NKEY."},
    {"station", "NAME", "What it is called there; the server's name unless given."},
    {"nats-creds", "FILE", "Credentials for NATS, as its tools write them."},
    {"nats-seed", "FILE", "Seed of the NKey for NATS."},
    {"nats-tls", nullptr, "Insist on TLS with NATS."},
    {"nats-ca", "FILE", "Authority that the certificate of NATS must come from, PEM; means TLS."},
    {"nats-cert", "FILE", "Certificate for NATS, PEM; means TLS."},
    {"nats-key", "FILE", "Private key of that certificate, PEM."},
    {"headless", nullptr, "Show no window."},
    {"screenshot", "DIRECTORY", "Save a picture of every page of the window below DIRECTORY, and end."},
    {"install-service", nullptr,
     "Install the server as a service, started with the system with the other options."},
    {"remove-service", nullptr, "Stop and remove the service of that --name."},
    {"service", nullptr, "Run as that service: for the service manager."},
    {"make-token", nullptr, "Print a fresh token for USER in ROLE, and its line for the access file."},
};

void TakeTokenWords(CommandLine& line, ServerOptions& options) {
    const QStringList words = line.GetWords();
    if (words.size() != 2) return line.Refuse(Text("--make-token needs a user and a role"));
    for (const QString& word : words)
        if (!VtAccessFile::IsName(word))
            return line.Refuse(QStringLiteral("'%1' can be no user and no role").arg(word));
    if (words[0].startsWith(VtAccessFile::CertificateUser(QString())))
        return line.Refuse(Text("a user by certificate has no token"));
    options.makesToken = true;
    options.user = words[0];
    options.role = words[1];
}

/// Why \a name cannot be that of a file on every system; empty if it can. Configurations move between
/// systems.
QString NameFault(const QString& name) {
    constexpr int MaxLength = 100;
    if (name.contains(QLatin1Char('/')) || name.contains(QLatin1Char('\\')))
        return Text("--name cannot hold a slash");
    const QString unfit = Text(":*?\"<>|");
    for (const QChar character : name)
        if (!character.isPrint() || unfit.contains(character))
            return Text(
                "--name cannot hold what file names cannot: : * ? \" < > | and what cannot be printed");
    if (name != name.trimmed() || name.endsWith(QLatin1Char('.')))
        return Text("--name cannot have blanks around it or a dot at its end");
    if (name.size() > MaxLength) return QStringLiteral("--name has at most %1 characters").arg(MaxLength);
    static const QRegularExpression device(QStringLiteral("^(CON|PRN|AUX|NUL|(COM|LPT)[1-9])(\\..*)?$"),
                                           QRegularExpression::CaseInsensitiveOption);
    return device.match(name).hasMatch()
               ? QStringLiteral("--name cannot be %1, which is a device on some systems").arg(name)
               : QString();
}

bool IsThisMachine(const nats::HostPort& server) {
    return server.host == Text("localhost") || QHostAddress(server.host).isLoopback();
}

/// What keeps a server from being reached over NATS as it would keep it from listening beyond this machine:
/// who reaches NATS is nobody of this machine. Empty: nothing.
QString NatsRisk(const ServerOptions& options) {
    if (options.isInsecure) return QString();
    if (options.accessFile.isEmpty())
        return Text("everybody who reaches NATS would come in: it needs --access (or --insecure)");
    const auto& servers = options.nats.servers;
    if (options.nats.isTls || std::all_of(servers.begin(), servers.end(), IsThisMachine)) return QString();
    return Text("it needs TLS, since NATS is on another machine: --nats-tls (or --insecure)");
}

void TakeNats(CommandLine& line, ServerOptions& options) {
    constexpr const char* Others[] = {"station", "nats-creds", "nats-seed", "nats-tls",
                                      "nats-ca", "nats-cert",  "nats-key"};
    if (!line.IsSet("nats")) {
        for (const char* const other : Others)
            if (line.IsSet(other)) line.Refuse(other, Text("it needs --nats"));
        return;
    }
    nats::NatsAddress address;
    line.Refuse("nats", address.Parse(line.GetValue("nats")));
    options.nats.servers = address.servers;
    options.station = address.station.isEmpty() ? options.name : address.station;
    line.TakeText("station", &options.station);
    line.Refuse("station", nats::NatsAddress::StationFault(options.station));
    line.TakeText("nats-creds", &options.nats.credentialsFile);
    line.TakeText("nats-seed", &options.nats.seedFile);
    line.TakeText("nats-ca", &options.nats.caFile);
    line.TakeText("nats-cert", &options.nats.certificateFile);
    line.TakeText("nats-key", &options.nats.privateKeyFile);
    options.nats.isTls = line.IsSet("nats-tls");
    options.nats.name = options.name;
    options.nats.TakeEnvironment();
    line.Refuse("nats", NatsRisk(options));
    if (!nats::IsBuiltIn()) line.Refuse("nats", Text("this build knows no NATS"));
}

QStringList ServiceArguments(const CommandLine& line) {
    QStringList arguments{Text("--service")};
    for (const CommandLine::Option& option : Options) {
        const QString name = Text("--") + Text(option.name);
        const bool isPassedOn = line.IsSet(option.name) && !name.endsWith(Text("service"));
        if (!isPassedOn) continue;
        arguments << name;
        if (option.value == nullptr) continue;
        const QString value = line.GetValue(option.name);
        const bool isFile = Text(option.value) == Text("FILE");
        arguments << (isFile ? QDir::toNativeSeparators(QFileInfo(value).absoluteFilePath())
                      : name == Text("--device") ? DeviceChoice::WithWholePath(value)
                                                 : value);
    }
    return arguments;
}

void TakeService(CommandLine& line, ServerOptions& options) {
    using EService = ServerOptions::EService;
    const bool isInstalled = line.IsSet("install-service");
    const bool isRemoved = line.IsSet("remove-service");
    const bool isRun = line.IsSet("service");
    if (isInstalled) options.service = EService::Install;
    if (isRemoved) options.service = EService::Remove;
    if (isRun) options.service = EService::Run;
    if (options.service == EService::None) return;
    const char* const name = isInstalled ? "install-service" : isRemoved ? "remove-service" : "service";
    if (isInstalled + isRemoved + isRun > 1) line.Refuse(name, Text("only one of these at a time"));
    line.Refuse(name, servicecontrol::Obstacle());
    if (!options.screenshotDirectory.isEmpty()) line.Refuse(name, Text("a service has no window"));
    options.isHeadless = true;
    options.serviceArguments = ServiceArguments(line);
}

void TakeDevice(CommandLine& line, ServerOptions& options) {
    if (!line.IsSet("device")) return;
    line.Refuse("device", options.device.Parse(line.GetValue("device")));
    if (options.device.kind != DeviceChoice::EKind::Simulated && line.IsSet("script"))
        line.Refuse("script", Text("only the simulated device has one"));
}

void TakeOptions(CommandLine& line, ServerOptions& options) {
    line.TakeText("tls-cert", &options.certificateFile);
    line.TakeText("tls-key", &options.privateKeyFile);
    line.TakeText("tls-ca", &options.caFile);
    line.TakeText("access", &options.accessFile);
    line.TakeText("config", &options.configFile);
    line.TakeNumber("sessions", 1, 65536, &options.maxSessions);
    line.TakeNumber("memory", 4, 65536, &options.memoryMiB);
    line.TakeNumber("text-length", IVtAccess::ShortText, LongestText, &options.textLimits.text);
    line.TakeNumber("comment-length", IVtAccess::ShortText, LongestText, &options.textLimits.comment);
    line.TakeText("script", &options.scriptFile);
    TakeDevice(line, options);
    line.TakeText("name", &options.name);
    line.TakeText("screenshot", &options.screenshotDirectory);
    options.isInsecure = line.IsSet("insecure");
    options.isHeadless = line.IsSet("headless");
    if (options.isHeadless && !options.screenshotDirectory.isEmpty())
        line.Refuse(Text("--screenshot needs the window"));
    QString error;
    if (line.IsSet("listen") && !options.listen.Parse(line.GetValue("listen"), &error)) line.Refuse(error);
    if (options.certificateFile.isEmpty() != options.privateKeyFile.isEmpty())
        line.Refuse(Text("--tls-cert and --tls-key need each other"));
    if (!options.caFile.isEmpty() && options.certificateFile.isEmpty())
        line.Refuse(Text("--tls-ca needs --tls-cert"));
    line.Refuse(NameFault(options.name));
    TakeNats(line, options);
    TakeService(line, options);
}

}  // namespace

ServerOptions ServerOptions::Parse(const QStringList& arguments) {
    ServerOptions options;
    options.listen = {QStringLiteral("127.0.0.1"), VtServerOptions::DefaultPort};
    options.name = QStringLiteral("mcserver");
    CommandLine line(
        "mcserver",
        "Owns a direction finder and offers it to many clients at once, each with a device of its own.",
        Options, &options);
    line.AddWord("USER", "For --make-token.", "[USER");
    line.AddWord("ROLE", "For --make-token.", "ROLE]");
    if (!line.Parse(arguments)) return options;
    if (line.IsSet("make-token"))
        TakeTokenWords(line, options);
    else if (!line.GetWords().isEmpty())
        line.RefuseWord(line.GetWords().first());
    else
        TakeOptions(line, options);
    return options;
}
