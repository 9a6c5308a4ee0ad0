// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>

#include <QtCore/QString>

#include <utility>

/// Base of a loadable module's instance. The framework creates one per module with the argument it was loaded
/// with, tells it of the stages of its life, and destroys it. The defaults do nothing. GUI thread only.
class MCS_PLATFORM_EXPORT IDllInstance {  // fixed: virtual-order
  public:
    explicit IDllInstance(QString argument) : m_argument(std::move(argument)) {}  ///< for the module
    virtual ~IDllInstance();
    IDllInstance(const IDllInstance&) = delete;
    IDllInstance& operator=(const IDllInstance&) = delete;

    virtual void OnLoaded() {}     ///< all modules of the application are loaded
    virtual void OnUnloading() {}  ///< the application is about to unload the module
    virtual void CommitData() {}   ///< orderly shutdown: store what has to outlive the process

    QString GetArgument() const { return m_argument; }  ///< as given by the framework

  private:
    QString m_argument;
};
