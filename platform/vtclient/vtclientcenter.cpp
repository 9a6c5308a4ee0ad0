// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/vtclientcenter.h>

#include <platform/app/errorhandler.h>
#include <platform/vtclient/channel/endedobjects.h>
#include <platform/vtclient/channel/qteventloop.h>
#include <platform/vtclient/channel/socketconnector.h>
#include <platform/vtclient/client/vtclient.h>
#include <platform/vtclient/iconnector.h>

#include <algorithm>
#include <utility>

namespace {

constexpr int MaxAddressLength = 255;  // of a host name

bool BelongsToNoHost(QChar character) {
    return character.isSpace() || !character.isPrint() || QStringLiteral("/,[]\\@?#").contains(character);
}

bool IsScheme(const QString& text) {
    const auto isLetter = [](QChar character) {
        return character >= QLatin1Char('a') && character <= QLatin1Char('z');
    };
    const auto isDigit = [](QChar character) {
        return character >= QLatin1Char('0') && character <= QLatin1Char('9');
    };
    return !text.isEmpty() && isLetter(text.front()) &&
           std::all_of(text.cbegin(), text.cend(),
                       [&](QChar character) { return isLetter(character) || isDigit(character); });
}

struct Address {
    QString scheme;
    QString host;
};

Address Split(const QString& text) {
    const int end = text.indexOf(QStringLiteral("://"));
    if (end < 0) return {QStringLiteral("mcs"), text};
    return {text.left(end), text.mid(end + 3)};
}

/// \return why there can be no such \a host, which loses its brackets, in one line; empty if there can.
QString CheckHost(QString* host) {
    if (host->startsWith(QLatin1Char('[')) && host->endsWith(QLatin1Char(']')))
        *host = host->mid(1, host->size() - 2);
    if (host->isEmpty()) return QStringLiteral("it names no host");
    if (host->size() > MaxAddressLength) return QStringLiteral("the host's name is too long");
    // What was turned into Latin-1 and does not fit there came as a question mark.
    if (host->contains(QLatin1Char('?')))
        return QStringLiteral(
            "'?' belongs to no host; for a character beyond Latin-1 write the host's ACE form, "
            "which begins with xn--");
    const auto* const wrong = std::find_if(host->cbegin(), host->cend(), BelongsToNoHost);
    return wrong == host->cend() ? QString() : QStringLiteral("'%1' belongs to no host").arg(*wrong);
}

void TraceRefusal(const QString& address, int port, const QString& problem) {
    if (ErrorHandler::Instance().IsTraced(ErrorHandler::TraceWarnings))
        _Q_TraceOld("There can be no server at address '%s', port %d: %s", qUtf8Printable(address), port,
                    qUtf8Printable(problem));
}

}  // namespace

VtClientCenter::VtClientCenter() {
    for (const bool isTls : {false, true})
        RegisterScheme(isTls ? QStringLiteral("mcss") : QStringLiteral("mcs"),
                       [isTls](const QString& host, int port, const VtClientOptions& options, QString*) {
                           return std::make_unique<vt::SocketConnector>(host, port, isTls, options);
                       });
}

VtClientCenter::~VtClientCenter() = default;

VtClientCenter& VtClientCenter::Instance() {
    static auto& center = *new VtClientCenter;  // never destroyed: statics that go later may still ask it
    return center;
}

void VtClientCenter::SetOptions(const VtClientOptions& options) {
    m_options = options;
}

bool VtClientCenter::RegisterScheme(const QString& scheme, VtConnectorMaker maker) {
    return RegisterScheme(scheme, std::move(maker), EAddress::Host);
}

bool VtClientCenter::RegisterScheme(const QString& scheme, VtConnectorMaker maker, EAddress address) {
    if (!maker || !IsScheme(scheme)) return false;
    return m_schemes.emplace(scheme, Scheme{std::move(maker), address}).second;
}

IVtClient* VtClientCenter::CreateVtClient(const char* address, int port) {
    const QString text = QString::fromLatin1(address);
    Address parts = Split(text);
    const auto scheme = m_schemes.find(parts.scheme);
    QString problem;
    if (scheme == m_schemes.end())
        problem = QStringLiteral("'%1' is no scheme of servers").arg(parts.scheme);
    else if (scheme->second.address == EAddress::Host)
        problem = CheckHost(&parts.host);
    if (problem.isEmpty() && (port < 1 || port > 65535)) problem = QStringLiteral("ports are 1 to 65535");
    if (problem.isEmpty() && m_isEnding) problem = QStringLiteral("the application ends");
    std::unique_ptr<vt::IConnector> connector;
    if (problem.isEmpty()) connector = scheme->second.maker(parts.host, port, m_options, &problem);
    if (connector == nullptr) {
        TraceRefusal(text, port, problem);
        return nullptr;
    }
    if (!m_applicationEnd) m_applicationEnd.emplace([this] { EndAll(); });
    m_clients.push_back(std::make_unique<vt::VtClient>(parts.host, port, m_options, std::move(connector),
                                                       std::make_unique<vt::QtEventLoop>()));
    return m_clients.back().get();
}

void VtClientCenter::DestroyVtClient(IVtClient* client) {
    const auto isClient = [client](const auto& other) { return other.get() == client; };
    const auto found = std::find_if(m_clients.begin(), m_clients.end(), isClient);
    if (client == nullptr || found == m_clients.end()) return;
    std::unique_ptr<vt::VtClient> last = std::move(*found);
    m_clients.erase(found);
    last->Shutdown();
    vt::EndedObjects::Instance().Take(std::move(last));  // a call of the client itself may have led here
}

// Where the process ends without this, nobody says goodbye: the system closes the sockets.
void VtClientCenter::EndAll() {
    m_isEnding = true;  // whoever hears of it need not try to connect again
    while (!m_clients.empty())
        DestroyVtClient(m_clients.back().get());
    m_isEnding = false;
    m_applicationEnd.reset();
}
