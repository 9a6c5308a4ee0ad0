// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

#include <QtCore/QObject>

#include <memory>
#include <vector>

class PlantModule;
class SuppressionPlant;

/// Brings the ground transmitter suppression into being without a window, as a GTSDisplay does with one: with
/// it Blanking comes and goes, and the modules of the configuration are polled as long as it lives. Loads
/// them, and saves them when it is destroyed. Needs no GUI application. Instead of a GTSDisplay and not
/// beside one, after the tree; main thread.
class MCS_COMMON_EXPORT HeadlessSuppression : public QObject {
    Q_OBJECT

  public:
    HeadlessSuppression();
    ~HeadlessSuppression() override;

    SuppressionPlant& GetPlant() { return *m_plant; }  ///< The modules that it polls. Lives as long as this.

  private:
    PlantModule& MakeModule(int index);

    std::unique_ptr<SuppressionPlant> m_plant;
    std::vector<std::unique_ptr<PlantModule>> m_modules;  ///< go before the plant does
};
