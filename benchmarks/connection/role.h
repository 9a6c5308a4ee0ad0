// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "settings.h"

#include <QtCore/QObject>

#include <memory>
#include <vector>

namespace bench {

/// What a child process does in a measurement. It is started with settings, and tells what it finds out in
/// lines on its standard output: "port", "result" or "failed"; "step" where whoever started it has it wait.
class Role : public QObject {
  public:
    ~Role() override;

    /// The main function of a child process: \a arguments are the name of the role and its settings.
    static int Run(const QStringList& arguments);
    /// Tells \a reason and ends the process.
    [[noreturn]] static void Fail(const QString& reason);

    virtual void Start() = 0;

  protected:
    explicit Role(const Settings& settings) : m_settings(settings) {}
    const Settings& GetSettings() const { return m_settings; }

    static void TellPort(int port);
    static void TellResult(const Settings& result);
    static void TellStep();
    /// Waits, with all of this process, for a line on the standard input.
    static void WaitForGo();

  private:
    Settings m_settings;
};

/// A role that this program has, by its name on the command line.
struct RoleEntry {
    const char* name;
    std::unique_ptr<Role> (*make)(const Settings& settings);

    template <class R>
    static RoleEntry Of(const char* name) {
        return {name, [](const Settings& settings) -> std::unique_ptr<Role> {
                    return std::make_unique<R>(settings);
                }};
    }
};

/// Each program of the benchmark has its own.
const std::vector<RoleEntry>& AllRoles();

}  // namespace bench
