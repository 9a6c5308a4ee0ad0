// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/device/stddevicedefinition.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <chrono>
#include <vector>

/// What a simulated device is to do by itself, and when: lines "after <ms> <action> [argument]".
/// docs/server.md lists the actions.
class OrvScript {
  public:
    enum class EAction { Mode, Fail, Recover, Log, Occupy, Vacate };
    struct Step {
        std::chrono::milliseconds time{};  ///< since the script started
        EAction action = EAction::Log;
        QString text;                         ///< of a log line, a failure, or who occupies the device
        EOperationMode mode = OperationIdle;  ///< of Mode
    };

    static constexpr int MaxSteps = 10000;
    static constexpr std::chrono::hours MaxTime{7 * 24};

    /// Reads \a path. False with the reason in \a error, which names file and line.
    bool Load(const QString& path, QString* error);
    /// The same for \a text, which is called \a name in errors.
    bool Parse(const QByteArray& text, const QString& name, QString* error);

    /// In the order of their times, and of the file where these are equal.
    const std::vector<Step>& GetSteps() const { return m_steps; }

  private:
    std::vector<Step> m_steps;
};
