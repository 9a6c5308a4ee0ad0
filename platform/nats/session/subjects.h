// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>
#include <string_view>

namespace nats {

/// Whose a session is, and which. Both are parts of its subjects.
struct SessionName {
    QByteArray who;  ///< as whom the client is known to NATS; "-": nobody
    QByteArray id;   ///< drawn by the client

    static SessionName Draw(const QByteArray& who);  ///< one that nobody can guess
    QByteArray ToText() const { return who + '.' + id; }
    /// From "WHO.ID"; none if it is not that.
    static std::optional<SessionName> Read(std::string_view text);
};

/// The subjects of one station: docs/nats.md has the list.
class Subjects {
  public:
    explicit Subjects(const QString& station) : m_root("mcs." + station.toLatin1() + '.') {}

    QByteArray Up(const SessionName& name) const { return m_root + "up." + name.ToText(); }
    QByteArray Down(const SessionName& name) const { return m_root + "down." + name.ToText(); }
    QByteArray AllUp() const { return m_root + "up.*.*"; }
    QByteArray Claim() const { return m_root + "claim"; }
    QByteArray Here() const { return m_root + "here"; }
    /// Where everybody shows that it is there, and where it is asked to. No station's name begins so.
    static QByteArray AllHere() { return "mcs.*.here"; }
    static QByteArray AskAll() { return "mcs._all.ask"; }
    /// The session of a subject of AllUp(); none if it is none.
    std::optional<SessionName> SessionOf(std::string_view subject) const;

  private:
    QByteArray m_root;
};

}  // namespace nats
