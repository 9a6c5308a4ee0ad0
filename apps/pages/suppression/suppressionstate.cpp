// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/suppression/suppressionstate.h>

#include <apps/pages/suppressionkeys.h>

#include <algorithm>

bool ModuleStatusView::IsLive() const {
    return state == suppressionkeys::Connected;
}

int SuppressionState::CountAnswering() const {
    return static_cast<int>(std::count_if(modules.begin(), modules.end(),
                                          [](const ModuleStatusView& module) { return module.IsLive(); }));
}
