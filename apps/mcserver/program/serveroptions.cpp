// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/serveroptions.h>

#include <platform/vtclient/vtaccessfile.h>
#include <platform/vtclient/vtserver.h>

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
    {"listen",
     "Interface and port to listen on, IPv6 addresses in brackets; port 0 is any free one. 127.0.0.1:7450 "
     "unless given.",
     "ADDRESS[:PORT]"},
    {"tls-cert", "Certificate of the server, PEM. With it the server speaks TLS only.", "FILE"},
    {"tls-key", "Private key of that certificate, PEM.", "FILE"},
    {"tls-ca", "Authority whose client certificates count as credentials, PEM.", "FILE"},
    {"insecure", "Listen beyond this machine also without TLS and credentials.", nullptr},
    {"access", "Who may come in, and what each role may do.", "FILE"},
    {"config", "Configuration to read and save.", "FILE"},
    {"script", "What the simulated device does by itself.", "FILE"},
    {"name", "What the server calls itself; also names its configuration. mcserver unless given.", "NAME"},
    {"headless", "Show no window.", nullptr},
    {"screenshot", "Save a picture of every page of the window below DIRECTORY, and end.", "DIRECTORY"},
    {"make-token", "Print a fresh token for USER in ROLE, and its line for the access file.", nullptr},
};

void Describe(QCommandLineParser& parser) {
    parser.setApplicationDescription(Text(
        "Owns a direction finder and offers it to many clients at once, each with a device of its own."));
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addHelpOption();
    parser.addVersionOption();
    for (const Option& option : Options) {
        QCommandLineOption described(Text(option.name), Text(option.description));
        if (option.value != nullptr) described.setValueName(Text(option.value));
        parser.addOption(described);
    }
    parser.addPositionalArgument(Text("USER"), Text("For --make-token."), Text("[USER"));
    parser.addPositionalArgument(Text("ROLE"), Text("For --make-token."), Text("ROLE]"));
}

void Complain(ServerOptions& options, const QString& text) {
    options.action = ServerOptions::EAction::Complain;
    options.text = text;
}

void TakeTokenArguments(ServerOptions& options, const QStringList& words) {
    if (words.size() != 2) return Complain(options, Text("--make-token needs a user and a role"));
    for (const QString& word : words)
        if (!VtAccessFile::IsName(word))
            return Complain(options, QStringLiteral("'%1' can be no user and no role").arg(word));
    if (words[0].startsWith(VtAccessFile::CertificateUser(QString())))
        return Complain(options, Text("a user by certificate has no token"));
    options.action = ServerOptions::EAction::MakeToken;
    options.user = words[0];
    options.role = words[1];
}

void TakeOptions(ServerOptions& options, const QCommandLineParser& parser) {
    const auto take = [&parser](const char* name, QString* value) {
        if (parser.isSet(Text(name))) *value = parser.value(Text(name));
        return !parser.isSet(Text(name)) || !value->isEmpty();
    };
    const struct {
        const char* name;
        QString* value;
    } values[] = {{"tls-cert", &options.certificateFile},
                  {"tls-key", &options.privateKeyFile},
                  {"tls-ca", &options.caFile},
                  {"access", &options.accessFile},
                  {"config", &options.configFile},
                  {"script", &options.scriptFile},
                  {"name", &options.name},
                  {"screenshot", &options.screenshotDirectory}};
    for (const auto& value : values)
        if (!take(value.name, value.value))
            return Complain(options, QStringLiteral("--%1 needs a value").arg(Text(value.name)));
    options.isInsecure = parser.isSet(Text("insecure"));
    options.isHeadless = parser.isSet(Text("headless"));
    if (options.isHeadless && !options.screenshotDirectory.isEmpty())
        return Complain(options, Text("--screenshot needs the window"));
    QString error;
    if (parser.isSet(Text("listen")) && !options.listen.Parse(parser.value(Text("listen")), &error))
        return Complain(options, error);
    if (options.certificateFile.isEmpty() != options.privateKeyFile.isEmpty())
        return Complain(options, Text("--tls-cert and --tls-key need each other"));
    if (!options.caFile.isEmpty() && options.certificateFile.isEmpty())
        return Complain(options, Text("--tls-ca needs --tls-cert"));
    if (options.name.contains(QLatin1Char('/')) || options.name.contains(QLatin1Char('\\')))
        return Complain(options, Text("--name cannot hold a slash"));
}

}  // namespace

ServerOptions ServerOptions::Parse(const QStringList& arguments) {
    ServerOptions options;
    options.listen = {QStringLiteral("127.0.0.1"), VtServerOptions::DefaultPort};
    options.name = QStringLiteral("mcserver");
    QCommandLineParser parser;
    Describe(parser);
    if (!parser.parse(arguments)) {
        Complain(options, parser.errorText());
        return options;
    }
    const QStringList words = parser.positionalArguments();
    if (parser.isSet(QStringLiteral("help")) || parser.isSet(QStringLiteral("help-all"))) {
        options.action = EAction::Print;
        options.text = parser.helpText();
    } else if (parser.isSet(QStringLiteral("version"))) {
        options.action = EAction::Print;
        options.text = QStringLiteral("mcserver %1\n").arg(QCoreApplication::applicationVersion());
    } else if (parser.isSet(QStringLiteral("make-token"))) {
        TakeTokenArguments(options, words);
    } else if (!words.isEmpty()) {
        Complain(options, QStringLiteral("'%1' is not understood").arg(words[0]));
    } else {
        TakeOptions(options, parser);
    }
    return options;
}
