// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <optional>

class Situation;

/// What was lost at a station while its user looked at another one. What is there afterwards, "not tuned",
/// tells nobody that something was there before. GUI thread.
class UnseenLoss {
  public:
    /// Once anything has changed there; whoever has the station in front sees it.
    void Look(const Situation& situation, bool isInFront);
    /// Such as "LOST 121.500 MHz"; empty: nothing.
    QString GetText() const;

  private:
    struct Held {
        bool isMaster = false;
        std::optional<double> hz;
    };

    Held m_held;  ///< when it was in front, or later
    Held m_lost;
};
