// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <fuzz/reactor.h>
#include <fuzz/script.h>

#include <platform/vtclient/ivtaccess.h>

/// Allows what the script wants to be allowed; things may happen while it is asked.
class ScriptAccess final : public IVtAccess {
  public:
    ScriptAccess(Script& script, Reactor& reactor) : m_script(script), m_reactor(reactor) {}

    void Change() {
        m_forbidden = m_script.Byte();
        m_path = m_script.Path();
        m_reason = m_script.Text();
    }
    /// Whether as many sessions have ended as have started.
    bool IsEven() const { return m_sessions == 0; }

    bool NeedsCredentials() const override { return false; }
    bool Admit(VtPeer& peer, const QString& user, const QString& /*token*/, QString* reason) override {
        peer.user = user;
        *reason = Reason();
        m_reactor.Trigger();
        return (m_forbidden & 1U) == 0;
    }
    bool MayRead(const VtPeer& /*peer*/, const QString& path) override { return IsAllowed(2, path); }
    bool MayWrite(const VtPeer& /*peer*/, const QString& path, QString* reason) override {
        *reason = Reason();
        return IsAllowed(4, path);
    }
    bool MayCreate(const VtPeer& /*peer*/, const QString& path, QString* reason) override {
        *reason = Reason();
        return IsAllowed(8, path);
    }
    QStringList WritablePrefixes(const VtPeer& /*peer*/) override { return {QStringLiteral("/"), m_path}; }
    void SessionStarted(const VtPeer& /*peer*/) override {
        ++m_sessions;
        m_reactor.Trigger();
    }
    void SessionEnded(const VtPeer& /*peer*/) override {
        --m_sessions;
        m_reactor.Trigger();
    }
    QString ProvideNode(const VtPeer& /*peer*/, const QString& path) override {
        if ((m_forbidden & 16U) != 0) values::Tree::Instance()->ProvideNode(path);
        m_reactor.Trigger();
        return (m_forbidden & 64U) != 0 ? Reason() : QString();
    }
    void NodeReleased(const VtPeer& /*peer*/, const QString& path) override {
        if ((m_forbidden & 32U) != 0)
            values::Tree::Instance()->Delete(values::Tree::Instance()->FindItem(path));
        m_reactor.Trigger();
    }

  private:
    QString Reason() const { return QStringLiteral("no: ") + m_reason; }
    bool IsAllowed(unsigned bit, const QString& path) const {
        return (m_forbidden & bit) == 0 || path != m_path;
    }

    Script& m_script;
    Reactor& m_reactor;
    unsigned m_forbidden = 0;
    QString m_path = QStringLiteral("/S");
    QString m_reason;
    int m_sessions = 0;
};
