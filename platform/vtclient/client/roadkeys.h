// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/roadseal.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <deque>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace vt {

/// The keys of one shared road, as the server gave them in the session, and what has come whose key has not
/// yet.
class RoadKeys {
  public:
    enum class EOpened {
        Opened,  ///< it is the server's
        Kept,    ///< the key may come: it waits for that
        Foreign  ///< it is not the server's, or its key has gone
    };

    /// Of another road from now on.
    void Restart(const QString& road);
    /// One more key; what is on its way may still be older. False for what is no key.
    bool Add(quint32 number, const QString& secret);
    /// What is in \a envelope, of the message \a whole. \a opened is valid until the next call.
    EOpened Open(const RoadEnvelope& envelope, std::string_view whole, std::string_view* opened);
    /// What has waited for a key that is here now.
    std::vector<QByteArray> TakeKept();

  private:
    QString m_road;
    std::deque<std::unique_ptr<RoadSeal>> m_seals;  ///< the latest last
    std::deque<QByteArray> m_kept;
    std::size_t m_keptBytes = 0;
};

}  // namespace vt
