// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mctree/mirror/subtreewatch.h>
#include <apps/mctree/text/printer.h>

#include <QtCore/QDateTime>
#include <QtCore/QString>

namespace mctree {

/// Prints what is and what happens, one line each: for people, or as JSON objects. What happens is printed at
/// once, what is present when the printer is flushed.
class WatchLines {
  public:
    using Clock = QDateTime (*)();

    /// The printer outlives this object.
    WatchLines(Printer& printer, bool isJson, Clock clock);

    /// Lets lines about \a path stand with their contents below each other.
    void MakeRoom(const QString& path);
    void PrintEvent(EEvent event, const values::TreeItem& item, const QString& path);
    void PrintConnected(const QString& server);
    void PrintDisconnected(const QString& reason);
    void PrintAbsent(const QString& path);
    /// What happened at \a path between two moments was not told.
    void PrintLost(const QString& path, const QDateTime& from, const QDateTime& until);

  private:
    void PrintMark(const QString& event, const QString& key, const QString& text, const QString& line);
    QString Time() const { return ToText(m_clock()); }
    QString ToText(const QDateTime& time) const;
    void Print(const QString& line);
    void PrintOf(EEvent event, const QString& line);

    Printer& m_printer;
    bool m_isJson;
    Clock m_clock;
    int m_pathColumns = 0;  ///< of the longest path so far, up to a bound
};

}  // namespace mctree
