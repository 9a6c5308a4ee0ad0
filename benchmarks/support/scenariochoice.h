// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "scoreboard.h"

#include <QtCore/QString>

#include <functional>
#include <vector>

namespace bench {

/// Which scenarios the command line asks for, and how much of each.
class ScenarioChoice {
  public:
    /// Reads the command line; ends the program where it asks for help or is wrong. Needs the application
    /// object.
    explicit ScenarioChoice(const QString& description);

    bool IsQuick() const { return m_isQuick; }
    bool Has(const QString& name, const std::vector<Row>& rows) const;
    /// Plays \a rounds, or one if it has to be quick, and shows that something is happening.
    void PlayRounds(const QString& name, int rounds, const std::function<void(int round)>& play) const;

  private:
    QString m_filter;
    bool m_isQuick = false;
};

}  // namespace bench
