// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>

namespace bench {

/// A number that tells of its changes by a signal.
class SignalSource : public QObject {
    Q_OBJECT

  public:
    void Set(int content) {
        if (content == m_content) return;
        m_content = content;
        Q_EMIT Changed(content);
    }

  Q_SIGNALS:
    void Changed(int content);

  private:
    int m_content = 0;
};

}  // namespace bench
