// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QTime>

#include <chrono>
#include <optional>

class IClock;
class Situation;
class Tuning;

/// What the console's MpxORV had when the connection or the device was lost, to ask for it again once both
/// are back. What goes otherwise, by a client or by the operator, is not taken for lost. Main thread.
class HeldBefore : public QObject {
    Q_OBJECT

  public:
    struct Held {
        std::optional<double> hz;
        bool isMaster = false;

        bool IsAnything() const { return hz || isMaster; }
        bool operator==(const Held& other) const { return hz == other.hz && isMaster == other.isMaster; }
    };
    /// Within which what goes belongs to the device that goes, in either order.
    static constexpr std::chrono::milliseconds Together{2000};

    /// None is owned; all outlive this.
    HeldBefore(IClock& clock, Tuning& tuning, const Situation& situation, QObject* parent = nullptr);

    /// What can be asked for again now; nothing while that makes no sense.
    Held GetOffer() const { return m_offer; }
    /// Why the frequency of the offer is not given back, in the server's words; empty if nobody said no.
    QString GetRefusal() const { return m_refusal; }
    /// Who is job master instead, where mastership is offered; empty: nobody is.
    const QString& GetOtherMaster() const { return m_otherMaster; }
    /// Until when there was that, by the clock on the wall.
    QTime GetLostAt() const { return m_lostAt; }
    /// Asks for it.
    void Restore();
    /// Forgets it.
    void Dismiss();

  Q_SIGNALS:
    void Changed();

  private:
    void Look();
    void LookAtLoss();
    void Follow(const Held& now);
    void ForgetWhatIsBack(const Held& now);
    void Offer(const Held& offer);
    void LookAtRefusal();
    void LookAtMaster();
    bool IsDeviceReady() const;
    Held Now() const;

    IClock& m_clock;
    Tuning& m_tuning;
    const Situation& m_situation;
    Held m_now;   ///< while all is well
    Held m_gone;  ///< a moment ago
    std::chrono::milliseconds m_goneAt{};
    bool m_isConnectionLost = false;
    Held m_before;  ///< the loss
    QTime m_lostAt;
    Held m_offer;
    QString m_refusal;
    QString m_otherMaster;
};
