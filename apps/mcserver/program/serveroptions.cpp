// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/serveroptions.h>

#include <apps/common/commandline.h>

#include <platform/vtclient/vtaccessfile.h>
#include <platform/vtclient/vtserver.h>

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
    {"script", "FILE", "What the simulated device does by itself."},
    {"name", "NAME", "What the server calls itself; also names its configuration. mcserver unless given."},
    {"headless", nullptr, "Show no window."},
    {"screenshot", "DIRECTORY", "Save a picture of every page of the window below DIRECTORY, and end."},
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
    if (options.name.contains(QLatin1Char('/')) || options.name.contains(QLatin1Char('\\')))
        line.Refuse(Text("--name cannot hold a slash"));
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
