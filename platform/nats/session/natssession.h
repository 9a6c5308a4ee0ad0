// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/inatsbus.h>
#include <platform/nats/session/inputstream.h>
#include <platform/nats/session/outputstream.h>
#include <platform/nats/session/packet.h>
#include <platform/nats/session/sessionseal.h>

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QTimer>

#include <functional>
#include <memory>
#include <string>

namespace vt {
class IChannelListener;
}

namespace nats {

/// One end of a session over NATS: a stream of frames in numbered packets. What has not been consumed at the
/// other end is bounded by its window; a packet that is missing or comes twice ends it, like a cut
/// connection. Belongs to its channel, and after that to those that still send their last words. Main thread.
class NatsSession final : public QObject,
                          public INatsBus::IListener,
                          public std::enable_shared_from_this<NatsSession> {
  public:
    static constexpr quint32 Window = 256 * 1024;            ///< what may be on its way to us
    static constexpr quint32 FirstMaxMessage = 4096;         ///< before the peer is admitted
    static constexpr quint32 MaxMessage = 1 << 20;           ///< of the protocol, whatever a peer says
    static constexpr std::size_t MaxBody = 64 * 1024 - 256;  ///< of a packet: others get through in between
    static constexpr std::chrono::milliseconds LingerTime{2000};  ///< without progress
    static constexpr int MostLingerTimes = 5;                     ///< of these, even with progress
    static constexpr std::size_t MaxLingering = 256;
    static constexpr qint64 MaxLingeringBytes = 8 << 20;  ///< of all of them

    /// Sends to the subject \a peer, of whom \a greeting came, and with whom \a seal is agreed on.
    NatsSession(std::shared_ptr<INatsBus> bus, QByteArray peer, const Greeting& greeting,
                std::unique_ptr<SessionSeal> seal);
    ~NatsSession() override;

    /// Calls \a onGone when no packet is of any use to this any more; then it may be forgotten.
    void SetGoneHandler(std::function<void()> onGone) { m_onGone = std::move(onGone); }
    /// What came for it, from whomever. What the other end has not sealed changes nothing, and is
    /// told once.
    void OnPacket(const Packet& packet);
    /// The other end, or the way there, is gone.
    void Lose(const QString& reason);

    // For the channel.
    void SetListener(vt::IChannelListener* listener);
    void Append(std::string_view head, std::string_view middle, std::string_view tail);
    void Flush();
    void Close();
    bool IsOpen() const { return m_isOpen; }
    qint64 Unsent() const { return m_isOpen ? static_cast<qint64>(m_out.Size()) : 0; }
    qint64 Unfinished() const { return static_cast<qint64>(m_in.Room()); }
    void GiveBackRoom();
    qint64 Waiting() const { return static_cast<qint64>(m_out.Size()); }  ///< bytes to send, also when closed
    quint64 ConsumedByPeer() const { return m_peerConsumed; }
    void SetMaxMessage(quint32 size) { m_maxMessage = size; }
    quint64 Watch() const { return m_watch; }  ///< with which it publishes

    void OnNatsState(INatsBus::EState state, const QString& reason) override;
    void OnNatsUnheard(quint64 watch) override;
    void OnNatsWritable() override { SendOn(); }

  private:
    void OnTrue(const Packet& packet);
    void OnForged();
    bool TakeNumber(const Packet& packet);
    bool TakeCredit(const Packet& packet);
    void TakeData(std::string_view body);
    void ReadOn();
    bool GiveFrames(bool* isPaused);
    void Acknowledge(bool isAllTaken);
    void Refuse(quint32 length);
    void Fail(const QString& reason);
    void SendOn();
    void SendData();
    void SendHead(Packet::EKind kind);
    bool Publish(const Packet& packet, quint64 watch);
    void BeGone();

    const std::shared_ptr<INatsBus> m_bus;
    const QByteArray m_peer;
    const quint32 m_peerWindow;
    const quint64 m_watch;
    const std::unique_ptr<SessionSeal> m_seal;
    std::function<void()> m_onGone;
    vt::IChannelListener* m_listener = nullptr;
    quint32 m_maxMessage = FirstMaxMessage;

    InputStream m_in;
    std::string m_later;             ///< what came while frames were given
    quint64 m_lastReceived = 0;      ///< number of a packet
    quint64 m_lastWordReceived = 0;  ///< the same, of those without data
    quint64 m_received = 0;          ///< bytes of the stream to us, as are the next two
    quint64 m_consumed = 0;
    quint64 m_told = 0;  ///< to the peer, of what was consumed

    OutputStream m_out;
    quint64 m_lastSent = 0;
    quint64 m_lastWordSent = 0;
    quint64 m_sent = 0;  ///< bytes of the stream from us, as is the next
    quint64 m_peerConsumed = 0;

    QTimer m_again;  ///< while reading pauses
    bool m_isOpen = true;
    bool m_isReading = false;
    bool m_isDeaf = false;    ///< the peer broke a rule: nothing more is given
    bool m_hasEnded = false;  ///< the peer closed; what came before may be left to be given
    bool m_isEndSent = false;
    bool m_isGone = false;
    bool m_hasComplained = false;  ///< of forged packets
};

}  // namespace nats
