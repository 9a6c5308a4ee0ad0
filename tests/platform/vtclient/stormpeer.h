// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <tests/platform/vtclient/randomedits.h>

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtNetwork/QTcpSocket>

/// One end of a storm as a process of its own: edits at random as long as the test wants it to, checks the
/// messages that it hears, and tells the test what its tree looks like. Test and process talk in lines over a
/// connection of their own.
///
/// To the process: "act", "rest", "state". To the test: "server" or "client" first, "port <number>",
/// "state <text>", "error <text>".
class StormPeer : public QObject {
  public:
    /// \a seed also names it in its messages.
    StormPeer(RandomEdits::ERole role, int controlPort, unsigned seed);

  protected:
    void Tell(const QString& line);
    /// To be called whenever the item may be another.
    void HearMessages();
    /// What else the state comprises.
    virtual QString ExtraState() const { return QString(); }

    values::Tree m_tree;
    RandomEdits m_edits;

  private:
    /// Hears the messages of the other end, of which each names its process and counts.
    class Ear final : public IObserver {
      public:
        explicit Ear(StormPeer& peer) : m_peer(peer) {}
        ~Ear() override { Hear(nullptr); }
        void Hear(values::Value<QString>* text);
        void Update(Observable* source, TChangeCode code) override;

      private:
        StormPeer& m_peer;
        values::Value<QString>* m_text = nullptr;
        QString m_lastSender;
        int m_lastNumber = 0;
    };

    QString Path(const char* name) const { return m_root + QLatin1Char('/') + QLatin1String(name); }
    void OnCommand();
    void Act();
    QString State() const;

    RandomEdits::ERole m_role;
    QString m_root;
    QString m_name;
    QTcpSocket m_control;
    QTimer m_acting;
    int m_sent = 0;
    Ear m_ear{*this};
};
