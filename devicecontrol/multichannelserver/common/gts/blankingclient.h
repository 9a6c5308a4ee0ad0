// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

#include <QtCore/QString>

/// Whoever asks Blanking whether a frequency is blanked. Blanking knows a client by the address of this
/// object (fixed: client-by-address); the name is for people. A copy is another client, and every client
/// starts with blanking enabled. Main thread.
class MCS_COMMON_EXPORT BlankingClient {
  public:
    // fixed: client-from-text
    /// \a name is for people; it may be empty.
    BlankingClient(const QString& name = QString());  // NOLINT(google-explicit-constructor)
    BlankingClient(const BlankingClient& other);
    /// Takes the name over. Whether blanking is enabled stays as it is on both sides.
    BlankingClient& operator=(const BlankingClient& other);
    /// Blanking forgets the client: another one may come to stand at the same address.
    ~BlankingClient();

    QString Name() const;  ///< As given; for people.

  private:
    QString m_name;
};
