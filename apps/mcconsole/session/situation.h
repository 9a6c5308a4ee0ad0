// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/clocktimer.h>
#include <apps/mcconsole/session/connection.h>
#include <apps/mcconsole/session/serverfacts.h>
#include <apps/mcconsole/session/situationitem.h>
#include <apps/mcconsole/session/steadylatency.h>

#include <QtCore/QDateTime>
#include <QtCore/QObject>
#include <QtCore/QString>

#include <array>
#include <functional>
#include <optional>
#include <vector>

/// What an operator has to know at a glance, in one word for each thing and the page where its cause is.
/// Looks when something changes, and once a second for what ages. Main thread.
class Situation : public QObject {
    Q_OBJECT

  public:
    enum class EItem { Server, Device, Master, Suppression, Own };
    static constexpr EItem All[] = {EItem::Server, EItem::Device, EItem::Master, EItem::Suppression,
                                    EItem::Own};
    /// How the connection is now.
    using Look = std::function<Connection()>;

    /// Looks at the server's tree below \a basePath. \a clock is not owned and outlives the situation.
    Situation(IClock& clock, const QString& basePath, Look look, QObject* parent = nullptr);

    /// Where the server's tree is.
    const QString& GetBasePath() const { return m_basePath; }
    /// Looks again, as after every change of the connection.
    void Refresh();

    const SituationItem& Get(EItem item) const { return m_items[static_cast<std::size_t>(item)]; }
    static QString Caption(EItem item);
    /// The most urgent of all.
    ESeverity GetWorst() const;

    /// "Tower 1 · 121.5 MHz · mast-north", without what is not there; empty without a server.
    QString GetTitle() const;
    /// The frequencies, in Hz, whose transmitters nobody watches now; null if nobody knows.
    const std::vector<double>* GetUnsupervised() const;
    const ServerFacts& GetFacts() const { return m_facts; }
    const Connection& GetConnection() const { return m_connection; }
    /// Where the console's own MpxORV is, or was when the connection was lost; empty if there is none.
    const QString& GetMpxOrvPath() const { return m_mpxOrvPath; }
    /// Whether what is known is only what was known before the connection was lost.
    bool IsStale() const;
    /// Of what is known, as the items tell it: zero while it is live.
    std::chrono::milliseconds GetAge() const { return m_age; }
    /// When the server was heard last before the connection was lost; not valid otherwise.
    const QDateTime& GetLostSince() const { return m_lostSince; }

  Q_SIGNALS:
    /// Any of the items, or the title, has changed.
    void Changed();
    /// Any of the facts or of the connection may have changed.
    void Looked();
    /// A second has passed, while there is a server.
    void Ticked();

  private:
    void Tick();
    void Judge();
    void NoteLoss();
    void BindMpxOrv();

    IClock& m_clock;
    const QString m_basePath;
    Look m_look;
    Connection m_connection;
    std::optional<std::chrono::milliseconds> m_lostAt;  ///< none while connected, or before
    QDateTime m_lostSince;                              ///< the same for people
    std::chrono::milliseconds m_age{};
    std::optional<std::chrono::milliseconds> m_silentSince;  ///< none while the server answers
    SteadyLatency m_latency;
    ServerFacts m_facts;
    QString m_mpxOrvPath;  ///< also while the connection is lost
    std::array<SituationItem, std::size(All)> m_items;
    QString m_title;
    ClockTimer m_timer;
};
