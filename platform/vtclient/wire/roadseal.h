// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include <initializer_list>
#include <memory>
#include <optional>
#include <string_view>

namespace vt {

class IRoads;

/// What stands around a message on a shared road, in the clear: a byte that says whether the next message
/// goes on with what this one says, the number of its key, its own number, then what is sealed, and behind
/// that the tag that proves it.
struct RoadEnvelope {
    static constexpr int HeadSize = 1 + 4 + 8;
    static constexpr int TagSize = 16;

    quint32 key = 0;
    quint64 number = 0;
    bool isContinued = false;
    std::string_view sealed;  ///< with the tag

    /// None for rubbish. Whether it is true, RoadSeal tells. Valid as long as \a data.
    static std::optional<RoadEnvelope> Of(const char* data, qint64 size);
};

/// Seals and opens what goes by a shared road under one of its keys: authenticated encryption (AES-256-GCM)
/// whose nonce is the number of the message. So a number must not be used twice under one key, which this
/// asserts. What was sealed opens only with the same key, under the same number, and for the same road.
class RoadSeal {
  public:
    static constexpr int KeySize = 32;

    /// \a road names the road, with the station whose it is, and \a keyNumber the key among those of the
    /// road.
    RoadSeal(const QString& road, quint32 keyNumber, const QByteArray& key);
    ~RoadSeal();
    RoadSeal(const RoadSeal&) = delete;
    RoadSeal& operator=(const RoadSeal&) = delete;

    quint32 KeyNumber() const { return m_keyNumber; }
    /// \a parts, one after the other, as message \a number, with its envelope; \a isContinued: the next one
    /// goes on with it. Valid until the next call. Empty if the library refuses.
    std::string_view Seal(quint64 number, std::initializer_list<std::string_view> parts,
                          bool isContinued = false);
    /// What is in \a envelope, which has the number of this key. Valid until the next call. None if it is not
    /// what was sealed.
    std::optional<std::string_view> Open(const RoadEnvelope& envelope);

    /// A new key, which nobody can guess; empty if the system has no randomness.
    static QByteArray NewKey();

  private:
    struct Cipher;

    quint32 m_keyNumber;
    quint64 m_lastSealed = 0;
    std::unique_ptr<Cipher> m_cipher;
    QByteArray m_room;
};

/// What a RoadSeal is told of \a road, one of \a roads.
QString RoadPlace(const IRoads& roads, const QString& road);

}  // namespace vt
