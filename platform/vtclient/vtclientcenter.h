// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/applicationend.h>
#include <platform/vtclient/connectionexport.h>

#include <QtCore/QString>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

class IVtClient;
namespace vt {
class IConnector;
class VtClient;
}  // namespace vt

/// How clients present themselves and how patient they are. What is left empty is not used.
struct VtClientOptions {
    using Time = std::chrono::milliseconds;

    QString user;               ///< whose token it is
    QString token;              ///< the secret itself; sent over TLS or on loopback only
    QString caFile;             ///< PEM: whom a TLS server's certificate must come from; empty: the system's
    QString certificateFile;    ///< PEM: the client's own certificate
    QString privateKeyFile;     ///< PEM: and its key
    Time connectTimeout{5000};  ///< for connecting, TLS and the server's welcome
    Time pingInterval{5000};
    Time deadAfter{15'000};  ///< without a word from the server
    Time firstRetry{100};    ///< doubles with every failure, with jitter
    Time longestRetry{10'000};
};

/// Makes what connects one client to its server, at \a host and \a port as they stand in the address. \return
/// null with the reason in \a problem, in one line, if there can be no such server.
using VtConnectorMaker = std::function<std::unique_ptr<vt::IConnector>(
    const QString& host, int port, const VtClientOptions& options, QString* problem)>;

/// Makes the process's clients of value-tree servers. Main thread.
class MCS_CONNECTION_EXPORT VtClientCenter {
  public:
    static VtClientCenter& Instance();  ///< the one of the process
    VtClientCenter(const VtClientCenter&) = delete;
    VtClientCenter& operator=(const VtClientCenter&) = delete;

    /// What clients made from now on use.
    void SetOptions(const VtClientOptions& options);
    const VtClientOptions& GetOptions() const { return m_options; }

    /// What stands behind a scheme: a host, which is checked before the maker sees it and comes without
    /// brackets, or something of the maker's own, which it has to check.
    enum class EAddress { Host, Own };

    /// Lets addresses that begin with \a scheme and "://" have connectors from \a maker from now on, which is
    /// how another transport than TCP and TLS comes in. \return false if the scheme is known already, or is
    /// none: lower-case letters and digits, a letter first.
    bool RegisterScheme(const QString& scheme, VtConnectorMaker maker);
    bool RegisterScheme(const QString& scheme, VtConnectorMaker maker, EAddress address);  ///< else Host

    /// A client of the server at \a address, a host name or an IP address, with "mcs://" (assumed),
    /// "mcss://" (TLS) or another registered scheme in front. The text is Latin-1; a name beyond that has an
    /// ACE form ("xn--..."). It starts to connect when the event loop runs. Destroy it with DestroyVtClient;
    /// one that is left when the application object goes is destroyed then, which it tells. \return null for
    /// an address, scheme or port that cannot be right, with a trace.
    IVtClient* CreateVtClient(const char* address, int port);
    /// Tells the client's observers that it goes, and destroys it with its tics. Null and a client that is
    /// not of this center change nothing.
    void DestroyVtClient(IVtClient* client);

  private:
    VtClientCenter();
    ~VtClientCenter();

    struct Scheme {
        VtConnectorMaker maker;
        EAddress address;
    };

    void EndAll();

    VtClientOptions m_options;
    std::map<QString, Scheme> m_schemes;
    std::vector<std::unique_ptr<vt::VtClient>> m_clients;
    std::optional<ApplicationEnd> m_applicationEnd;  ///< since the first client that it ends
    bool m_isEnding = false;
};
