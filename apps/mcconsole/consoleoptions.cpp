// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/consoleoptions.h>

#include <apps/common/mpxorvname.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>

namespace {

QString Text(const char* text) {
    return QString::fromUtf8(text);
}

struct Option {
    const char* name;
    const char* description;
    const char* value;  ///< null: takes none
};

// In the order of the help.
constexpr Option Options[] = {
    {"connect", "Connect to this server; mcss:// in front means TLS. Asks unless given.", "HOST[:PORT]"},
    {"tls", "Connect with TLS.", nullptr},
    {"ca", "Authority that the server's certificate must come from, PEM; means TLS.", "FILE"},
    {"cert", "Certificate of this client, PEM; means TLS.", "FILE"},
    {"key", "Private key of that certificate, PEM.", "FILE"},
    {"user", "Whose token is given.", "NAME"},
    {"token", "The token; MCS_TOKEN in the environment otherwise, which other users cannot see.", "TOKEN"},
    {"name", "What the MpxORV of this console is called.", "NAME"},
    {"config", "Configuration to read and save.", "FILE"},
    {"locale", "Language of the texts, such as de or en.", "LOCALE"},
    {"dark", "Show dark colours.", nullptr},
    {"screenshot", "Save a picture of every page below DIRECTORY, and end.", "DIRECTORY"},
};

void Describe(QCommandLineParser& parser) {
    parser.setApplicationDescription(Text("The operator's window on a multi-channel server."));
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addHelpOption();
    parser.addVersionOption();
    for (const Option& option : Options) {
        QCommandLineOption described(Text(option.name), Text(option.description));
        if (option.value != nullptr) described.setValueName(Text(option.value));
        parser.addOption(described);
    }
}

void Complain(ConsoleOptions& options, const QString& text) {
    options.action = ConsoleOptions::EAction::Complain;
    options.text = text;
}

void TakeServer(ConsoleOptions& options, const QCommandLineParser& parser) {
    options.isEncrypted = parser.isSet(Text("tls")) || !options.client.caFile.isEmpty() ||
                          !options.client.certificateFile.isEmpty();
    if (options.client.certificateFile.isEmpty() != options.client.privateKeyFile.isEmpty())
        return Complain(options, Text("--cert and --key belong together"));
    if (!parser.isSet(Text("connect"))) {
        if (!options.screenshotDirectory.isEmpty()) Complain(options, Text("--screenshot needs --connect"));
        return;
    }
    ServerAddress server;
    server.isEncrypted = options.isEncrypted;
    const QString error = server.Parse(parser.value(Text("connect")));
    if (!error.isEmpty()) return Complain(options, QStringLiteral("--connect: %1").arg(error));
    options.server = server;
}

void TakeOptions(ConsoleOptions& options, const QCommandLineParser& parser) {
    const struct {
        const char* name;
        QString* value;
    } values[] = {{"ca", &options.client.caFile},
                  {"cert", &options.client.certificateFile},
                  {"key", &options.client.privateKeyFile},
                  {"user", &options.client.user},
                  {"token", &options.client.token},
                  {"name", &options.mpxOrvName},
                  {"config", &options.configFile},
                  {"locale", &options.locale},
                  {"screenshot", &options.screenshotDirectory}};
    for (const auto& value : values) {
        if (!parser.isSet(Text(value.name))) continue;
        *value.value = parser.value(Text(value.name));
        if (value.value->isEmpty())
            return Complain(options, QStringLiteral("--%1 needs a value").arg(Text(value.name)));
    }
    if (!options.mpxOrvName.isEmpty() && !IsMpxOrvName(options.mpxOrvName))
        return Complain(options, Text("--name: 128 characters at most, without / , < > and blanks around"));
    options.isDark = parser.isSet(Text("dark"));
    TakeServer(options, parser);
}

}  // namespace

ConsoleOptions ConsoleOptions::Parse(const QStringList& arguments, const QString& environmentToken) {
    ConsoleOptions options;
    options.client.token = environmentToken;
    QCommandLineParser parser;
    Describe(parser);
    if (!parser.parse(arguments)) {
        Complain(options, parser.errorText());
    } else if (parser.isSet(QStringLiteral("help")) || parser.isSet(QStringLiteral("help-all"))) {
        options.action = EAction::Print;
        options.text = parser.helpText();
    } else if (parser.isSet(QStringLiteral("version"))) {
        options.action = EAction::Print;
        options.text = QStringLiteral("mcconsole %1\n").arg(QCoreApplication::applicationVersion());
    } else if (!parser.positionalArguments().isEmpty()) {
        Complain(options, QStringLiteral("'%1' is not understood").arg(parser.positionalArguments()[0]));
    } else {
        TakeOptions(options, parser);
    }
    return options;
}
