// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>

#include <QtCore/QString>

#include <memory>

class CfgStore;

/// One save, however many keys are written and committed in it, one by one: while there is one, commits only
/// collect, and at the end of the outermost one each store that has something to commit takes its lock once,
/// reads once and writes once. On the stack, around what belongs together and does not wait for people. Main
/// thread.
///
/// Until then what was written is read back, but does not outlive a killed process.
class MCS_PLATFORM_EXPORT CfgSave {
  public:
    CfgSave();
    ~CfgSave();
    CfgSave(const CfgSave&) = delete;
    CfgSave& operator=(const CfgSave&) = delete;

    /// Ends it before its time. False if something could not be written, with a trace; it is then kept for
    /// the next commit. True for one within another, which is not over.
    bool End();
    /// After End(), what could not be written and why, one line for people; empty if nothing.
    QString GetProblem() const { return m_problem; }

  private:
    friend class CfgStore;

    /// Has \a store commit at the end of the outermost save; false if there is none.
    static bool Defer(const std::weak_ptr<CfgStore>& store);

    bool m_isOver = false;
    QString m_problem;
};
