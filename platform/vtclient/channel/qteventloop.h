// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/channel/ieventloop.h>

#include <QtCore/QObject>
#include <QtCore/QTimer>

namespace vt {

/// Turns and time of Qt's event loop.
class QtEventLoop final : public QObject, public IEventLoop {
    Q_OBJECT

  public:
    QtEventLoop();

    void SetTaker(ITurnTaker* taker) override { m_taker = taker; }
    std::chrono::microseconds Now() const override;
    void RequestTurn() override;
    void SetDeadline(std::optional<std::chrono::milliseconds> delay) override;
    double Random() override;

  protected:
    void customEvent(QEvent* event) override;

  private:
    void HaveTurn();

    ITurnTaker* m_taker = nullptr;
    QTimer m_timer;
    QTimer m_again;
    bool m_isInTurn = false;
};

}  // namespace vt
