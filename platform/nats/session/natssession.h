// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/inatsbus.h>
#include <platform/nats/session/inputstream.h>
#include <platform/nats/session/outputstream.h>
#include <platform/nats/session/packet.h>
#include <platform/nats/session/sentpackets.h>
#include <platform/nats/session/sessionseal.h>

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vt {
class IChannelListener;
}

namespace nats {

/// One end of a session over NATS: a stream of frames in numbered packets. What has not been consumed at the
/// other end is bounded by its window, and kept until then: what NATS loses is said once more, so a session
/// outlives the loss of a server of NATS. What cannot be had in time ends it, like a cut connection. So does
/// what anybody may have said (that the peer has left, or knows of no session), unless the peer proves in
/// time that it is there. Belongs to its channel, and after that to those that still send their last words.
/// Main thread.
class NatsSession final : public QObject,
                          public INatsBus::IListener,
                          public std::enable_shared_from_this<NatsSession> {
  public:
    static constexpr quint32 Window = 256 * 1024;            ///< what may be on its way to us
    static constexpr quint32 FirstMaxMessage = 4096;         ///< before the peer is admitted
    static constexpr quint32 MaxMessage = 1 << 20;           ///< of the protocol, whatever a peer says
    static constexpr std::size_t MaxBody = 64 * 1024 - 256;  ///< of a packet: others get through in between
    static constexpr std::chrono::milliseconds LingerTime{2000};  ///< without progress
    /// Between two questions for what is missing, or for a word.
    static constexpr std::chrono::milliseconds AskInterval{250};
    /// With a peer that nobody hears, which may be on its way to another server of NATS, as with our own way
    /// to NATS, and with a packet that is missing.
    static constexpr std::chrono::milliseconds Patience{3000};
    static constexpr int MostLingerTimes = 5;  ///< of these, even with progress
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
    /// Somebody, who may be anybody, says that it is: true unless the other end proves within \a patience
    /// that it is there.
    void Doubt(const QString& reason, std::chrono::milliseconds patience);
    /// Asks the other end for a word. If nobody listens there, NATS says so.
    void Ask();
    /// How long a peer that nobody hears is waited for.
    void SetPeerPatience(std::chrono::milliseconds patience) { m_peerPatience = patience; }

    // For the channel.
    void SetListener(vt::IChannelListener* listener);
    void Append(std::string_view head, std::string_view middle, std::string_view tail);
    void Flush();
    void Close();
    bool IsOpen() const { return m_isOpen; }
    /// It has ended, and neither end wanted that.
    bool WasCut() const { return m_wasCut; }
    qint64 Unsent() const { return m_isOpen ? static_cast<qint64>(m_out.Size()) : 0; }
    qint64 Unfinished() const { return static_cast<qint64>(m_in.Room() + m_sentPackets.Room()); }
    void GiveBackRoom();
    qint64 Waiting() const { return static_cast<qint64>(m_out.Size()); }  ///< bytes to send, also when closed
    quint64 ConsumedByPeer() const { return m_peerConsumed; }
    void SetMaxMessage(quint32 size) { m_maxMessage = size; }
    quint64 Watch() const { return m_watch; }  ///< with which it publishes

    void OnNatsState(INatsBus::EState state, const QString& reason) override;
    void OnNatsUnheard(quint64 watch) override;
    void OnNatsWritable() override { SendOn(); }

  private:
    /// Ends the session when its time is up.
    struct Worry {
        QString reason;
        std::chrono::milliseconds until;
        bool isHearsay;  ///< if it proves false somebody has lied
    };

    void OnTrue(const Packet& packet);
    void OnForged();
    bool TakeNumber(const Packet& packet);
    void OnMissing(quint64 number);
    void OnPosition(const Packet& packet);
    void SayAgain();
    void SendPosition(bool isQuestion);
    void Suspect(const QString& reason, std::chrono::milliseconds patience, bool isHearsay);
    void Calm(std::optional<Worry>* worry);
    void OnAsk();
    bool TakeCredit(const Packet& packet);
    void TakeData(std::string_view body);
    void ReadOn();
    bool GiveFrames(bool* isPaused);
    void Acknowledge(bool isAllTaken);
    void Refuse(quint32 length);
    void Fail(const QString& reason);
    void SendOn();
    bool HasRoom();
    void SendData();
    void SendHead(Packet::EKind kind);
    void PublishStream(Packet::EKind kind, std::string_view body, quint64 end);
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
    SentPackets m_sentPackets;
    std::chrono::milliseconds m_saidAgainAt{};
    quint64 m_lastSent = 0;
    quint64 m_lastWordSent = 0;
    quint64 m_sent = 0;  ///< bytes of the stream from us, as is the next
    quint64 m_peerConsumed = 0;

    QTimer m_again;                  ///< while reading pauses
    QTimer m_ask;                    ///< while there is a worry
    std::optional<Worry> m_silence;  ///< about whether the peer is there
    std::optional<Worry> m_missing;  ///< about a packet
    std::chrono::milliseconds m_peerPatience = Patience;
    bool m_isOpen = true;
    bool m_wasCut = false;
    bool m_isReading = false;
    bool m_isDeaf = false;    ///< the peer broke a rule: nothing more is given
    bool m_hasEnded = false;  ///< the peer closed; what came before may be left to be given
    bool m_isEndSent = false;
    bool m_isGone = false;
    bool m_hasComplained = false;  ///< of forged packets
};

}  // namespace nats
