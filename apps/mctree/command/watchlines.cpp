// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/command/watchlines.h>

#include <apps/common/safetext.h>
#include <apps/mctree/text/contenttext.h>
#include <apps/mctree/text/description.h>
#include <apps/mctree/text/table.h>
#include <platform/values/visit.h>

#include <algorithm>

namespace mctree {

namespace {

constexpr int WidestPath = 60;  // columns; a longer path pushes only its own line out

QString NameOf(EEvent event) {
    switch (event) {
        case EEvent::Present:
            return QStringLiteral("present");
        case EEvent::Content:
            return QStringLiteral("content");
        case EEvent::Items:
            return QStringLiteral("items");
        case EEvent::Description:
            return QStringLiteral("description");
        case EEvent::Stale:
            return QStringLiteral("stale");
        case EEvent::Valid:
            return QStringLiteral("valid");
        case EEvent::Added:
            return QStringLiteral("added");
        case EEvent::Removed:
            return QStringLiteral("removed");
    }
    Q_UNREACHABLE();
}

/// What the line for people says after the path.
QString TextOf(EEvent event, const values::TreeItem& item) {
    switch (event) {
        case EEvent::Present:
        case EEvent::Content:
            return QStringLiteral("= ") + ShowContent(item).Joined();
        case EEvent::Items: {
            QString items;
            values::Visit(item, values::Overloaded{
                                    [&](const values::ValueSelection& value) { items = ShowItems(value); },
                                    [](const auto&) {}});
            return QStringLiteral("has the items ") + items;
        }
        case EEvent::Description: {
            const QString traits = ShowTraits(item);
            return traits.isEmpty() ? QStringLiteral("is described anew")
                                    : QStringLiteral("is now ") + traits;
        }
        case EEvent::Stale:
            return QStringLiteral("is stale");
        case EEvent::Valid:
            return QStringLiteral("is valid again");
        case EEvent::Added:
            return item.IsNode() ? QStringLiteral("added")
                                 : QStringLiteral("added = ") + ShowContent(item).Joined();
        case EEvent::Removed:
            return QStringLiteral("removed");
    }
    Q_UNREACHABLE();
}

QJsonObject ObjectOf(EEvent event, const values::TreeItem& item, const QString& path) {
    switch (event) {
        case EEvent::Content: {
            QJsonObject object = DescribeContent(item);
            object[QStringLiteral("path")] = path;
            return object;
        }
        case EEvent::Removed:
            return {{QStringLiteral("path"), path}, {QStringLiteral("kind"), KindOf(item)}};
        default:
            return Describe(item, path);
    }
}

}  // namespace

WatchLines::WatchLines(Printer& printer, bool isJson, Clock clock)
    : m_printer(printer), m_isJson(isJson), m_clock(clock) {}

void WatchLines::MakeRoom(const QString& path) {
    m_pathColumns = std::max(m_pathColumns, std::min(CountColumns(safetext::Escaped(path)), WidestPath));
}

void WatchLines::PrintEvent(EEvent event, const values::TreeItem& item, const QString& path) {
    if (m_isJson) {
        QJsonObject object = ObjectOf(event, item, path);
        object[QStringLiteral("time")] = Time();
        object[QStringLiteral("event")] = NameOf(event);
        return PrintOf(event, ToLine(object));
    }
    MakeRoom(path);
    const QString shownPath = safetext::Escaped(path);
    const QString padding(std::max(m_pathColumns - CountColumns(shownPath), 0), QLatin1Char(' '));
    const bool isUsual = event == EEvent::Content || event == EEvent::Present;
    const EColour colour = isUsual ? EColour::Plain : EColour::Warning;
    PrintOf(event, m_printer.Painted(Time(), EColour::Faint) + QStringLiteral("  ") + shownPath + padding +
                       QLatin1Char(' ') + m_printer.Painted(TextOf(event, item), colour));
}

void WatchLines::PrintConnected(const QString& server) {
    PrintMark(QStringLiteral("connected"), QStringLiteral("server"), server,
              QStringLiteral("-- connected to %1 --"));
}

void WatchLines::PrintDisconnected(const QString& reason) {
    PrintMark(QStringLiteral("disconnected"), QStringLiteral("reason"), reason,
              QStringLiteral("-- connection lost: %1 --"));
}

void WatchLines::PrintAbsent(const QString& path) {
    PrintMark(QStringLiteral("absent"), QStringLiteral("path"), path,
              QStringLiteral("-- %1 is not there yet --"));
}

void WatchLines::PrintMark(const QString& event, const QString& key, const QString& text,
                           const QString& line) {
    if (m_isJson)
        return Print(
            ToLine({{QStringLiteral("time"), Time()}, {QStringLiteral("event"), event}, {key, text}}));
    Print(m_printer.Painted(Time(), EColour::Faint) + QStringLiteral("  ") +
          m_printer.Painted(line.arg(safetext::Escaped(text)), EColour::Warning));
}

void WatchLines::PrintLost(const QString& path, const QDateTime& from, const QDateTime& until) {
    if (m_isJson)
        return Print(ToLine({{QStringLiteral("time"), Time()},
                             {QStringLiteral("event"), QStringLiteral("lost")},
                             {QStringLiteral("path"), path},
                             {QStringLiteral("from"), ToText(from)},
                             {QStringLiteral("until"), ToText(until)}}));
    Print(m_printer.Painted(Time(), EColour::Faint) + QStringLiteral("  ") +
          m_printer.Painted(QStringLiteral("-- lost: what happened at %1 from %2 to %3 --")
                                .arg(safetext::Escaped(path), ToText(from), ToText(until)),
                            EColour::Warning));
}

QString WatchLines::ToText(const QDateTime& time) const {
    return m_isJson ? time.toUTC().toString(Qt::ISODateWithMs)
                    : time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"));
}

void WatchLines::PrintOf(EEvent event, const QString& line) {
    if (event == EEvent::Present)
        m_printer.WriteLine(line);
    else
        Print(line);
}

void WatchLines::Print(const QString& line) {
    m_printer.WriteLine(line);
    m_printer.Flush();
}

}  // namespace mctree
