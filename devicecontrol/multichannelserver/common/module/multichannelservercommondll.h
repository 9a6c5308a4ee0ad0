// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/idllinstance.h>

#include <QtCore/QString>

/// The module's instance: while it lives, the library's texts are translated. GUI thread only.
class MultiChannelServerCommonDLL final : public IDllInstance {
  public:
    explicit MultiChannelServerCommonDLL(const QString& argument);
    ~MultiChannelServerCommonDLL() override;

    /// Stores the placements of all windows.
    void CommitData() override;
};
