// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "role.h"

#include <QtNetwork/QTcpSocket>

namespace bench {

/// A client of ours that subscribes and then reads no more.
class StalledClient final : public Role {
  public:
    explicit StalledClient(const Settings& settings);
    void Start() override;

  private:
    void SayHello();
    void StopReading();

    QTcpSocket m_socket;
    bool m_hasSubscribed = false;
};

}  // namespace bench
