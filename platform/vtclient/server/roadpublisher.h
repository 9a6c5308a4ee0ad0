// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/iroads.h>
#include <platform/vtclient/server/roadmemory.h>
#include <platform/vtclient/wire/messages.h>
#include <platform/vtclient/wire/roadseal.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <chrono>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string_view>

namespace vt {

/// The server's end of the shared road of one subtree: numbers what is said of it, seals it, and gives it to
/// the bus, once for all who follow. Knows nobody who does.
class RoadPublisher {
  public:
    /// \a roads and \a share outlive this. \a name is the road's, never used for another.
    RoadPublisher(IRoads& roads, QString name, RoadMemory::Share& share);

    const QString& Name() const { return m_name; }
    /// The last number that was published; 0: none was.
    quint64 Number() const { return m_number; }
    /// What opens all that is published from now on, for subscription \a sub. False if there is no key to be
    /// had, and nothing is published.
    bool Describe(quint32 sub, RoadMessage* road) const;
    /// Who has only keys that were told before opens nothing of what is published from now on.
    void ChangeKey();

    /// In as many messages as the bus makes of it.
    void Publish(const QByteArray& changes, bool hasMore, std::chrono::microseconds now);
    /// Publishes once more what was published under these numbers, as far as it is kept.
    void SayAgain(quint64 from, quint64 to, std::chrono::microseconds now);
    /// Says that this is all so far, if that is due: so whoever has missed the last message learns of it, and
    /// whoever listens for a first one hears it. \a isWanted: somebody does.
    void MarkIfDue(std::chrono::microseconds now, std::chrono::milliseconds interval, bool isWanted);

  private:
    std::size_t MostAtOnce() const;
    void PublishOne(std::initializer_list<std::string_view> parts, bool isContinued);
    void PublishInPieces(std::initializer_list<std::string_view> parts);

    IRoads& m_roads;
    QString m_name;
    RoadMemory m_memory;
    quint64 m_number = 0;
    quint32 m_keyNumber = 0;
    QByteArray m_key;
    std::unique_ptr<RoadSeal> m_seal;
    std::chrono::microseconds m_publishedAt{};
    bool m_hasMore = false;  ///< what was added last is not complete
    bool m_isMarked = true;  ///< nothing but marks came last
};

}  // namespace vt
