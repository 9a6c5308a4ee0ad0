// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/vtclientcenter.h>

#include <platform/app/errorhandler.h>
#include <platform/vtclient/qteventloop.h>
#include <platform/vtclient/socketconnector.h>
#include <platform/vtclient/vtclient.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>

#include <algorithm>

namespace {

constexpr int MaxAddressLength = 255;  // of a host name

/// Splits "mcs://host", "mcss://host" and "host". False for another scheme and for what can be no host.
bool ParseAddress(const QString& address, QString* host, bool* isTls) {
    *host = address;
    *isTls = false;
    const int scheme = address.indexOf(QStringLiteral("://"));
    if (scheme >= 0) {
        const QString name = address.left(scheme);
        *isTls = name == QLatin1String("mcss");
        if (!*isTls && name != QLatin1String("mcs")) return false;
        *host = address.mid(scheme + 3);
    }
    if (host->startsWith(QLatin1Char('[')) && host->endsWith(QLatin1Char(']')))
        *host = host->mid(1, host->size() - 2);
    if (host->isEmpty() || host->size() > MaxAddressLength) return false;
    return std::none_of(host->cbegin(), host->cend(), [](QChar character) {
        return character.isSpace() || !character.isPrint() || QStringLiteral("/,[]\\@?#").contains(character);
    });
}

}  // namespace

VtClientCenter::VtClientCenter() = default;
VtClientCenter::~VtClientCenter() = default;

VtClientCenter& VtClientCenter::Instance() {
    static VtClientCenter instance;
    return instance;
}

void VtClientCenter::SetOptions(const VtClientOptions& options) {
    m_options = options;
}

IVtClient* VtClientCenter::CreateVtClient(const char* address, int port) {
    QString host;
    bool isTls = false;
    const bool isGood = address != nullptr && ParseAddress(QString::fromUtf8(address), &host, &isTls);
    if (!isGood || port < 1 || port > 65535) {
        if (ErrorHandler::Instance().IsTraced(ErrorHandler::TraceWarnings))
            _Q_TraceOld("There can be no server at address '%s', port %d", address != nullptr ? address : "",
                        port);
        return nullptr;
    }
    auto connector = std::make_unique<vt::SocketConnector>(host, port, isTls, m_options);
    m_clients.push_back(std::make_unique<vt::VtClient>(host, port, m_options, std::move(connector),
                                                       std::make_unique<vt::QtEventLoop>()));
    return m_clients.back().get();
}

void VtClientCenter::DestroyVtClient(IVtClient* client) {
    const auto isClient = [client](const auto& other) { return other.get() == client; };
    const auto found = std::find_if(m_clients.begin(), m_clients.end(), isClient);
    if (client == nullptr || found == m_clients.end()) return;
    auto* const ended = static_cast<vt::VtClient*>(client);
    std::unique_ptr<IVtClient> last = std::move(*found);
    m_clients.erase(found);
    ended->Shutdown();
    if (ended->IsIdle()) return;
    // A call of the client itself led here: it lasts until that has returned, or the application ends.
    if (m_ended.empty()) QTimer::singleShot(0, QCoreApplication::instance(), [this] { m_ended.clear(); });
    static const bool isLastChance = (qAddPostRoutine([] { Instance().m_ended.clear(); }), true);
    Q_UNUSED(isLastChance)
    m_ended.push_back(std::move(last));
}
