// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mctree/command/commands.h>
#include <apps/mctree/mirror/targets.h>

#include <QtCore/QString>

#include <memory>
#include <utility>

namespace mctree {

class RequestAnswer;

/// Sets contents, one after the other, and tells how each ended.
class Setter {
  public:
    /// \a report takes how each ended; both outlive this object.
    Setter(const Context& context, Report& report) : m_context(context), m_report(report) {}
    ~Setter();
    Setter(const Setter&) = delete;
    Setter& operator=(const Setter&) = delete;

    /// Sets all that \a targets, which are settled, name to what \a text means for each. \a prefix stands in
    /// front of what is said of it.
    void SetAll(const Targets& targets, const QString& text, const QString& prefix);

  private:
    /// A value that is to be set. It may go while something is waited for.
    struct Place {
        QString path;
        const Mirror* mirror;

        values::TreeItem* Item() const { return mirror->ItemAt(path); }
        QString Shown() const;
    };

    using Remark = std::pair<QString, QString>;  ///< a key and its text, empty if there is nothing to remark

    Outcome SetOne(const Place& place, const QString& text);
    Outcome WaitForAnswer(const Place& place, const RequestAnswer* answer);
    Outcome Conclude(const Place& place, const QString& text, const RequestAnswer* answer);
    std::unique_ptr<RequestAnswer> ListenToAnswer(const QString& path, Outcome* outcome);
    void PrintWithUnit(const values::TreeItem& item);
    void PrintJson(const Place& place, const QString& result, const Remark& remark);

    const Context& m_context;
    Report& m_report;
    Mirrors m_answers;  ///< of requests
};

}  // namespace mctree
