// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>

/// Tells when whoever read the standard output, through a pipe, has gone, so that a program that has nothing
/// to write for a long time need not wait for its next line to notice. Where the system has no such message
/// nothing is told, and the next write fails. Needs the application object; main thread.
class ClosedOutput : public QObject {
    Q_OBJECT

  public:
    explicit ClosedOutput(QObject* parent = nullptr);

  Q_SIGNALS:
    void Closed();
};
