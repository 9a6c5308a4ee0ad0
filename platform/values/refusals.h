// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>

#include <QtCore/QString>

#include <vector>

namespace values {

class TreeItem;

/// Hears of edits of mirrored items that were refused. Detaches itself before it dies. Main thread.
class MCS_PLATFORM_EXPORT IRefusalListener {
  public:
    virtual ~IRefusalListener();
    /// The edit of \a item, or what was asked for \a path (then \a item is null), was refused for \a reason,
    /// one line. A refused content has already been taken back.
    virtual void OnRefused(TreeItem* item, const QString& path, const QString& reason) = 0;
    /// A whole subtree is refused, \a path, which would be shown at \a localPath: so who follows several
    /// servers knows whose it is. Unless told otherwise it is a refusal like any other.
    virtual void OnSubtreeRefused(const QString& localPath, const QString& path, const QString& reason);
};

/// Where refusals are told: one place per process, since whoever shows an item does not know who mirrors it.
/// Main thread.
class MCS_PLATFORM_EXPORT Refusals {
  public:
    static Refusals& Instance();  ///< the one of the process
    Refusals(const Refusals&) = delete;
    Refusals& operator=(const Refusals&) = delete;

    void AddListener(IRefusalListener* listener);     ///< Not owned; once each.
    void RemoveListener(IRefusalListener* listener);  ///< May be called while listeners are told.
    /// Tells all listeners, and traces the refusal. Listeners may come and go meanwhile.
    void Report(TreeItem* item, const QString& path, const QString& reason);
    /// The same of a whole subtree.
    void ReportSubtree(const QString& localPath, const QString& path, const QString& reason);

  private:
    Refusals() = default;
    template <class Call>
    void Tell(const Call& call);

    std::vector<IRefusalListener*> m_listeners;
};

}  // namespace values
