// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>

/// Tells when the process is asked to end: by SIGINT, SIGTERM or the hang-up of its terminal, or on Windows
/// by Ctrl+C, Ctrl+Break, the closing of the console, log-off and shutdown. One at a time; needs the
/// application object; main thread.
///
/// The first request is told through the event loop, so that the program can end as it would by itself. A
/// second one of the same kind ends the process at once, should it not come to an end. A hang-up that the
/// process was started to ignore (nohup) stays ignored. What held before is restored by the destructor.
///
/// A program that has no use for a terminal may be told of hang-ups apart: they then ask it to read its files
/// anew, as often as they come, and end nothing.
class ShutdownSignals : public QObject {
    Q_OBJECT

  public:
    enum class EHangUp { Ends, IsTold };

    explicit ShutdownSignals(EHangUp hangUp = EHangUp::Ends, QObject* parent = nullptr);
    ~ShutdownSignals() override;

  Q_SIGNALS:
    void ShutdownRequested();
    void HungUp();
};
