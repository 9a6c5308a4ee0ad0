// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <memory>

class IOrvDriver;

/// Drivers that stand in a file of their own.
namespace driverplugin {

/// What is in \a file, which stays loaded, made with \a options. Null with the reason, one line, in \a error.
/// A plugin of another version of the interface is not loaded. Main thread.
std::unique_ptr<IOrvDriver> Load(const QString& file, const QString& options, QString* error);

}  // namespace driverplugin
