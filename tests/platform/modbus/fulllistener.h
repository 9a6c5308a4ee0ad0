// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

#include <vector>

/// A port whose queue of connections is full: connecting to it hangs, as to a machine that is switched off.
class FullListener {
  public:
    FullListener();
    ~FullListener();
    FullListener(const FullListener&) = delete;
    FullListener& operator=(const FullListener&) = delete;

    quint16 Port() const { return m_port; }

  private:
    std::vector<int> m_sockets;
    quint16 m_port = 0;
};
