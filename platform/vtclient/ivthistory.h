// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/connectionexport.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>

/// What a value held before, as far as somebody keeps it: one page of it.
struct VtHistoryPage {
    /// Why there is nothing, one line: it may not be read, nothing is kept of it, the connection was lost.
    /// Empty if \a texts is the answer.
    QString refusal;
    QStringList texts;  ///< the contents, the oldest first
    quint64 next = 0;   ///< ask for what was before this number to get older ones; 0 if there are none
};

/// What is asked of it.
struct VtHistoryQuestion {
    QString path;        ///< of the value, in the server's tree
    quint64 before = 0;  ///< only what was before the one with this number; 0: the last of all
    int count = 0;       ///< so many at most
    int length = 0;      ///< UTF-16 code units of all texts together, at most
};

/// Keeps what values of the server's tree held before, and is asked by VtServer on behalf of clients that may
/// read the value. Knows no sockets. Main thread.
class MCS_CONNECTION_EXPORT IVtHistory {
  public:
    using Answer = std::function<void(const VtHistoryPage&)>;

    virtual ~IVtHistory();

    /// Finds the last contents that are asked for. The numbers rise; how is the keeper's own matter. Fewer
    /// are an answer too, as long as the page says where to go on.
    ///
    /// \a answer is called once, at once or later, also if the client has gone meanwhile.
    virtual void Recall(const VtHistoryQuestion& question, const Answer& answer) = 0;

  protected:
    IVtHistory() = default;
    IVtHistory(const IVtHistory&) = default;
    IVtHistory& operator=(const IVtHistory&) = default;
};
