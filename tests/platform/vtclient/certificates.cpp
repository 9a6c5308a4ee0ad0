// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/certificates.h>

#include <apps/common/childprogram.h>

#include <QtCore/QFile>

#include <algorithm>
#include <initializer_list>

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
commonName = optional
organizationName = optional
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
    const char* const past = "20200101000000Z";
    const char* const over = "20210101000000Z";
    const char* const future = "20990101000000Z";
    const char* const far = "20991231235959Z";
    const std::initializer_list<Order> orders = {
        {"server"},
        {"client"},
        {"server.expired", "authority", past, over},
        {"client.expired", "authority", past, over},
        {"server.future", "authority", future, far},
        {"server.stranger", "stranger"},
        {"client.stranger", "stranger"},
        {"server.rsa"},
        {"server.localhost", "authority", past, far, "/CN=localhost"},
        {"server.names", "authority", past, far, nullptr,
         "DNS:tower.example.org,DNS:*.vans.example.org,IP:::1"},
        {"client.twonames", "authority", past, far, "/CN=client/CN=olga"},
        {"client.nameless", "authority", past, far, "/O=client"}};
    const bool isGood =
        WriteConfiguration() && MakeAuthority(S("authority")) && MakeAuthority(S("stranger")) &&
        std::all_of(orders.begin(), orders.end(), [this](const Order& order) { return Issue(order); });
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

bool Certificates::MakeRsaKey(const QString& name) {
    return Run({S("genrsa"), S("-out"), name + S(".key"), S("2048")});
}

bool Certificates::Issue(const Order& order) {
    const QString name = S(order.name);
    const QString authority = S(order.authority);
    const QString subject = order.subject != nullptr ? S(order.subject) : S("/CN=") + name;
    return (name.endsWith(S(".rsa")) ? MakeRsaKey(name) : MakeKey(name)) &&
           Run({S("req"), S("-new"), S("-config"), S("configuration"), S("-key"), name + S(".key"),
                S("-subj"), subject, S("-addext"), S("subjectAltName=") + S(order.alternativeNames),
                S("-out"), name + S(".csr")}) &&
           Run({S("ca"), S("-batch"), S("-notext"), S("-config"), S("configuration"), S("-cert"),
                authority + S(".pem"), S("-keyfile"), authority + S(".key"), S("-startdate"), S(order.from),
                S("-enddate"), S(order.to), S("-in"), name + S(".csr"), S("-out"), name + S(".pem")});
}
