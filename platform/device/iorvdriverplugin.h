// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

class IOrvDriver;

/// What a plugin with a driver offers: the object of Qt that its Q_PLUGIN_METADATA(IID OrvDriverPlugin_iid)
/// stands in.
class IOrvDriverPlugin {
  public:
    virtual ~IOrvDriverPlugin() = default;

    /// A driver, which the caller owns; null with the reason, one line, in \a error. \a options is what
    /// stands behind the plugin's file on the command line.
    virtual IOrvDriver* Create(const QString& options, QString* error) = 0;
};

// The number behind the slash is the version of IOrvDriver, IOrvDriverListener, IOrvDriverPlugin and
// OrvDeviceSettings together. A server takes plugins of its own version only.
#define OrvDriverPlugin_iid "multichannelserver.OrvDriver/1"
Q_DECLARE_INTERFACE(IOrvDriverPlugin, OrvDriverPlugin_iid)
