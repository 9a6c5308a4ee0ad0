// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "poller.h"

#include <devicecontrol/multichannelserver/common/gts/blankingclient.h>
#include <devicecontrol/multichannelserver/common/gts/datamodule.h>

#include <platform/values/tree.h>

#include <QtWidgets/QTreeWidget>

#include <functional>
#include <memory>
#include <vector>

namespace bench {

/// The server's: data modules, the value tree, and Blanking over it, which is asked in the GUI thread.
class OwnPoller : public Poller {
  public:
    OwnPoller();
    ~OwnPoller() override;

    bool Start(quint16 port) override;
    bool WaitUntilKnown(int module, bool isKeyed, Clock::time_point* when) override;
    QString Error() const override { return m_error; }

  private:
    bool RunUntil(const std::function<bool()>& isReached);

    values::Tree m_tree;
    QTreeWidget m_widget;
    BlankingClient m_client;
    std::vector<std::unique_ptr<DataModule>> m_modules;
    QString m_error;
};

}  // namespace bench
