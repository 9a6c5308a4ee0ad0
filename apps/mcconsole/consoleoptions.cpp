// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/consoleoptions.h>

#include <apps/common/commandline.h>
#include <apps/common/mpxorvname.h>
#include <apps/mcconsole/keptstations.h>

namespace {

QString Text(const char* text) {
    return QString::fromUtf8(text);
}

// In the order of the help.
constexpr CommandLine::Option Options[] = {
    {"connect", "HOST[:PORT]",
     "Connect to this server; mcss:// in front means TLS, nats://HOST/STATION through NATS. Several "
     "times: a tab for each. Asks unless given."},
    {"tls", nullptr, "Connect with TLS."},
    {"ca", "FILE", "Authority that the server's certificate must come from, PEM; means TLS."},
    {"cert", "FILE", "Certificate of this client, PEM; means TLS."},
    {"key", "FILE", "Private key of that certificate, PEM."},
    {"user", "NAME", "Whose token is given."},
    {"token", "TOKEN", "The token; MCS_TOKEN in the environment otherwise, which other users cannot see."},
    {"name", "NAME", "What the MpxORV of this console is called."},
    {"config", "FILE", "Configuration to read and save."},
    {"locale", "LOCALE", "Language of the texts, such as de or en."},
    {"dark", nullptr, "Show dark colours."},
    {"screenshot", "DIRECTORY", "Save a picture of every page below DIRECTORY, and end."},
};

void TakeServer(CommandLine& line, ConsoleOptions& options) {
    options.isEncrypted =
        line.IsSet("tls") || !options.client.caFile.isEmpty() || !options.client.certificateFile.isEmpty();
    if (options.client.certificateFile.isEmpty() != options.client.privateKeyFile.isEmpty())
        return line.Refuse(Text("--cert and --key belong together"));
    if (!line.IsSet("connect")) {
        if (!options.screenshotDirectory.isEmpty()) line.Refuse(Text("--screenshot needs --connect"));
        return;
    }
    for (const QString& text : line.GetValues("connect")) {
        ServerAddress server;
        server.isEncrypted = options.isEncrypted;
        line.Refuse("connect", server.Parse(text));
        options.servers.push_back(server);
    }
    if (options.servers.size() > KeptStations::MaxStations)
        line.Refuse("connect", QStringLiteral("%1 stations at most").arg(KeptStations::MaxStations));
}

void TakeOptions(CommandLine& line, ConsoleOptions& options) {
    line.TakeText("ca", &options.client.caFile);
    line.TakeText("cert", &options.client.certificateFile);
    line.TakeText("key", &options.client.privateKeyFile);
    line.TakeText("user", &options.client.user);
    line.TakeText("token", &options.client.token);
    line.TakeText("name", &options.mpxOrvName);
    line.TakeText("config", &options.configFile);
    line.TakeText("locale", &options.locale);
    line.TakeText("screenshot", &options.screenshotDirectory);
    if (!options.mpxOrvName.isEmpty() && !IsMpxOrvName(options.mpxOrvName))
        line.Refuse("name", Text("128 characters at most, without / , < > and blanks around"));
    options.isDark = line.IsSet("dark");
    TakeServer(line, options);
}

}  // namespace

ConsoleOptions ConsoleOptions::Parse(const QStringList& arguments, const QString& environmentToken) {
    ConsoleOptions options;
    options.client.token = environmentToken;
    CommandLine line("mcconsole", "The operator's window on a multi-channel server.", Options, &options);
    if (line.Parse(arguments)) TakeOptions(line, options);
    return options;
}
