// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/whenseen.h>

#include <QtCore/QString>
#include <QtWidgets/QFrame>

#include <vector>

class Situation;
class StatusButton;

/// The situation in one line above all pages; a click on one thing asks for the page of its cause. GUI
/// thread.
class StatusStrip : public QFrame {
    Q_OBJECT

  public:
    /// \a situation is not owned and outlives the strip.
    explicit StatusStrip(const Situation& situation, QWidget* parent = nullptr);

  Q_SIGNALS:
    /// For the page with that object name; empty: for a server.
    void PageRequested(const QString& page);

  private:
    void Show();

    const Situation& m_situation;
    std::vector<StatusButton*> m_buttons;  ///< in the order of the things
    WhenSeen m_shown;
};
