// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/certificates.h>

#include <apps/common/childprogram.h>

#include <QtCore/QFile>

namespace {

constexpr std::chrono::seconds Patience(20);  // for one run of the tool

// The tool's database of issued certificates, which only this way of issuing lets choose both dates.
constexpr const char* Configuration = R"([ca]
default_ca = issuing
[issuing]
database = issued.txt
new_certs_dir = .
default_md = sha256
rand_serial = yes
unique_subject = no
copy_extensions = copy
policy = anything
[anything]
commonName = supplied
[req]
distinguished_name = name
[name]
)";

QString S(const char* text) {
    return QString::fromLatin1(text);
}

}  // namespace

const Certificates& Certificates::Instance() {
    static const Certificates instance;
    return instance;
}

Certificates::Certificates() {
    const QString past = S("20200101000000Z");
    const QString over = S("20210101000000Z");
    const QString future = S("20991231235959Z");
    const bool isGood = WriteConfiguration() && MakeAuthority(S("authority")) &&
                        MakeAuthority(S("stranger")) && Issue(S("server"), S("authority"), past, future) &&
                        Issue(S("client"), S("authority"), past, future) &&
                        Issue(S("server.expired"), S("authority"), past, over) &&
                        Issue(S("client.expired"), S("authority"), past, over) &&
                        Issue(S("server.stranger"), S("stranger"), past, future) &&
                        Issue(S("client.stranger"), S("stranger"), past, future);
    if (!isGood && m_error.isEmpty()) m_error = S("no certificates");
}

bool Certificates::WriteConfiguration() {
    QFile configuration(File("configuration"));
    QFile issued(File("issued.txt"));
    return configuration.open(QIODevice::WriteOnly) && configuration.write(Configuration) > 0 &&
           issued.open(QIODevice::WriteOnly);
}

bool Certificates::Run(const QStringList& arguments) {
    ChildProgram tool(ChildProgram::EErrors::WithOutput);
    tool.SetDirectory(m_folder.path());
    const ProgramOutcome outcome = tool.Run(S("openssl"), arguments, Patience);
    if (outcome.code == 0) return true;
    m_error = S("openssl %1: %2 %3")
                  .arg(arguments.join(QLatin1Char(' ')), QString::number(outcome.code),
                       QString::fromUtf8(outcome.output));
    return false;
}

bool Certificates::MakeKey(const QString& name) {
    return Run(
        {S("ecparam"), S("-name"), S("prime256v1"), S("-genkey"), S("-noout"), S("-out"), name + S(".key")});
}

bool Certificates::MakeAuthority(const QString& name) {
    return MakeKey(name) &&
           Run({S("req"), S("-x509"), S("-new"), S("-config"), S("configuration"), S("-key"),
                name + S(".key"), S("-subj"), S("/CN=") + name, S("-days"), S("30"), S("-addext"),
                S("basicConstraints=critical,CA:TRUE"), S("-out"), name + S(".pem")});
}

bool Certificates::Issue(const QString& name, const QString& authority, const QString& from,
                         const QString& to) {
    return MakeKey(name) &&
           Run({S("req"), S("-new"), S("-config"), S("configuration"), S("-key"), name + S(".key"),
                S("-subj"), S("/CN=") + name, S("-addext"), S("subjectAltName=IP:127.0.0.1"), S("-out"),
                name + S(".csr")}) &&
           Run({S("ca"), S("-batch"), S("-notext"), S("-config"), S("configuration"), S("-cert"),
                authority + S(".pem"), S("-keyfile"), authority + S(".key"), S("-startdate"), from,
                S("-enddate"), to, S("-in"), name + S(".csr"), S("-out"), name + S(".pem")});
}
