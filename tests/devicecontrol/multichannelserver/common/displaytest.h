// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/tree.h>
#include <platform/values/valuebase.h>
#include <platform/widgets/refreshscheduler.h>

#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/printing.h>

#include <QtCore/QTranslator>
#include <QtGui/QAccessible>
#include <QtWidgets/QApplication>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>

#include <gtest/gtest.h>

#include <vector>

/// Looks at displays as a person does.
namespace displaytest {

using treeaccess::Text;

template <class W>
W& Child(const QWidget& display, const char* objectName) {
    W* const child = display.findChild<W*>(Text(objectName));
    if (child == nullptr) qFatal("The display has no %s", objectName);
    return *child;
}

/// The text of a label, as it is drawn now.
inline QString TextOf(const QWidget& display, const char* objectName) {
    RefreshScheduler::Instance().Flush();
    return Child<QLabel>(display, objectName).text();
}

/// What assistive technology says for a widget.
inline QString SpokenName(QWidget& widget) {
    return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
}

inline bool IsVeiled(const QWidget& widget) {
    const auto* const veil =
        widget.findChild<QWidget*>(QStringLiteral("StaleVeil"), Qt::FindDirectChildrenOnly);
    return veil != nullptr && veil->isVisibleTo(&widget);
}

/// Where a widget stands in a grid.
struct Cell {
    int row = -1;
    int column = -1;
    int rowSpan = -1;
    int columnSpan = -1;

    bool operator==(const Cell& other) const {
        return row == other.row && column == other.column && rowSpan == other.rowSpan &&
               columnSpan == other.columnSpan;
    }
};

inline void PrintTo(const Cell& cell, std::ostream* stream) {
    *stream << "row " << cell.row << " column " << cell.column << " span " << cell.rowSpan << "x"
            << cell.columnSpan;
}

inline Cell CellOf(const QGridLayout& grid, QWidget& widget) {
    Cell cell;
    const int index = grid.indexOf(&widget);
    if (index >= 0) grid.getItemPosition(index, &cell.row, &cell.column, &cell.rowSpan, &cell.columnSpan);
    return cell;
}

inline QGridLayout& GridOf(const QWidget& widget) {
    auto* const grid = qobject_cast<QGridLayout*>(widget.layout());
    if (grid == nullptr) qFatal("The widget has no grid");
    return *grid;
}

/// The caption in column 0 of \a row.
inline QLabel& CaptionAt(const QGridLayout& grid, int row) {
    QLayoutItem* const item = grid.itemAtPosition(row, 0);
    auto* const caption = item != nullptr ? qobject_cast<QLabel*>(item->widget()) : nullptr;
    if (caption == nullptr) qFatal("There is no caption in row %d", row);
    return *caption;
}

inline void ExpectMargins(const QLayout& layout, int margin) {
    EXPECT_EQ(layout.contentsMargins(), QMargins(margin, margin, margin, margin));
}

/// A row of a caption and a field, on a grid.
inline void ExpectRow(const QGridLayout& grid, int row, const char* caption, QWidget& field) {
    QLabel& label = CaptionAt(grid, row);
    EXPECT_EQ(label.text(), Text(caption));
    EXPECT_EQ(CellOf(grid, label), (Cell{row, 0, 1, 1}));
    EXPECT_EQ(CellOf(grid, field), (Cell{row, 1, 1, 1}));
    EXPECT_EQ(label.buddy(), &field);
    EXPECT_EQ(field.accessibleName() + QLatin1Char(':'), Text(caption));
}

/// Sets the state of every value below \a path, as a connection does that goes down or comes back.
inline void SetStates(const QString& path, values::TValueState state) {
    for (values::TreeItem* const item : values::Tree::Instance()->FindNode(path)->GetTreeItems()) {
        if (auto* const value = dynamic_cast<values::ValueBase*>(item)) value->SetState(state);
    }
}

/// While it lives, the texts of one context read "<text>".
class MarkingTranslator final : public QTranslator {
  public:
    explicit MarkingTranslator(const char* context) : m_context(context) {
        QCoreApplication::installTranslator(this);
    }
    ~MarkingTranslator() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char*, int) const override {
        return qstrcmp(context, m_context) == 0 ? QLatin1Char('<') + Text(text) + QLatin1Char('>')
                                                : QString();
    }

  private:
    const char* m_context;
};

/// A value that notes who comes to observe it and who goes, in one list for all.
struct Attachment {
    const char* what;  ///< "attach" or "detach"
    QString name;
    IObserver* observer;
};

inline std::vector<Attachment>& Attachments() {
    static std::vector<Attachment> attachments;
    return attachments;
}

/// "attach Online", ...: what \a isMeant observers did, in order.
template <class Predicate>
std::vector<QString> AttachmentsOf(Predicate isMeant) {
    std::vector<QString> texts;
    for (const Attachment& attachment : Attachments()) {
        if (isMeant(attachment.observer))
            texts.push_back(Text(attachment.what) + QLatin1Char(' ') + attachment.name);
    }
    return texts;
}

template <class V>
class Attended final : public V {
  public:
    Attended() = default;
    ~Attended() override { this->SayGoodbye(); }
    void AddObserver(IObserver* observer) override {
        Attachments().push_back({"attach", this->GetName(), observer});
        V::AddObserver(observer);
    }
    void DeleteObserver(IObserver* observer) override {
        Attachments().push_back({"detach", this->GetName(), observer});
        V::DeleteObserver(observer);
    }
};

}  // namespace displaytest
