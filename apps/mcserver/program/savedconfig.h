// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// "SavedConfig" in the server's status: what the configuration was when it was saved last, when that was and
/// by whom, so that windows can tell what is not saved yet. Main thread; needs the tree.
class SavedConfig {
  public:
    /// \a configPath is where the values of the configuration are.
    explicit SavedConfig(QString configPath);

    /// The values are in the file as they are now, since \a moment; empty: since before the server began.
    /// \a by is empty where nobody from outside had them saved.
    void Show(const QString& moment, const QString& by) const;

  private:
    QString m_configPath;
};
